#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

class QFontMetrics;

namespace comunes {

/// Dónde va una caja de tamaño `caja` (con su marco). `Top` y `Left` en twips (15 por píxel); -1 centra en
/// `pantalla` según ese eje. Si `sobre` no es nulo centra sobre él en los dos ejes. El resultado queda dentro
/// de `libre` (la pantalla sin barras) y, si no cabe, enseña la esquina superior izquierda.
QPoint EsquinaCaja(QSize caja, float Top, float Left, const QRect& sobre, const QRect& pantalla,
                   const QRect& libre);

/// Texto de un mensaje tal como se enseña: cada ";" es un cambio de línea.
QString TextoCaja(const QString& texto);

/// Permite partir (con espacios de ancho nulo) las palabras más anchas que `ancho` píxeles, como una ruta
/// larga.
QString PartirPalabras(const QString& texto, const QFontMetrics& medidas, int ancho);

}  // namespace comunes
