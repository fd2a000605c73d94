#include <algorithm>
#include <atomic>
#include <string>
#include <utility>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/FicheroProvisional.h"
#include "ficheros/FicheroTemporal.h"
#include "ficheros/Sistema_windows.h"

namespace ficheros {
namespace {

constexpr std::size_t kMaximoProvisional = 1 << 30;

}  // namespace

struct FicheroProvisional::Interior {
  explicit Interior(HANDLE nuevo) : fichero(nuevo) {}
  ~Interior() {
    if (fichero != INVALID_HANDLE_VALUE) ::CloseHandle(fichero);
  }
  Interior(const Interior&) = delete;
  Interior& operator=(const Interior&) = delete;

  void irA(std::uintmax_t donde, const std::filesystem::path& carpeta) const {
    LARGE_INTEGER sitio{};
    sitio.QuadPart = static_cast<LONGLONG>(donde);
    if (!::SetFilePointerEx(fichero, sitio, nullptr, FILE_BEGIN)) FallarWindows(::GetLastError(), carpeta);
  }

  HANDLE fichero;
};

// El nombre es de los que se borran solos si un corte de corriente lo deja.
FicheroProvisional::FicheroProvisional(std::filesystem::path carpeta) : carpeta_(std::move(carpeta)) {
  static std::atomic<unsigned> contador{0};
  const std::string nombre = std::string(FicheroTemporal::kPrefijo) + "provisional." +
                             std::to_string(::GetCurrentProcessId()) + '-' + std::to_string(contador++) +
                             std::string(FicheroTemporal::kSufijo);
  interior_ = std::make_unique<Interior>(
      ::CreateFileW(RutaLarga(carpeta_ / nombre).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  if (interior_->fichero == INVALID_HANDLE_VALUE) FallarWindows(::GetLastError(), carpeta_);
}

FicheroProvisional::~FicheroProvisional() = default;

std::size_t FicheroProvisional::escribirAlgo(std::string_view bytes) {
  interior_->irA(enDisco_, carpeta_);
  DWORD escritos = 0;
  if (!::WriteFile(interior_->fichero, bytes.data(),
                   static_cast<DWORD>(std::min(bytes.size(), kMaximoProvisional)), &escritos, nullptr))
    FallarWindows(::GetLastError(), carpeta_);
  if (escritos == 0) throw ErrorEjecucion(kDiscoLleno, carpeta_);
  return escritos;
}

std::size_t FicheroProvisional::leerAlgoEn(std::uintmax_t donde, std::span<char> destino) {
  interior_->irA(donde, carpeta_);
  DWORD leidos = 0;
  if (!::ReadFile(interior_->fichero, destino.data(),
                  static_cast<DWORD>(std::min(destino.size(), kMaximoProvisional)), &leidos, nullptr))
    FallarWindows(::GetLastError(), carpeta_);
  return leidos;
}

}  // namespace ficheros
