#include "ficheros/Cerrojo.h"

#include <utility>

#include "ficheros/Sistema_windows.h"

namespace ficheros {

struct Cerrojo::Interior {
  std::filesystem::path ruta;
  HANDLE fichero = INVALID_HANDLE_VALUE;
};

Cerrojo::Cerrojo(std::filesystem::path ruta) : interior_(std::make_unique<Interior>()) {
  interior_->ruta = std::move(ruta);
}

Cerrojo::~Cerrojo() {
  if (interior_->fichero != INVALID_HANDLE_VALUE) ::CloseHandle(interior_->fichero);
}

bool Cerrojo::poner() {
  Interior& i = *interior_;
  // Abierto sin compartir: nadie más puede abrirlo hasta que se cierre.
  i.fichero = ::CreateFileW(RutaLarga(i.ruta).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (i.fichero != INVALID_HANDLE_VALUE) return true;
  const DWORD error = ::GetLastError();
  if (error == ERROR_SHARING_VIOLATION) return false;
  FallarWindows(error, i.ruta);
}

}  // namespace ficheros
