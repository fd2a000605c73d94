#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace comunes {

/// Contenido entero de un fichero corriente o de un recurso (":/…"). Lanza ficheros::ErrorEjecucion; 7 si
/// pasa de `maximo` bytes.
QByteArray LeerBytes(const QString& ruta, qint64 maximo);

/// UTF-8 (o UTF-16 con su marca) y, si no lo es, Windows-1252. La marca inicial no queda en el texto.
QString DecodificarTexto(const QByteArray& bytes);

/// Enseña a `ver`, en orden, las líneas de un texto: cada una acaba en CR LF, CR o LF, y el final de la
/// última no abre otra. Ninguna, si está vacío.
void RecorrerLineas(QStringView texto, const std::function<void(QStringView linea)>& ver);
QStringList PartirLineas(const QString& texto);

}  // namespace comunes
