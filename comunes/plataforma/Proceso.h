#pragma once

namespace comunes {

/// Lo primero de cada programa: que un límite de tamaño de fichero o quien dejó de leer la salida sean un
/// error de escritura y no la muerte del proceso, y que un fichero nunca ocupe el sitio de una salida
/// cerrada.
void PrepararProceso();

}  // namespace comunes
