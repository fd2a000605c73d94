#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "iso20022/Correspondencia.h"

// Cómo son los valores de los elementos.

namespace iso20022 {

/// Céntimos como los escribe el XML: "1234.05".
std::string EscribirImporte(std::uint64_t centimos);

/// Céntimos de un importe con dos decimales a lo más (o ceros detrás); nada si no lo es.
std::optional<std::uint64_t> Centimos(std::string_view importe);

/// Céntimos de un 003 cuyo importe son cifras.
std::uint64_t ImporteDe(std::string_view adeudo);

/// FNAL, FRST, OOFF o RCUR.
bool EsTipoAdeudo(std::string_view texto);

/// Cuatro mayúsculas o cifras.
bool EsCodigo(std::string_view texto);

/// Forma de un BIC en una versión.
bool EsBicDe(Version version, std::string_view bic);

/// Sin lo que por los lados se escribiría como blancos.
std::string_view RecortarEscrito(std::string_view texto);

/// Tal como se escribiría, empieza o acaba en "/" o tiene "//".
bool TieneBarrasMalas(std::string_view valor);

}  // namespace iso20022
