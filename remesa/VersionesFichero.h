#pragma once

#include <array>
#include <cstddef>

#include "remesa/Anotador.h"

namespace remesa {

/// De qué cuaderno es cada registro. Se dice al final, una vez: la versión del fichero es la de los más, y lo
/// que no es de ella es el defecto.
class VersionesFichero {
 public:
  explicit VersionesFichero(Anotador& anotador) : anotador_(anotador) {}

  /// El registro en que está el anotador; los de totales no llevan versión.
  void dar();
  void terminar();

  /// La que se espera, por lo visto hasta ahora.
  std::string_view actual() const noexcept;

 private:
  struct Cuenta {
    std::uint64_t registros = 0;
    Hallazgo primero;
  };
  std::size_t dominante() const;

  Anotador& anotador_;
  std::array<Cuenta, 3> cuentas_;
};

}  // namespace remesa
