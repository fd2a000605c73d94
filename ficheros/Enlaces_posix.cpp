#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "ficheros/Enlaces.h"
#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace fs = std::filesystem;
namespace {

// La guarda del propio sistema, que puede estar quitada y que leyendo el enlace se salta.
bool SePuedeSeguir(const fs::path& enlace, const struct stat& estado) {
  if (estado.st_uid == ::geteuid()) return true;
  const fs::path nombrada = enlace.parent_path();
  struct stat carpeta {};
  if (::stat(nombrada.empty() ? "." : nombrada.c_str(), &carpeta) != 0) return false;
  constexpr mode_t kCompartida = S_ISVTX | S_IWOTH;
  return (carpeta.st_mode & kCompartida) != kCompartida || carpeta.st_uid == estado.st_uid;
}

}  // namespace

fs::path SeguirEnlaces(const fs::path& pedido) {
  constexpr int kMaximo = 40;
  fs::path ruta = pedido;
  struct stat estado {};
  for (int i = 0; ::lstat(ruta.c_str(), &estado) == 0 && S_ISLNK(estado.st_mode); ++i) {
    if (i == kMaximo) throw ErrorEjecucion(kErrorDeAcceso, pedido);
    if (!SePuedeSeguir(ruta, estado))
      throw ErrorEjecucion(kPermisoDenegado, pedido,
                           "es un enlace de otro usuario en una carpeta compartida");
    std::error_code error;
    const fs::path siguiente = fs::read_symlink(ruta, error);
    if (error) throw ErrorEjecucion(error, pedido);
    ruta = ruta.parent_path() / siguiente;
  }
  return ruta;
}

}  // namespace ficheros
