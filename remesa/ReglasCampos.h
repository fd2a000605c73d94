#pragma once

#include "remesa/Anotador.h"

namespace remesa {

/// Lo que de otros registros hace falta para mirar los campos de uno.
struct ContextoCampos {
  std::string_view acreedor, fechaCobro;  ///< Lo que un 04 y un 05 repiten de su 02, recortado; o nada.
  std::string_view version;               ///< La del fichero.
  bool direccionLibre = false;  ///< El cobro es de cuando aún valían las direcciones sin estructurar.
  bool utf8 = false;            ///< Las letras con acento ya se han dicho, de una vez.
};

/// Comprueba por separado cada campo del registro en que está el anotador, según la tabla de campos. De un
/// registro corto, solo los que tiene enteros. Lo que diga lo mismo que la cabecera no se mira: ya se miró en
/// ella.
void ComprobarCampos(Anotador& anotador, const ContextoCampos& contexto);

}  // namespace remesa
