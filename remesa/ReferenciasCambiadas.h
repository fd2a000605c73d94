#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Las referencias de adeudo y de mandato de una lista, como quedarían con los caracteres de SEPA: dos de un
/// acreedor que eran distintas no pueden acabar siendo la misma.
class ReferenciasCambiadas {
 public:
  /// De cada acreedor, las de sus adeudos (003).
  explicit ReferenciasCambiadas(const ListaRegistros& lista);
  /// Si el cambio de la de esas posiciones la deja igual que otra. `cabecera`, la 02 de su bloque.
  bool choca(std::string_view cabecera, std::string_view registro, Posiciones donde) const;

 private:
  static std::uint64_t clave(std::uint64_t acreedor, std::string_view registro, Posiciones donde);

  std::unordered_map<std::uint64_t, std::uint64_t> originales_;  // por la cambiada; 0 si son varias
};

}  // namespace remesa
