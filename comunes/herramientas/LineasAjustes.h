#pragma once

#include <QStringList>

namespace herramientas {

/// Líneas preparadas para editar `ruta`: las claves y los modelos de campo del fichero de ajustes, si se
/// llama como él; si no, ninguna.
QStringList LineasAjustes(const QString& ruta);

}  // namespace herramientas
