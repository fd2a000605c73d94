#pragma once

#include "remesa/Anotador.h"

namespace remesa {

/// Comprueba por separado cada campo del registro en que está el anotador, según la tabla de campos. De un
/// registro corto, solo los que tiene enteros.
void ComprobarCampos(Anotador& anotador);

}  // namespace remesa
