#pragma once

#include <QString>

namespace comunes {

/// Quita los blancos de los extremos, y ningún otro espacio: un tabulador o un salto de línea son parte del
/// dato.
inline QString SinBlancos(const QString& texto) {
  qsizetype desde = 0;
  qsizetype hasta = texto.size();
  while (desde < hasta && texto[desde] == u' ')
    ++desde;
  while (hasta > desde && texto[hasta - 1] == u' ')
    --hasta;
  return texto.mid(desde, hasta - desde);
}

}  // namespace comunes
