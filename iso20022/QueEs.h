#pragma once

#include <QString>

namespace iso20022 {

/// De un XML que no es un mensaje de adeudos: "pain.001: transferencias", "factura electrónica". `raiz` y
/// `espacio`, los de su elemento de fuera; si no se conoce, su nombre.
QString QueEs(const QString& raiz, const QString& espacio);

}  // namespace iso20022
