#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace remesa {

// Una consulta por byte: se recorren con ella remesas enteras.
extern const std::array<char, 256> kEquivalentesSEPA;

/// El carácter del juego de SEPA que se pone por cada uno de Windows-1252: él mismo si es del juego. Las
/// letras pierden sus signos y los demás siguen la tabla de EPC217-08, salvo donde su punto se leería mal (º,
/// ª, comillas, rayas, cifras pequeñas). Los de control y el blanco duro son blancos.
inline char EquivalenteSEPA(char caracter) {
  return kEquivalentesSEPA[static_cast<std::uint8_t>(caracter)];
}

/// Es del juego: letras sin signos, cifras, blanco y / - ? : ( ) . , ' +
inline bool EsDelJuegoSEPA(char caracter) {
  return EquivalenteSEPA(caracter) == caracter;
}

/// El texto con sus caracteres uno por uno en el juego, de la misma longitud.
std::string EquivalenteSEPA(std::string_view texto);

}  // namespace remesa
