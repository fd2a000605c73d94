#pragma once

namespace comunes {

/// Lo primero de cada programa: que un límite de tamaño de fichero o quien dejó de leer la salida sean un
/// error de escritura y no la muerte del proceso, y que un fichero nunca ocupe el sitio de una salida
/// cerrada. Quien muere por una excepción que nadie recoge (una falta de memoria en medio del toolkit, que no
/// las deja pasar) no deja temporales; si es por la memoria, sale con 1 y dice el error 7 detrás de
/// `programa`.
void PrepararProceso(const char* programa);

/// La parte del sistema.
void PrepararSalidas();

/// Deja que la memoria que se suelta la aproveche lo que se pide después. El PDF pide y suelta dos tramos de
/// 10 MB por página, y devolverlos cada vez al sistema cuesta un tercio del tiempo de un listado.
void ConservarMemoria();

}  // namespace comunes
