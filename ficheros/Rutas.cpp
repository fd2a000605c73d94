#include "ficheros/Rutas.h"

#include <system_error>

#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace fs = std::filesystem;

fs::path RutaAbsoluta(const fs::path& ruta) {
  std::error_code error;
  const fs::path absoluta = fs::absolute(ruta, error);
  if (error) return ruta;  // la carpeta actual ya no existe
  fs::path limpia;
  for (const fs::path& parte : absoluta) {
    if (parte == ".") continue;
    if (parte != ".." || !fs::is_directory(limpia, error)) {
      limpia /= parte;
      continue;
    }
    const fs::path real = fs::is_symlink(limpia, error) ? fs::canonical(limpia, error) : limpia;
    limpia = error ? limpia / parte : real.parent_path();
  }
  return limpia;
}

bool EsElMismo(const fs::path& uno, const fs::path& otro) {
  try {
    const auto identidad = IdentidadDe(uno);
    return identidad && identidad == IdentidadDe(otro);
  } catch (const ErrorEjecucion&) {
    return false;
  }
}

}  // namespace ficheros
