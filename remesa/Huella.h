#pragma once

#include <cstdint>
#include <string_view>

namespace remesa {

/// Huella de 64 bits de una clave (SipHash-1-3). Su semilla cambia en cada ejecución: nadie puede preparar
/// claves que caigan en el mismo sitio de una tabla.
std::uint64_t Huella(std::string_view clave);

/// La de la clave de quien tiene la huella `suya`: dos acreedores pueden llamar igual a sus mandatos.
std::uint64_t Huella(std::uint64_t suya, std::string_view clave);

/// Huella de una clave de varias partes, a partir de las suyas.
std::uint64_t Mezclar(std::uint64_t una, std::uint64_t otra);

}  // namespace remesa
