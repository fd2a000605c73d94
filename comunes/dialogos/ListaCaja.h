#pragma once

#include <QStringList>

namespace comunes {

/// Elementos de una lista escrita como "A;B;C" o, si no lleva ";", como "A<<B<<C"; el separador del final no
/// añade otro vacío. "@" y una ruta: una por línea del fichero (Windows-1252; CR LF, CR o LF), ninguna si no
/// existe. Lanza ErrorEjecucion si existe y no se puede leer.
QStringList ElementosLista(const QString& valor);

}  // namespace comunes
