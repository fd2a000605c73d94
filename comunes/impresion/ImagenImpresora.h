#pragma once

#include <QIcon>

namespace comunes {

/// Dibujo de la vista de impresoras o, con `pdf`, de la de documentos PDF; a cualquier tamaño.
QIcon ImagenImpresora(bool pdf);

}  // namespace comunes
