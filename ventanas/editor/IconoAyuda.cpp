#include "ventanas/editor/IconoAyuda.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace editor {

QIcon IconoAyuda(const QColor& color) {
  constexpr int kLado = 16;
  QIcon icono;
  for (const qreal escala : {1.0, 1.5, 2.0, 3.0}) {
    QPixmap dibujo(QSize(kLado, kLado) * escala);
    dibujo.setDevicePixelRatio(escala);
    dibujo.fill(Qt::transparent);
    QPainter pintor(&dibujo);
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(color, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    pintor.drawPolygon(QPolygonF({{2.5, 13.5}, {3.5, 10}, {10.5, 3}, {13, 5.5}, {6, 12.5}}));
    pintor.drawLine(QPointF(9, 4.5), QPointF(11.5, 7));
    icono.addPixmap(dibujo);
  }
  return icono;
}

}  // namespace editor
