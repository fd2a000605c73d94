#include <algorithm>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "ficheros/Sistema_windows.h"

namespace ficheros {
namespace {

constexpr std::size_t kMaximoLectura = 1 << 30;

}  // namespace

struct LecturaFichero::Interior {
  explicit Interior(HANDLE nuevo) : fichero(nuevo) {}
  ~Interior() {
    if (fichero != INVALID_HANDLE_VALUE) ::CloseHandle(fichero);
  }
  Interior(const Interior&) = delete;
  Interior& operator=(const Interior&) = delete;
  HANDLE fichero;
};

LecturaFichero::LecturaFichero(const std::filesystem::path& ruta) : ruta_(ruta) {
  if (ruta.empty()) throw ErrorEjecucion(kNoEncontrado, ruta);
  // CreateFile sobre una carpeta dice "acceso denegado": se mira antes para dar el error de ruta.
  const std::filesystem::path larga = RutaLarga(ruta);
  const DWORD atributos = ::GetFileAttributesW(larga.c_str());
  if (atributos != INVALID_FILE_ATTRIBUTES && (atributos & FILE_ATTRIBUTE_DIRECTORY))
    throw ErrorEjecucion(kErrorDeAcceso, ruta, "es una carpeta");
  interior_ = std::make_unique<Interior>(::CreateFileW(larga.c_str(), GENERIC_READ,
                                                       FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                                       OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (interior_->fichero == INVALID_HANDLE_VALUE) FallarWindows(::GetLastError(), ruta);
  if (::GetFileType(interior_->fichero) != FILE_TYPE_DISK)
    throw ErrorEjecucion(kErrorDeAcceso, ruta, "no es un fichero corriente");
  LARGE_INTEGER tamano{};
  if (!::GetFileSizeEx(interior_->fichero, &tamano)) FallarWindows(::GetLastError(), ruta);
  tamano_ = static_cast<std::uintmax_t>(tamano.QuadPart);
}

LecturaFichero::~LecturaFichero() = default;

std::size_t LecturaFichero::leerAlgo(std::span<char> destino) {
  DWORD leidos = 0;
  if (!::ReadFile(interior_->fichero, destino.data(),
                  static_cast<DWORD>(std::min(destino.size(), kMaximoLectura)), &leidos, nullptr))
    FallarWindows(::GetLastError(), ruta_);
  return leidos;
}

// El sistema mueve también por dónde va la lectura seguida: se deja como estaba.
std::size_t LecturaFichero::leerAlgoEn(std::uintmax_t donde, std::span<char> destino) {
  LARGE_INTEGER antes{};
  if (!::SetFilePointerEx(interior_->fichero, {}, &antes, FILE_CURRENT))
    FallarWindows(::GetLastError(), ruta_);
  LARGE_INTEGER sitio{};
  sitio.QuadPart = static_cast<LONGLONG>(donde);
  if (!::SetFilePointerEx(interior_->fichero, sitio, nullptr, FILE_BEGIN))
    FallarWindows(::GetLastError(), ruta_);
  const std::size_t leidos = leerAlgo(destino);
  if (!::SetFilePointerEx(interior_->fichero, antes, nullptr, FILE_BEGIN))
    FallarWindows(::GetLastError(), ruta_);
  return leidos;
}

LecturaFichero::Marca LecturaFichero::marca() const {
  BY_HANDLE_FILE_INFORMATION datos{};
  if (!::GetFileInformationByHandle(interior_->fichero, &datos)) FallarWindows(::GetLastError(), ruta_);
  const auto juntar = [](DWORD alta, DWORD baja) { return (std::uint64_t{alta} << 32) | baja; };
  return {datos.dwVolumeSerialNumber, juntar(datos.nFileIndexHigh, datos.nFileIndexLow),
          juntar(datos.nFileSizeHigh, datos.nFileSizeLow),
          static_cast<std::int64_t>(
              juntar(datos.ftLastWriteTime.dwHighDateTime, datos.ftLastWriteTime.dwLowDateTime))};
}

// Se abre sin dejar escribir a nadie.
bool LecturaFichero::reescrito() const {
  return false;
}

}  // namespace ficheros
