#pragma once

#include <string>
#include <string_view>

namespace remesa {

/// Cuenta nacional de 20 cifras con sus dos dígitos de control, que son los de módulo 11 de entidad y oficina
/// y del número.
bool ControlCcc(std::string_view ccc);

/// El IBAN que corresponde a una cuenta nacional.
std::string IbanDeCcc(std::string_view ccc);

}  // namespace remesa
