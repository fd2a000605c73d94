#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace remesa {

/// Recuerda claves por su huella de 64 bits, 16 bytes cada una: dos claves distintas se confunden una vez
/// entre diez mil millones de parejas de un fichero de un millón.
class Huellas {
 public:
  struct Entrada {
    std::uint64_t huella = 0;
    std::uint32_t registro = 0;  ///< 0, hueco.
    std::uint32_t dato = 0;
  };

  /// Da la entrada que ya tuviera esa clave o, si es nueva, la guarda y da una con registro 0.
  Entrada poner(std::uint64_t huella, std::uint64_t registro, std::uint32_t dato = 0);

 private:
  Entrada& sitio(std::uint64_t huella);
  void crecer();

  std::vector<Entrada> tabla_;
  std::size_t usadas_ = 0;
};

std::uint64_t Huella(std::string_view clave);

/// Huella de una clave de varias partes.
std::uint64_t Mezclar(std::uint64_t una, std::uint64_t otra);

/// Lo que no debe repetirse en un fichero. Cada consulta da el registro anterior, o 0, y recuerda el suyo.
class Repetidos {
 public:
  std::uint64_t referencia(std::string_view referencia, std::uint64_t registro);
  /// `mandato`: huella del mandato con su acreedor.
  std::uint64_t cobro(std::uint64_t mandato, std::string_view importe, std::string_view fecha,
                      std::uint64_t registro);
  /// El primer registro del mandato, si su cuenta era otra.
  std::uint64_t otraCuenta(std::uint64_t mandato, std::string_view cuenta, std::uint64_t registro);

 private:
  Huellas referencias_, cobros_, mandatos_;
};

}  // namespace remesa
