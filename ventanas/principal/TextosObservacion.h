#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>

#include "remesa/Observaciones.h"

namespace principal {

/// "1 adeudo", "1.234 adeudos": con los grupos del usuario.
QString TextoCuenta(std::size_t cuenta, const QString& uno, const QString& varios);

/// Céntimos con los signos del usuario y el euro: "12.345,67 €".
QString TextoEuros(std::int64_t centimos);

/// Lo que el operador debe saber, en una frase corta con su punto: qué pasa y qué hacer. Es texto sin marcas,
/// con datos del fichero tal como vienen.
QString TextoObservacion(const remesa::Observacion& observacion);

/// Los textos de todas, en su orden.
QStringList TextosObservaciones(const std::vector<remesa::Observacion>& observaciones);

/// De qué son los adeudos de un fichero que la importación ha mezclado con otros: "otra fecha de cobro
/// (05/05/2026)"; vacío si `observaciones`, las de importarlo, no dicen que los mezcle.
QString TextoMezcla(const std::vector<remesa::Observacion>& observaciones);

/// Fichero, adeudos, importe y, si son de uno solo, acreedor y fecha de cobro: "enero.Q19 · 18 adeudos · …".
QString TextoFichero(const QString& nombre, const remesa::Resumen& resumen);

}  // namespace principal
