#include "ficheros/Cerrojo.h"

#include <utility>

#include "ficheros/Sistema_windows.h"

namespace ficheros {
namespace {

// Se bloquea un byte lejos de lo que dice quién lo tiene, que así se puede leer.
OVERLAPPED Bloqueado() {
  OVERLAPPED donde{};
  donde.OffsetHigh = 1;
  return donde;
}

}  // namespace

struct Cerrojo::Interior {
  std::filesystem::path ruta;
  std::string quien;
  HANDLE fichero = INVALID_HANDLE_VALUE;
  bool puesto = false;

  void decir(const std::string& texto) const {
    DWORD escritos = 0;
    ::SetFilePointer(fichero, 0, nullptr, FILE_BEGIN);
    ::SetEndOfFile(fichero);
    ::WriteFile(fichero, texto.data(), static_cast<DWORD>(texto.size()), &escritos, nullptr);
  }
};

Cerrojo::Cerrojo(std::filesystem::path ruta, std::string quien) : interior_(std::make_unique<Interior>()) {
  interior_->ruta = std::move(ruta);
  interior_->quien = std::move(quien);
}

Cerrojo::~Cerrojo() {
  if (interior_->puesto) interior_->decir({});
  if (interior_->fichero != INVALID_HANDLE_VALUE) ::CloseHandle(interior_->fichero);
}

bool Cerrojo::poner() {
  Interior& i = *interior_;
  if (i.fichero == INVALID_HANDLE_VALUE)
    i.fichero = ::CreateFileW(RutaLarga(i.ruta).c_str(), GENERIC_READ | GENERIC_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                              nullptr);
  if (i.fichero != INVALID_HANDLE_VALUE) {
    OVERLAPPED donde = Bloqueado();
    if (::LockFileEx(i.fichero, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &donde)) {
      i.puesto = true;
      i.decir(i.quien);
      return true;
    }
  }
  const DWORD error = ::GetLastError();
  if (error == ERROR_LOCK_VIOLATION || error == ERROR_SHARING_VIOLATION || error == ERROR_IO_PENDING)
    return false;
  FallarWindows(error, i.ruta);
}

std::string Cerrojo::quienLoTiene() const {
  std::string texto(kMaximoQuien, '\0');
  DWORD leidos = 0;
  if (interior_->fichero == INVALID_HANDLE_VALUE ||
      ::SetFilePointer(interior_->fichero, 0, nullptr, FILE_BEGIN) != 0 ||
      !::ReadFile(interior_->fichero, texto.data(), static_cast<DWORD>(texto.size()), &leidos, nullptr))
    leidos = 0;
  texto.resize(leidos);
  return texto;
}

}  // namespace ficheros
