#pragma once

#include <optional>
#include <string_view>

namespace iso20022 {

/// Código postal y localidad, separados.
struct Poblacion {
  std::string_view cp;  ///< Vacío si no lo hay.
  std::string_view nombre;
};

/// Separa la segunda línea de una dirección: "28001 MADRID", "MADRID (28001)" o "MADRID". Desde noviembre de
/// 2026 el esquema quiere la localidad en su sitio: si no se ve cuál es, nada. Un código postal español tiene
/// cinco cifras, y los demás, de cuatro a seis.
std::optional<Poblacion> PartirPoblacion(std::string_view d2, bool espanola);

}  // namespace iso20022
