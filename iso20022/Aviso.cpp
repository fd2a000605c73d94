#include "iso20022/Aviso.h"

#include <array>

namespace iso20022 {
namespace {

// En el orden de la enumeración.
constexpr std::array<std::string_view, 9> kCodigosAviso{"A601", "A602", "A603", "A604", "A605",
                                                        "A606", "A607", "A608", "A609"};

}  // namespace

std::string_view TextoCodigo(CodigoAviso codigo) {
  return kCodigosAviso[static_cast<std::size_t>(codigo)];
}

}  // namespace iso20022
