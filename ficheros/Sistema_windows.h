#pragma once

#include <windows.h>

#include <filesystem>

namespace ficheros {

/// La ruta absoluta con el prefijo "\\?\", que Windows no limita a 260 caracteres; la de un dispositivo
/// ("NUL"), tal como el sistema la nombra. std::filesystem no sirve: deshace el "." de "\\.\NUL".
std::filesystem::path RutaLarga(const std::filesystem::path& ruta);

/// La ruta del fichero abierto, que es la de aquel al que lleva un enlace; `ruta` si el sistema no la sabe.
std::filesystem::path RutaFinal(HANDLE fichero, const std::filesystem::path& ruta);

/// Lanza el ErrorEjecucion del error de Windows `error` (GetLastError) sobre `ruta`.
[[noreturn]] void FallarWindows(DWORD error, const std::filesystem::path& ruta);

}  // namespace ficheros
