#include "ficheros/Enlaces.h"

#include "ficheros/Rutas.h"
#include "ficheros/Sistema_windows.h"

namespace ficheros {

// Aquí no hay carpetas pegajosas: quien puede poner un enlace en una carpeta puede ya sustituir lo que hay en
// ella. Uno que no lleva a nada se queda como está, y lo dice quien vaya a abrirlo.
std::filesystem::path SeguirEnlaces(const std::filesystem::path& pedido) {
  if (!EsEnlace(pedido)) return pedido;
  const HANDLE fichero =
      ::CreateFileW(RutaLarga(pedido).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (fichero == INVALID_HANDLE_VALUE) return pedido;
  std::filesystem::path ruta = RutaFinal(fichero, pedido);
  ::CloseHandle(fichero);
  return ruta;
}

}  // namespace ficheros
