#include "ventanas/principal/ReglaPosiciones.h"

#include <QMouseEvent>
#include <QPainter>

#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

ReglaPosiciones::ReglaPosiciones(VistaRegistros* vista) : QWidget(vista), vista_(vista) {
  setMouseTracking(true);
  setAccessibleName(u"Regla de posiciones"_s);
}

int ReglaPosiciones::alto() const {
  return fontMetrics().height() + 7;
}

void ReglaPosiciones::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  pintor.fillRect(rect(), palette().window());
  QFont menor = font();
  menor.setPointSizeF(menor.pointSizeF() * 0.85);
  pintor.setFont(menor);
  QColor trazo = palette().color(QPalette::WindowText);
  pintor.setPen(trazo);
  trazo.setAlphaF(0.45F);
  const Columnas& columnas = vista_->columnas();
  const int origen = -vista_->desplazamiento();
  const int primera = std::max(1, columnas.posicionEn(std::max(-origen, Columnas::kMargen)) - 20);
  for (int posicion = primera; posicion <= columnas.ultima(); ++posicion) {
    const int x = origen + columnas.x(posicion);
    if (x > width()) break;
    const int centro = x + columnas.ancho() / 2;
    const int marca = posicion % 10 == 0 ? 5 : posicion % 5 == 0 ? 3 : 1;
    pintor.setPen(trazo);
    pintor.drawLine(centro, height() - 1 - marca, centro, height() - 2);
    if (posicion % 10 != 0) continue;
    pintor.setPen(palette().color(QPalette::WindowText));
    const int medio = 4 * columnas.ancho();
    pintor.drawText(QRect(centro - medio, 0, 2 * medio, height() - 6), Qt::AlignHCenter | Qt::AlignBottom,
                    QString::number(posicion));
  }
  pintor.setPen(trazo);
  pintor.drawLine(0, height() - 1, width(), height() - 1);
}

void ReglaPosiciones::mouseMoveEvent(QMouseEvent* evento) {
  emit posicionBajoRaton(
      vista_->columnas().posicionEn(evento->position().toPoint().x() + vista_->desplazamiento()));
}

void ReglaPosiciones::leaveEvent(QEvent* evento) {
  emit posicionBajoRaton(0);
  QWidget::leaveEvent(evento);
}

}  // namespace principal
