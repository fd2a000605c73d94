#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "remesa/Resumen.h"

namespace remesa {

enum class ClaseObservacion : std::uint8_t {
  // De un fichero que se va a importar:
  SoloLF,              ///< Todo el fichero es un registro: sus líneas acaban en LF. `cuenta` = 1.
  ConLF,               ///< Registros con un LF dentro.
  Utf8,                ///< Los acentos, en dos posiciones cada uno; `ahora` = la primera palabra.
  RegistrosLargos,     ///< Perderán lo que pase de 600.
  RegistrosCortos,     ///< Se completarán con blancos.
  CodigosDescartados,  ///< No entrarán.
  SinTotales,          ///< La acumulación se quedará sin totales.
  SinCabeceras,  ///< Primera importación sin "01" o sin "02"; `antes` dice cuáles faltan ("01", "02", "01 y
                 ///< 02").
  CabecerasPerdidas,  ///< La acumulación no tiene las de `antes`, y las del fichero no entrarán.
  Desbordamiento,  ///< El total pasará de 2147483647 céntimos; `importe` = total que resultaría, `cuenta` =
                   ///< registros de totales que lo llevarían.
  TotalesSinSitio,    ///< La importación fallará: un registro de totales es demasiado corto.
  TotalesInteriores,  ///< Se quitarán los que la acumulación tiene entre sus adeudos.
  OtroAcreedor,       ///< `antes` = el de la acumulación, `ahora` = el del fichero, que se pierde.
  OtraFecha,          ///< Igual, con fechas de cobro AAAAMMDD.
  OtraCuenta,         ///< Igual, con la cuenta en que se abona.
  // Si se conservan los bloques:
  SinDueno,          ///< No se puede importar: `primero` es un "03" sin "02" delante en su fichero.
  BloquesNuevos,     ///< Los que tendrá (`cuenta`, quizá 0) de los que serán en total (`total`).
  OtroPresentador,   ///< `antes` = el que se queda, `ahora` = el primero que se pierde.
  CabeceraDistinta,  ///< De un bloque que ya está (acreedor `antes` y fecha `fecha`), con otra dirección...
  CabeceraOtroNombre,  ///< ...u otro nombre, `ahora`, que se pierde.
  CabeceraIncorrecta,  ///< De otra longitud, sin identificador o con una fecha que no existe.
  // De la acumulación:
  TotalesAusentes,
  TotalesNoCuadran,    ///< Un recálculo los cambiaría.
  TotalesPorBloque,    ///< Correctos por bloque según la norma, pero un recálculo los cambiaría.
  FaltanCabeceras,     ///< Las que dice `antes`, como en SinCabeceras.
  TotalesDesbordados,  ///< El recálculo no es posible: el importe pasa del máximo; `importe` = total real,
                       ///< `cuenta` = registros de totales.
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
  std::string fecha = {};  ///< AAAAMMDD.
  std::size_t total = 0;
};

/// Qué perdería o cambiaría la importación de `previo` en `acumulado`, de lo más a lo menos grave.
std::vector<Observacion> ObservarImportacion(const Resumen& previo, const Resumen& acumulado);

/// ¿Se queda en nada un fichero que no está vacío de adeudos? Uno cuyas líneas acaban solo en LF, o uno que
/// no es una remesa, como los de rechazos y devoluciones, del que no entra ningún "03".
bool SePierdenSusAdeudos(const Resumen& previo);

/// Qué hay que saber de la acumulación antes de guardarla. Nada si está vacía.
std::vector<Observacion> ObservarAcumulado(const Resumen& acumulado);

}  // namespace remesa
