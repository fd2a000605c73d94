#pragma once

#include <windows.h>

#include <filesystem>

namespace ficheros {

/// La ruta absoluta con el prefijo "\\?\", que Windows no limita a 260 caracteres; la de un dispositivo
/// ("NUL"), tal como el sistema la nombra. std::filesystem no sirve: deshace el "." de "\\.\NUL".
std::filesystem::path RutaLarga(const std::filesystem::path& ruta);

/// Lanza el ErrorEjecucion del error de Windows `error` (GetLastError) sobre `ruta`.
[[noreturn]] void FallarWindows(DWORD error, const std::filesystem::path& ruta);

}  // namespace ficheros
