#pragma once

#include <string_view>

namespace remesa {

/// true si se sabe que el BIC es de un banco español y la entidad (cuatro cifras de la cuenta), de otro. De
/// las que no están en la tabla, o se han unido a otra, no se dice nada.
bool EsDeOtraEntidad(std::string_view bic, std::string_view entidad);

}  // namespace remesa
