#pragma once

#include <vector>

#include "remesa/IndiceBloques.h"
#include "remesa/Observaciones.h"

// Las observaciones mientras se conservan los bloques: ni el acreedor, ni la fecha, ni la cuenta cambian, los
// totales se hacen siempre y no hay más límite que el ancho de sus campos.

namespace remesa {

/// Qué hará o perderá la importación de `previo`, de lo más a lo menos grave. `indice`, el de la acumulación,
/// tras darle el fichero.
std::vector<Observacion> ObservarImportacion(const Resumen& previo, const IndiceBloques& indice);

/// Qué hay que saber de la acumulación antes de guardarla. `indice`, el suyo.
std::vector<Observacion> ObservarAcumulado(const Resumen& acumulado, const IndiceBloques& indice);

}  // namespace remesa
