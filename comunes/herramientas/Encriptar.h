#pragma once

#include <QString>

namespace herramientas {

/// `Texto` revuelto con `Clave`: cada byte (Windows-1252) unido por o exclusivo con el de la clave, que se
/// repite, en dos cifras hexadecimales. Error 11 si no hay clave con que revolver.
QString Encriptar(const QString& Texto, const QString& Clave);

}  // namespace herramientas
