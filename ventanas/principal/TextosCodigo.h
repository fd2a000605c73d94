#pragma once

#include <stdexcept>
#include <string_view>

#include "remesa/Hallazgo.h"

namespace principal {

/// Un texto que dentro de una cadena de JSON es el mismo: uno que hubiera que escapar no compila.
class Plantilla {
 public:
  // cppcheck-suppress noExplicitConstructor
  consteval Plantilla(const char* texto) : texto_(texto) {
    if (texto_.find_first_of("\"\\\n\t") != std::string_view::npos) throw std::logic_error(texto);
  }
  constexpr operator std::string_view() const { return texto_; }

 private:
  std::string_view texto_;
};

/// Los textos de un código. En ellos %v es lo que hay, %e lo que debería, %o el otro registro (o cuántos son)
/// y %p la posición; %f, %d y %r, el fichero, la fecha y el registro de lo que se envió antes, y %m cómo
/// volvió. En `hacer` no se cambia nada.
struct Textos {
  Plantilla que;
  Plantilla esperado;
  Plantilla hacer;
};

/// Los de un hallazgo, según su código y, donde el caso tiene su propio texto, según sus datos.
Textos TextosDe(const remesa::Hallazgo& hallazgo);

}  // namespace principal
