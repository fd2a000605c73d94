#pragma once

#include <string>
#include <string_view>

namespace comunes {

/// Con true, WinDos solo cambia los NUL.
extern bool WinDosDesactivado;

/// Cambia los NUL por blancos y pasa los bytes de la página 850 a Windows-1252 (`sentido` "win", sin
/// distinguir mayúsculas) o al revés ("dos"). Otro sentido no convierte. Lo que la otra página no tiene pasa
/// a '?'.
std::string WinDos(std::string_view texto, std::string_view sentido);

}  // namespace comunes
