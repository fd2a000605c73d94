#pragma once

#include <QString>

#include "ventanas/editor/Descripciones.h"

namespace editor {

/// Frase que avisa de que `texto` no llegará al registro tal como está en el campo: caracteres que la regla
/// de SEPA cambia, lo que se corta, o una longitud que mueve los campos siguientes. Vacía si llega igual.
QString Observacion(const CampoDescrito& campo, const QString& texto);

}  // namespace editor
