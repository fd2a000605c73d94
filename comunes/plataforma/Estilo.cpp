#include "comunes/plataforma/Estilo.h"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace comunes {

namespace {

class EstiloLegible : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement cual, const QStyleOption* opcion, QPainter* pintor,
                     const QWidget* control) const override {
    QProxyStyle::drawPrimitive(cual, opcion, pintor, control);
    if (cual != PE_IndicatorCheckBox || opcion->palette.color(QPalette::Window).lightness() >= 128) return;
    // El borde de una casilla sin marcar es más oscuro que el fondo, también sobre uno oscuro.
    QColor borde = opcion->palette.color(QPalette::WindowText);
    borde.setAlphaF(0.7F);
    pintor->save();
    pintor->setPen(borde);
    pintor->setBrush(Qt::NoBrush);
    pintor->drawRect(opcion->rect.adjusted(0, 0, -1, -1));
    pintor->restore();
  }
};

}  // namespace

QStyle* CrearEstilo() {
  return new EstiloLegible;
}

}  // namespace comunes
