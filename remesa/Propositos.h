#pragma once

#include <string_view>

namespace remesa {

/// Las cuatro letras mayúsculas que ha de tener un propósito, sea cual sea.
bool TieneFormaDeProposito(std::string_view codigo);

/// Si está en la lista de categorías de propósito, o en la de propósitos, del anexo VIII de la norma. Las
/// listas de ISO 20022 han crecido desde entonces.
bool EsCategoriaDeProposito(std::string_view codigo);
bool EsProposito(std::string_view codigo);

}  // namespace remesa
