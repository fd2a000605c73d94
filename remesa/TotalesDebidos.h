#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>

#include "remesa/ListaRegistros.h"
#include "remesa/TotalesNorma.h"

namespace remesa {

/// Lo que dirían los registros de totales de una lista, contada como en las comprobaciones.
class TotalesDebidos {
 public:
  explicit TotalesDebidos(const ListaRegistros& lista);
  /// Las cifras de un campo del registro `i`, con todo su ancho; vacío si no es de un total, no caben o, de
  /// un importe, hay alguno en la lista que no se entiende.
  std::string de(std::size_t i, Posiciones donde) const;

 private:
  std::unordered_map<std::size_t, std::array<TotalDebido, 3>> totales_;
  bool seEntienden_ = true;  // los importes de los adeudos
};

}  // namespace remesa
