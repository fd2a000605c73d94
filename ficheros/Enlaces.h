#pragma once

#include <filesystem>

namespace ficheros {

/// El fichero al que llevan los enlaces simbólicos de `pedido`; también si aún no existe. Lanza
/// ErrorEjecucion 75 si dan vueltas.
std::filesystem::path SeguirEnlaces(const std::filesystem::path& pedido);

}  // namespace ficheros
