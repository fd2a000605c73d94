#pragma once

#include <QString>

#include "ventanas/editor/Descripciones.h"

namespace editor {

/// Frase que avisa de que `texto` no llegará al registro tal como está en el campo: caracteres que la regla
/// de SEPA cambia, con lo que quedará, lo que se corta, o una longitud que mueve los campos siguientes. Vacía
/// si llega igual. `original` es lo que se leyó.
QString Observacion(const CampoDescrito& campo, const QString& texto, const QString& original = {});

/// `texto` con caracteres que llegan todos al registro tal como están y se leen igual: las letras, sin sus
/// signos. Nunca es más largo.
QString FormaLegible(const CampoDescrito& campo, const QString& texto);

}  // namespace editor
