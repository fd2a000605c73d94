#pragma once

#include <QString>

#include "remesa/Correccion.h"

namespace principal {

/// Lo que había y lo que queda, como están en el registro, o en palabras si no es un campo lo que cambia. De
/// una fecha, "01/12/2026"; de un importe, "1.234,56 €".
QString TextoAntes(const remesa::Correccion& correccion);
QString TextoDespues(const remesa::Correccion& correccion);

/// Qué se corrige, en una frase sin punto: "Caracteres que no se admiten".
QString TextoCorreccion(const remesa::Correccion& correccion);

}  // namespace principal
