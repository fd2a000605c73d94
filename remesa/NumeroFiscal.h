#pragma once

#include <string>
#include <string_view>

namespace remesa {

/// Los caracteres de control que valen tras los ocho primeros de un NIF: "Z" en "12345678", "4" en
/// "A1234567", "4D" en "C1234567", que admite los dos. Personas (ocho cifras, o K, L o M y siete),
/// extranjeros (X, Y o Z y siete) y entidades (otra letra y siete), según la Orden EHA/451/2008 y el Real
/// Decreto 1065/2007. Vacío si no tiene esa forma; sin blancos y en mayúsculas.
std::string ControlFiscal(std::string_view ocho);

/// Un NIF entero, de nueve caracteres, que tiene la forma de los españoles pero no su control.
bool ControlFiscalErrado(std::string_view nif);

}  // namespace remesa
