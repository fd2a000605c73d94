#pragma once

#include <QColor>

namespace comunes {

/// Color en orden azul-verde-rojo, como los guarda la rejilla; negativo, color no válido.
inline QColor ColorDe(int bgr) {
  return bgr < 0 ? QColor() : QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

}  // namespace comunes
