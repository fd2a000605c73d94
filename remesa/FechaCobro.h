#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Los índices de las cabeceras 02.
std::vector<std::size_t> Cabeceras(const ListaRegistros& lista);

/// Pone la fecha de cobro, AAAAMMDD, en esas cabeceras 02 y en el 04 que cierra cada bloque, si lo hay. Un
/// registro corto se completa antes.
void CambiarFechaCobro(ListaRegistros& lista, std::span<const std::size_t> cabeceras, std::string_view fecha);

}  // namespace remesa
