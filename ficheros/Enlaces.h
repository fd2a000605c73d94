#pragma once

#include <filesystem>

namespace ficheros {

/// El fichero al que llevan los enlaces simbólicos de `pedido`; también si aún no existe. Lanza
/// ErrorEjecucion 75 si dan vueltas y 70 si uno está en una carpeta compartida (pegajosa y con escritura para
/// todos) y no es ni del usuario ni del dueño de la carpeta: cualquiera puede haberlo puesto ahí.
std::filesystem::path SeguirEnlaces(const std::filesystem::path& pedido);

}  // namespace ficheros
