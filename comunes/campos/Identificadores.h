#pragma once

#include <QString>

namespace comunes {

/// Cambia el "?" final de un NIF por su letra de control ("12345678?" da "12345678Z"). Sin número delante, o
/// si vale 0, el "?" se quita y no hay letra. Un texto que no acaba en "?", o que acaba en "(?", no se toca.
void NifLetter(QString& texto);

/// Desarrolla a 8 cifras una cuenta contable: "43.25" y "43025" dan "43000025". Una cuenta de más de 8
/// caracteres, o con el punto más allá del noveno, no tiene desarrollo y queda como estaba.
void LedgerAccount(QString& texto);

}  // namespace comunes
