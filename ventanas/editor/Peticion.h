#pragma once

#include <QString>

#include "comunes/dialogos/MyBox.h"
#include "ventanas/editor/Descripciones.h"

namespace editor {

/// El valor del campo en la forma en que se pide; "" si no vale o si no se ofrece.
QString ValorPeticion(const CampoDescrito& campo, const QString& texto);

/// Lo que se dice mientras se pide un importe o una fecha: un ejemplo, en qué quedará lo que se va
/// escribiendo y, antes de convertirlo, que la fecha no existe o que el importe no cabe en el campo. En las
/// demás ayudas, nada.
comunes::GuiaPeticion GuiaDe(const CampoDescrito& campo);

}  // namespace editor
