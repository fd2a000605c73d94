#pragma once

#include <QByteArray>
#include <QString>

namespace comunes {

/// Contenido entero de un fichero corriente o de un recurso (":/…"). Lanza remesa::ErrorEjecucion; 7 si pasa
/// de `maximo` bytes.
QByteArray LeerBytes(const QString& ruta, qint64 maximo);

/// UTF-8 (o UTF-16 con su marca) y, si no lo es, Windows-1252. La marca inicial no queda en el texto.
QString DecodificarTexto(const QByteArray& bytes);

}  // namespace comunes
