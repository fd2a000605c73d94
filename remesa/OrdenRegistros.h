#pragma once

#include <string>

#include "remesa/Anotador.h"

namespace remesa {

/// El orden de la norma: 01; por cada acreedor, bloques de 02, adeudos y 04, y un 05; al final, 99. Tras un
/// registro fuera de sitio se sigue desde él.
class OrdenRegistros {
 public:
  explicit OrdenRegistros(Anotador& anotador) : anotador_(anotador) {}

  /// El registro en que está el anotador.
  void dar();
  /// El que se acaba de dar puede ser un adeudo: lo que le siga puede ser suyo.
  void dudoso();
  /// No hay más: anota lo que falte.
  void terminar();

 private:
  enum class Estado { Inicio, Presentador, Cabecera, Adeudos, Bloque, Acreedor, Final };
  static std::string_view Admitidos(Estado estado);
  static Estado Tras(CodigoRegistro codigo);
  void mirarDato();
  void mirarAcreedor();

  Anotador& anotador_;
  Estado estado_ = Estado::Inicio;
  std::string dato_;      // número de dato del último "03"; "" si no lo hay en el bloque
  std::string acreedor_;  // el del último "02"
};

}  // namespace remesa
