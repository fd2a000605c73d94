#include "comunes/dialogos/ImagenCaja.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

// Las figuras se dibujan en un cuadrado de 48 x 48 unidades que se escala al tamaño de la imagen.

namespace comunes {
namespace {

const QColor kAzul(0x25, 0x6F, 0xB8);
const QColor kVerde(0x2A, 0x82, 0x6B);
const QColor kRojo(0xC8, 0x3A, 0x3A);
const QColor kAmbar(0xF0, 0xA8, 0x1E);
const QColor kGris(0x5B, 0x6A, 0x7A);
const QColor kTinta(0x2B, 0x2B, 0x2B);

void Disco(QPainter& p, const QColor& color) {
  p.setPen(Qt::NoPen);
  p.setBrush(color);
  p.drawEllipse(QRectF(3, 3, 42, 42));
}

QPen Trazo(const QColor& color, qreal ancho) {
  return {color, ancho, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void Aviso(QPainter& p) {
  Disco(p, kAzul);
  p.setBrush(Qt::white);
  p.drawEllipse(QPointF(24, 14), 2.9, 2.9);
  p.setPen(Trazo(Qt::white, 4.6));
  p.drawLine(QPointF(24, 22), QPointF(24, 35));
}

void Error(QPainter& p) {
  Disco(p, kRojo);
  p.setPen(Trazo(Qt::white, 4.6));
  p.drawLine(QPointF(17, 17), QPointF(31, 31));
  p.drawLine(QPointF(31, 17), QPointF(17, 31));
}

void Advertencia(QPainter& p) {
  p.setPen(Trazo(kAmbar, 5));
  p.setBrush(kAmbar);
  p.drawPolygon(QPolygonF({{24, 6}, {43.5, 41}, {4.5, 41}}));
  p.setPen(Trazo(kTinta, 4.4));
  p.drawLine(QPointF(24, 17), QPointF(24, 28));
  p.setPen(Qt::NoPen);
  p.setBrush(kTinta);
  p.drawEllipse(QPointF(24, 35.5), 2.7, 2.7);
}

void Pregunta(QPainter& p) {
  Disco(p, kVerde);
  QPainterPath gancho(QPointF(16.5, 18.5));
  gancho.cubicTo(16.5, 8.5, 31.5, 8.5, 31.5, 18);
  gancho.cubicTo(31.5, 23.5, 24, 23.5, 24, 29);
  p.setBrush(Qt::NoBrush);
  p.setPen(Trazo(Qt::white, 4.4));
  p.drawPath(gancho);
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  p.drawEllipse(QPointF(24, 36.5), 2.8, 2.8);
}

void Entrada(QPainter& p) {
  p.setPen(Trazo(kGris, 2.4));
  p.setBrush(Qt::white);
  p.drawRoundedRect(QRectF(4, 22, 40, 18), 3, 3);
  p.setPen(Trazo(kAzul, 2.6));
  p.drawLine(QPointF(10, 27), QPointF(10, 35));
  p.setPen(Trazo(kGris, 2.6));
  p.drawLine(QPointF(15, 31), QPointF(21, 31));
  p.translate(28, 29);
  p.rotate(45);
  p.setPen(Trazo(kTinta, 1.2));
  p.setBrush(kAmbar);
  p.drawRect(QRectF(-3.6, -27, 7.2, 20));
  p.setBrush(QColor(0xF3, 0xDC, 0xB4));
  p.drawPolygon(QPolygonF({{-3.6, -7}, {3.6, -7}, {0, 0}}));
  p.setBrush(kRojo);
  p.drawRoundedRect(QRectF(-3.6, -31, 7.2, 5), 1.5, 1.5);
}

void Cifrado(QPainter& p) {
  QPainterPath arco(QPointF(14, 24));
  arco.lineTo(14, 17);
  arco.cubicTo(14, 4, 34, 4, 34, 17);
  arco.lineTo(34, 24);
  p.setBrush(Qt::NoBrush);
  p.setPen(Trazo(kGris, 4.6));
  p.drawPath(arco);
  p.setPen(Qt::NoPen);
  p.setBrush(kAmbar);
  p.drawRoundedRect(QRectF(8, 21, 32, 23), 4, 4);
  p.setBrush(kTinta);
  p.drawEllipse(QPointF(24, 30), 3.4, 3.4);
  p.setPen(Trazo(kTinta, 3));
  p.drawLine(QPointF(24, 31), QPointF(24, 37));
}

}  // namespace

ImagenCaja::ImagenCaja(QWidget* padre) : QWidget(padre) {
  setFixedSize(ImagenCaja::sizeHint());
}

void ImagenCaja::PonerIcono(int indice) {
  icono_ = indice;
  update();
}

void ImagenCaja::paintEvent(QPaintEvent*) {
  if (icono_ <= 0) return;
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const qreal lado = std::min(width(), height());
  p.scale(lado / 48, lado / 48);
  switch (icono_) {
    case 2:
      return Error(p);
    case 3:
      return Advertencia(p);
    case 4:
      return Entrada(p);
    case 16:
      return Pregunta(p);
    case 17:
      return Cifrado(p);
    default:
      return Aviso(p);
  }
}

}  // namespace comunes
