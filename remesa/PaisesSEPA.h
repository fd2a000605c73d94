#pragma once

#include <cstdint>
#include <string_view>

namespace remesa {

/// Dónde está un país para los adeudos SEPA.
enum class Zona : std::uint8_t {
  Fuera,         ///< No los admite, o no es un país.
  EEE,           ///< Espacio Económico Europeo, con sus regiones ultraperiféricas.
  FueraDelEEE,   ///< De la zona SEPA desde antiguo: piden el BIC y la dirección del deudor.
  Incorporados,  ///< Como los anteriores, pero entraron en 2024 y 2025 y sus bancos van llegando uno a uno.
};

Zona ZonaDe(std::string_view pais);

/// El banco y la dirección del deudor no hacen falta (artículo 5.7 del Reglamento (UE) 260/2012).
inline bool EnEEE(std::string_view pais) {
  return ZonaDe(pais) == Zona::EEE;
}

/// Cómo son los IBAN de un país, según el registro de ISO 13616.
struct FormaIban {
  std::uint8_t longitud = 0;  ///< Del IBAN entero; 0, el país no tiene.
  /// Lo que sigue al país y los dígitos de control: "4a14n" son 4 letras y 14 cifras; "c", letras o cifras.
  std::string_view estructura;
};

FormaIban FormaIbanDe(std::string_view pais);

inline bool EsPaisConIban(std::string_view pais) {
  return FormaIbanDe(pais).longitud > 0;
}

/// Si lo que sigue a las cuatro primeras posiciones tiene la estructura, letras mayúsculas siempre.
bool SigueEstructura(std::string_view cuerpo, std::string_view estructura);

}  // namespace remesa
