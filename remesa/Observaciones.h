#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "remesa/Resumen.h"
#include "remesa/TipoFichero.h"

namespace remesa {

enum class ClaseObservacion : std::uint8_t {
  // De un fichero que se va a importar:
  SoloLF,              ///< Todo el fichero es un registro: sus líneas acaban en LF. `cuenta` = 1.
  ConLF,               ///< Registros con un LF dentro.
  RegistrosLargos,     ///< Perderán lo que pase de 600.
  RegistrosCortos,     ///< Se completarán con blancos.
  CodigosDescartados,  ///< No entrarán.
  SinTotales,          ///< La acumulación se quedará sin totales.
  SinCabeceras,  ///< Primera importación sin "01" o sin "02"; `antes` dice cuáles faltan ("01", "02", "01 y
                 ///< 02").
  Desbordamiento,  ///< El total pasará de 2147483647 céntimos; `importe` = total que resultaría.
  OtroAcreedor,    ///< `antes` = el de la acumulación, `ahora` = el del fichero, que se pierde.
  OtraFecha,       ///< Igual, con fechas de cobro AAAAMMDD.
  // De la acumulación:
  TotalesAusentes,
  TotalesNoCuadran,    ///< Un recálculo los cambiaría.
  TotalesPorBloque,    ///< Correctos por bloque según la norma, pero un recálculo los cambiaría.
  TotalesDesbordados,  ///< El recálculo no es posible: el importe pasa del máximo; `importe` = total real.
  TotalesCortos,       ///< El recálculo no es posible: un registro de totales es demasiado corto.
  VariosBloques,       ///< Hay varios "02": los totales corren de uno a otro y no son los de cada bloque.
  CopiaIntercalada,
  OpcionalesSueltos,
};

struct Observacion {
  ClaseObservacion clase;
  std::size_t cuenta = 0;    ///< Registros a los que afecta.
  std::size_t primero = 0;   ///< Número del primero, desde 1; 0 si no procede.
  std::int64_t importe = 0;  ///< Céntimos.
  std::string antes = {};
  std::string ahora = {};
};

/// Qué perdería o cambiaría la importación de `previo` en `acumulado`, de lo más a lo menos grave.
std::vector<Observacion> ObservarImportacion(const Resumen& previo, const Resumen& acumulado);

/// ¿Se queda en nada un fichero que no está vacío de adeudos? Uno cuyas líneas acaban solo en LF, o uno que
/// no es una remesa, como los de rechazos y devoluciones, del que no entra ningún "03".
bool SePierdenSusAdeudos(const Resumen& previo, TipoFichero tipo);

/// Qué hay que saber de la acumulación antes de guardarla. Nada si está vacía.
std::vector<Observacion> ObservarAcumulado(const Resumen& acumulado);

}  // namespace remesa
