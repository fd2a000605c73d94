#pragma once

#include <QByteArray>
#include <QString>

namespace comunes {

/// Un tema de ayuda leído: su texto o, si no se pudo, por qué.
struct TextoAyuda {
  enum class Formato { Llano, Html, Markdown };
  QString texto;
  Formato formato = Formato::Llano;
  QString fallo;  // para el operador; vacío si se leyó
};

/// Lee un tema de un fichero corriente o de un recurso (":/…") de 4 MB a lo más. No lanza.
TextoAyuda LeerAyuda(const QString& ruta);

/// UTF-8 (o UTF-16 con su marca) y, si no lo es, Windows-1252.
QString DecodificarAyuda(const QByteArray& bytes);

/// Contenido entero de un fichero corriente o de un recurso. Lanza remesa::ErrorEjecucion; 7 si pasa de
/// `maximo`.
QByteArray LeerBytes(const QString& ruta, qint64 maximo);

}  // namespace comunes
