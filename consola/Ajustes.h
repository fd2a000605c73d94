#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace consola {

/// Pone comunes::RutaAjustes donde está Tarvo.INI, junto al programa; false si no hay ninguno.
bool BuscarAjustes();

/// Da el BIC de una entidad, por sus cuatro cifras, de la sección Entidades de los ajustes; "" si no está, o
/// si no hay ajustes.
std::function<std::string(std::string_view entidad)> BicsDeAjustes();

}  // namespace consola
