#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Rutas.h"

namespace ficheros {

std::optional<Identidad> IdentidadDe(const std::filesystem::path& ruta) {
  struct stat estado {};
  if (::stat(ruta.c_str(), &estado) == 0) return Identidad{estado.st_dev, {estado.st_ino}};
  if (errno == ENOENT) return std::nullopt;
  throw ErrorEjecucion(std::error_code(errno, std::generic_category()), ruta);
}

bool EsEnlace(const std::filesystem::path& ruta) {
  std::error_code ignorado;
  return std::filesystem::is_symlink(ruta, ignorado);
}

std::int64_t UltimaEscritura(const std::filesystem::path& ruta, std::error_code& error) {
  return std::filesystem::last_write_time(ruta, error).time_since_epoch().count();
}

}  // namespace ficheros
