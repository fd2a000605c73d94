#pragma once

#include <QString>
#include <exception>

namespace comunes {

/// Informe de un error de ejecución: una caja crítica con "Error N: texto" y, en su línea, el fichero al que
/// se refiere. Si ya hay una en pantalla, el segundo error va a la salida de errores y no se acumula otra.
void InformarError(int numero, const QString& texto, const QString& fichero = {});
/// Lo mismo desde la excepción. La memoria agotada es el error 7 y lo que no sea de la plataforma, el 51 con
/// su propio texto.
void InformarError(const std::exception& error);

}  // namespace comunes
