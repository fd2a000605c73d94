#pragma once

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

}  // namespace comunes
