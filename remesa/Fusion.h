#pragma once

#include <cstdint>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Contadores del recálculo de totales; importe en céntimos. Son de 32 bits con signo, como los del sistema.
struct Totales {
  std::int32_t registros = 0;
  std::int32_t importe = 0;
  std::int32_t adeudos = 0;
};

/// Añade a `acumulado` los registros de `previo` según las reglas de la importación (quita antes los totales
/// que hubiera; "01" y "02" solo si `acumulado` estaba vacío; otros códigos se descartan). No recalcula.
void Importar(ListaRegistros& acumulado, const ListaRegistros& previo);

/// Quita todo registro "04", "05" y "99", esté donde esté.
void QuitarTotales(ListaRegistros& acumulado);

/// Reescribe los registros de totales con contadores corridos. Lanza ErrorEjecucion 6 si un contador no cabe
/// en 32 bits y 5 si un registro de totales no alcanza sus posiciones; lo ya reescrito se conserva.
Totales RecalcularTotales(ListaRegistros& acumulado);

}  // namespace remesa
