#pragma once

#include "remesa/Anotador.h"

namespace remesa {

/// Lo que un 04 y un 05 repiten de la cabecera 02 de su bloque, recortado; vacío si no hay ninguna.
struct DatosCabecera {
  std::string_view acreedor, fechaCobro;
};

/// Comprueba por separado cada campo del registro en que está el anotador, según la tabla de campos. De un
/// registro corto, solo los que tiene enteros. Lo que diga lo mismo que `cabecera` no se mira: ya se miró en
/// ella.
void ComprobarCampos(Anotador& anotador, const DatosCabecera& cabecera);

}  // namespace remesa
