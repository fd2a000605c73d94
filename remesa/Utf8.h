#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace remesa {

/// Si algún byte no es ASCII. De ocho en ocho: recorre remesas enteras.
bool TieneAltos(std::string_view bytes);

/// Si los bytes que no son ASCII, y alguno hay, son todos de caracteres bien hechos de UTF-8. Con `cortado`,
/// el último puede estar a medias.
bool EsUtf8(std::string_view bytes, bool cortado = false);

/// Cuántos caracteres son.
std::size_t CaracteresUtf8(std::string_view bytes);

/// Un byte de Windows-1252 por carácter; los que no son de Latin-1, un signo que tampoco es del juego de
/// SEPA. El último a medias se quita.
std::string DesdeUtf8(std::string_view bytes);

/// Un registro que está en UTF-8, como se habría escrito en Windows-1252.
struct RegistroUtf8 {
  std::string bytes;           ///< Uno por carácter; hasta 600.
  std::uint64_t longitud = 0;  ///< En caracteres; la de todo el registro.
  std::string palabra;         ///< La primera que lo delata.
};

/// Bytes de un registro de 600 caracteres, todos de cuatro bytes.
inline constexpr std::size_t kRegistroUtf8 = 2400;

/// Si `bytes` son UTF-8 y miden, en bytes, lo que no deben. `longitud` es la del registro entero, en bytes,
/// del que basta con dar los kRegistroUtf8 primeros. Uno que mide 600 bytes se completó contándolos, y sus
/// campos están donde deben: solo se da de él la palabra, con `bytes` vacío.
bool LeerUtf8(std::string_view bytes, std::uint64_t longitud, RegistroUtf8& leido);

}  // namespace remesa
