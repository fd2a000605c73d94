#include "ficheros/Sistema_windows.h"

#include <string>

#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace fs = std::filesystem;

fs::path RutaLarga(const fs::path& ruta) {
  std::wstring absoluta(MAX_PATH, L'\0');
  for (;;) {
    const DWORD hacenFalta =
        ::GetFullPathNameW(ruta.c_str(), static_cast<DWORD>(absoluta.size()), absoluta.data(), nullptr);
    if (hacenFalta == 0) return ruta;
    const bool cabe = hacenFalta < absoluta.size();
    absoluta.resize(hacenFalta);
    if (cabe) break;
  }
  if (absoluta.starts_with(L"\\\\?\\") || absoluta.starts_with(L"\\\\.\\")) return absoluta;
  if (absoluta.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + absoluta.substr(2);
  return L"\\\\?\\" + absoluta;
}

fs::path RutaFinal(HANDLE fichero, const fs::path& ruta) {
  std::wstring final(32'768, L'\0');  // lo más que mide una ruta
  const DWORD largo =
      ::GetFinalPathNameByHandleW(fichero, final.data(), static_cast<DWORD>(final.size()), VOLUME_NAME_DOS);
  if (largo == 0 || largo >= final.size()) return ruta;
  final.resize(largo);
  return final;
}

void FallarWindows(DWORD error, const fs::path& ruta) {
  switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_WRITE_PROTECT:
      throw ErrorEjecucion(kPermisoDenegado, ruta);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      throw ErrorEjecucion(kDiscoLleno, ruta);
    case ERROR_FILE_NOT_FOUND:
      throw ErrorEjecucion(kNoEncontrado, ruta);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_DIRECTORY:
      throw ErrorEjecucion(kRutaNoEncontrada, ruta);
    case ERROR_INVALID_NAME:
      throw ErrorEjecucion(kNombreIncorrecto, ruta);
    default:
      throw ErrorEjecucion(std::error_code(static_cast<int>(error), std::system_category()), ruta);
  }
}

}  // namespace ficheros
