#include "comunes/impresion/ImagenImpresora.h"

#include <QPainter>
#include <QPixmap>

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

// Sobre una cuadrícula de 32 x 32.
constexpr int kLado = 32;
const QColor kTrazo(70, 90, 120);
const QColor kCuerpo(176, 190, 210);
const QColor kRojo(190, 40, 40);

void dibujarImpresora(QPainter& p) {
  p.setBrush(Qt::white);
  p.drawRect(9, 4, 14, 10);
  p.setBrush(kCuerpo);
  p.drawRoundedRect(4, 12, 24, 11, 2, 2);
  p.setBrush(Qt::white);
  p.drawRect(9, 19, 14, 9);
  p.drawLine(11, 22, 21, 22);
  p.drawLine(11, 25, 19, 25);
  p.setBrush(QColor(60, 160, 80));
  p.setPen(Qt::NoPen);
  p.drawEllipse(23, 14, 3, 3);
}

void dibujarDocumento(QPainter& p) {
  p.setBrush(Qt::white);
  p.drawPolygon(QPolygon({{7, 3}, {20, 3}, {26, 9}, {26, 29}, {7, 29}}));
  p.drawPolyline(QPolygon({{20, 3}, {20, 9}, {26, 9}}));
  p.setPen(Qt::NoPen);
  p.setBrush(kRojo);
  p.drawRect(4, 14, 20, 9);
  QFont letra = p.font();
  letra.setPixelSize(8);
  letra.setBold(true);
  p.setFont(letra);
  p.setPen(Qt::white);
  p.drawText(QRect(4, 14, 20, 9), Qt::AlignCenter, u"PDF"_s);
}

}  // namespace

QIcon ImagenImpresora(bool pdf) {
  QIcon icono;
  for (const int lado : {kLado, 2 * kLado, 3 * kLado}) {
    QPixmap dibujo(lado, lado);
    dibujo.fill(Qt::transparent);
    QPainter p(&dibujo);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(double(lado) / kLado, double(lado) / kLado);
    p.setPen(QPen(kTrazo, 1.2));
    pdf ? dibujarDocumento(p) : dibujarImpresora(p);
    p.end();
    icono.addPixmap(dibujo);
  }
  return icono;
}

}  // namespace comunes
