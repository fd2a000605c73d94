#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace remesa {

/// La hora del reloj del operador, que es la que lleva la identificación de un fichero.
using Momento = std::chrono::local_time<std::chrono::milliseconds>;

/// Identificación nueva de un fichero, 35 bytes: "PRE", la fecha y la hora hasta las milésimas (con cinco
/// cifras) y las 13 posiciones que en `actual` (la que había, de 35) son del presentador. La de una remesa
/// financiada empieza por "PREFSDD" y le quedan al presentador las 9 últimas. `parte` (desde 0) se suma a las
/// milésimas: los ficheros que salen de uno a la vez no pueden llevar la misma.
std::string IdentificacionRenovada(std::string_view actual, Momento ahora, int parte = 0);

/// La de una remesa financiada, que empieza de otro modo.
bool EsDeFinanciada(std::string_view identificacion);

/// La fecha AAAAMMDD de una identificación con la forma de la norma: "PRE", un día que exista y una hora con
/// cinco cifras de milésimas; lo que siga es del presentador. Vacía si no la tiene.
std::string_view FechaDeIdentificacion(std::string_view identificacion);

/// Pone en la cabecera del presentador la fecha de hoy y una identificación nueva. Un registro corto recibe
/// lo que le quepa. Lanza ErrorEjecucion 5 si los campos empiezan más allá de su final.
void RenovarIdentificacion(std::string& presentador, Momento ahora, int parte = 0);

}  // namespace remesa
