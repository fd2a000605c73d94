#include <cstring>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Rutas.h"
#include "ficheros/Sistema_windows.h"

namespace ficheros {
namespace {

// El número de 128 bits, y donde el sistema de ficheros no lo da, el de 64.
bool Preguntar(HANDLE fichero, Identidad& identidad) {
  FILE_ID_INFO informe{};
  if (::GetFileInformationByHandleEx(fichero, FileIdInfo, &informe, sizeof informe)) {
    static_assert(sizeof identidad.numero == sizeof informe.FileId);
    identidad.unidad = informe.VolumeSerialNumber;
    std::memcpy(identidad.numero.data(), &informe.FileId, sizeof identidad.numero);
    return true;
  }
  BY_HANDLE_FILE_INFORMATION antes{};
  if (!::GetFileInformationByHandle(fichero, &antes)) return false;
  identidad.unidad = antes.dwVolumeSerialNumber;
  identidad.numero = {std::uint64_t{antes.nFileIndexHigh} << 32 | antes.nFileIndexLow};
  return true;
}

}  // namespace

std::optional<Identidad> IdentidadDe(const std::filesystem::path& ruta) {
  const HANDLE fichero = ::CreateFileW(RutaLarga(ruta).c_str(), FILE_READ_ATTRIBUTES,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (fichero == INVALID_HANDLE_VALUE) {
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return std::nullopt;
    FallarWindows(error, ruta);
  }
  Identidad identidad;
  const bool sabida = Preguntar(fichero, identidad);
  const DWORD error = ::GetLastError();
  ::CloseHandle(fichero);
  if (!sabida) FallarWindows(error, ruta);
  return identidad;
}

// Un fichero que está en la nube también tiene un punto de reanálisis, pero no lleva a otro sitio.
bool EsEnlace(const std::filesystem::path& ruta) {
  WIN32_FIND_DATAW datos{};
  const HANDLE busqueda = ::FindFirstFileW(RutaLarga(ruta).c_str(), &datos);
  if (busqueda == INVALID_HANDLE_VALUE) return false;
  ::FindClose(busqueda);
  return (datos.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         IsReparseTagNameSurrogate(datos.dwReserved0);
}

std::int64_t UltimaEscritura(const std::filesystem::path& ruta, std::error_code& error) {
  WIN32_FILE_ATTRIBUTE_DATA datos{};
  error.clear();
  if (!::GetFileAttributesExW(RutaLarga(ruta).c_str(), GetFileExInfoStandard, &datos))
    error.assign(static_cast<int>(::GetLastError()), std::system_category());
  const FILETIME& hora = datos.ftLastWriteTime;
  return static_cast<std::int64_t>(std::uint64_t{hora.dwHighDateTime} << 32 | hora.dwLowDateTime);
}

}  // namespace ficheros
