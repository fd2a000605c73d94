#pragma once

#include "remesa/Anotador.h"

namespace remesa {

/// Los totales de la norma: cada 04, los de su bloque; cada 05, los de su acreedor; el 99, los del fichero.
class TotalesNorma {
 public:
  explicit TotalesNorma(Anotador& anotador) : anotador_(anotador) {}

  /// Cuenta el registro en que está el anotador y, si es de totales, compara los suyos.
  void dar();

 private:
  // Sin signo: en un fichero que no tenga fin darían la vuelta, no un error.
  struct Suma {
    std::uint64_t importe = 0;
    std::uint64_t adeudos = 0;
    std::uint64_t registros = 0;
    void sumar(const Suma& otra);
  };
  void comparar(const Suma& suma, Posiciones importe, Posiciones adeudos, Posiciones registros);
  void compararUno(CodigoHallazgo codigo, Posiciones donde, std::uint64_t debido);

  Anotador& anotador_;
  Suma bloque_, acreedor_, fichero_;
};

}  // namespace remesa
