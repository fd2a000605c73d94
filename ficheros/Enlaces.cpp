#include "ficheros/Enlaces.h"

#include <system_error>

#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace fs = std::filesystem;

fs::path SeguirEnlaces(const fs::path& pedido) {
  constexpr int kMaximo = 40;
  fs::path ruta = pedido;
  std::error_code error;
  for (int i = 0; fs::is_symlink(fs::symlink_status(ruta, error)); ++i) {
    if (i == kMaximo) throw ErrorEjecucion(kErrorDeAcceso, pedido);
    const fs::path siguiente = fs::read_symlink(ruta, error);
    if (error) throw ErrorEjecucion(error, pedido);
    ruta = ruta.parent_path() / siguiente;
  }
  return ruta;
}

}  // namespace ficheros
