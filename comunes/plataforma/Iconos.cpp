#include "comunes/plataforma/Iconos.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include "comunes/plataforma/Ventanas.h"

namespace comunes {
namespace {

/// Todos se dibujan sobre una cuadrícula de 24 x 24 con el mismo grueso de trazo.
constexpr qreal kCuadricula = 24.0;

struct Colores {
  QColor trazo;
  QColor relleno;
  QColor acento;
};

Colores ColoresPara(QIcon::Mode modo) {
  const QPalette paleta = QGuiApplication::palette();
  const auto grupo = modo == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
  const bool oscuro = paleta.color(QPalette::Window).lightness() < 128;
  Colores colores;
  colores.trazo = paleta.color(grupo, QPalette::ButtonText);
  colores.relleno = oscuro ? QColor(255, 255, 255, 30) : QColor(255, 255, 255, 190);
  colores.acento = oscuro ? QColor(0x7A, 0xB8, 0xFF) : QColor(0x1F, 0x5F, 0xB8);
  if (modo == QIcon::Disabled) colores.acento = colores.trazo;
  return colores;
}

QColor Peligro(const Colores& c) {
  return c.trazo.lightness() > 128 ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB3, 0x26, 0x1E);
}

QPolygonF Lineas(std::initializer_list<QPointF> puntos) {
  return QPolygonF(QList<QPointF>(puntos));
}

QPen Pluma(const QColor& color, qreal grueso = 1.7) {
  return QPen(color, grueso, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void Hoja(QPainter& p, const QRectF& r, qreal doblez) {
  p.drawPolygon(Lineas({r.topLeft(),
                        {r.right() - doblez, r.top()},
                        {r.right(), r.top() + doblez},
                        r.bottomRight(),
                        r.bottomLeft()}));
  p.drawPolyline(Lineas({{r.right() - doblez, r.top()},
                         {r.right() - doblez, r.top() + doblez},
                         {r.right(), r.top() + doblez}}));
}

void Flecha(QPainter& p, QPointF desde, QPointF hasta) {
  const QLineF linea(desde, hasta);
  p.drawLine(linea);
  for (const qreal giro : {140.0, 220.0}) {
    QLineF punta = QLineF::fromPolar(4.2, linea.angle() + giro);
    p.drawLine(punta.translated(hasta));
  }
}

/// Tres renglones, como registros de la lista.
void Renglones(QPainter& p, const Colores& c) {
  p.setPen(Pluma(c.trazo));
  for (const qreal y : {5.0, 12.0})
    p.drawLine(QPointF(3, y), QPointF(21, y));
  p.drawLine(QPointF(3, 19), QPointF(10, 19));
}

void Carpeta(QPainter& p, bool abierta) {
  QPainterPath forma;
  forma.addPolygon(Lineas({{3, 19}, {3, 5.5}, {9, 5.5}, {11, 8}, {20, 8}, {20, 19}}));
  forma.closeSubpath();
  QColor fondo(0xF2, 0xC1, 0x4E);
  p.setPen(Pluma(QColor(0xA8, 0x76, 0x0C), 1.4));
  p.setBrush(abierta ? fondo.darker(115) : fondo);
  p.drawPath(forma);
  if (!abierta) return;
  p.setBrush(fondo.lighter(112));
  p.drawPolygon(Lineas({{3, 19}, {6.5, 11.5}, {23, 11.5}, {20, 19}}));
}

/// Una señal llena con su signo dentro, del color del fondo.
void Senal(QPainter& p, Pictograma que) {
  const QPalette paleta = QGuiApplication::palette();
  const QColor color = ColorDeIcono(que, paleta);
  p.setPen(Pluma(color, 1.4));
  p.setBrush(color);
  if (que == Pictograma::Aviso)
    p.drawPolygon(Lineas({{12, 2.5}, {22.5, 21}, {1.5, 21}}));
  else
    p.drawEllipse(QRectF(2, 2, 20, 20));
  p.setPen(Pluma(paleta.color(QPalette::Base), 2.6));
  switch (que) {
    case Pictograma::Error:
      p.drawLine(QPointF(8, 8), QPointF(16, 16));
      p.drawLine(QPointF(16, 8), QPointF(8, 16));
      break;
    case Pictograma::Aviso:
      p.drawLine(QPointF(12, 9.5), QPointF(12, 14));
      p.drawPoint(QPointF(12, 18));
      break;
    default:
      p.drawPolyline(Lineas({{7, 12.5}, {10.5, 16}, {17, 8.5}}));
  }
}

void Dibujar(QPainter& p, Pictograma que, const Colores& c) {
  p.setPen(Pluma(c.trazo));
  p.setBrush(c.relleno);
  switch (que) {
    case Pictograma::Importar:
      p.drawPolyline(Lineas({{4, 13}, {4, 20.5}, {20, 20.5}, {20, 13}}));
      p.setPen(Pluma(c.acento, 2.1));
      Flecha(p, {12, 3}, {12, 16});
      break;
    case Pictograma::Empezar:
      Hoja(p, {5, 3, 14, 18}, 5);
      p.setPen(Pluma(c.acento, 2.1));
      p.drawLine(QPointF(12, 10.5), QPointF(12, 17.5));
      p.drawLine(QPointF(8.5, 14), QPointF(15.5, 14));
      break;
    case Pictograma::Guardar:
      p.drawPolygon(Lineas({{3.5, 3.5}, {17, 3.5}, {20.5, 7}, {20.5, 20.5}, {3.5, 20.5}}));
      p.drawRect(QRectF(7.5, 3.5, 8, 5));
      p.setPen(Pluma(c.acento));
      p.drawRect(QRectF(7, 13, 10, 7.5));
      break;
    case Pictograma::Insertar:
      Renglones(p, c);
      p.setPen(Pluma(c.acento, 2.1));
      p.drawLine(QPointF(17, 15.5), QPointF(17, 22.5));
      p.drawLine(QPointF(13.5, 19), QPointF(20.5, 19));
      break;
    case Pictograma::Eliminar:
      Renglones(p, c);
      p.setPen(Pluma(Peligro(c), 2.1));
      p.drawLine(QPointF(14, 16), QPointF(20, 22));
      p.drawLine(QPointF(20, 16), QPointF(14, 22));
      break;
    case Pictograma::Imprimir:
      p.drawRect(QRectF(7, 3, 10, 6));
      p.drawRoundedRect(QRectF(3, 9, 18, 8), 1.5, 1.5);
      p.setPen(Pluma(c.acento));
      p.drawRect(QRectF(7, 14, 10, 7));
      break;
    case Pictograma::Salir:
      p.drawPolyline(Lineas({{13, 3.5}, {4, 3.5}, {4, 20.5}, {13, 20.5}}));
      p.setPen(Pluma(c.acento, 2.1));
      Flecha(p, {9.5, 12}, {20.5, 12});
      break;
    case Pictograma::Anterior:
      p.setPen(Pluma(c.acento, 2.1));
      Flecha(p, {20, 12}, {4, 12});
      break;
    case Pictograma::Siguiente:
      p.setPen(Pluma(c.acento, 2.1));
      Flecha(p, {4, 12}, {20, 12});
      break;
    case Pictograma::Aceptar:
      p.setPen(Pluma(c.acento, 2.4));
      p.drawPolyline(Lineas({{4, 12.5}, {10, 18.5}, {20.5, 6}}));
      break;
    case Pictograma::Descartar:
      p.setPen(Pluma(Peligro(c), 2.1));
      p.drawLine(QPointF(6, 6), QPointF(18, 18));
      p.drawLine(QPointF(18, 6), QPointF(6, 18));
      break;
    case Pictograma::Carpeta:
    case Pictograma::CarpetaAbierta:
      Carpeta(p, que == Pictograma::CarpetaAbierta);
      break;
    case Pictograma::Error:
    case Pictograma::Aviso:
    case Pictograma::Correcto:
      Senal(p, que);
      break;
  }
}

class MotorIcono : public QIconEngine {
 public:
  explicit MotorIcono(Pictograma pictograma) : pictograma_(pictograma) {}

  void paint(QPainter* pintor, const QRect& zona, QIcon::Mode modo, QIcon::State) override {
    pintor->save();
    pintor->setRenderHint(QPainter::Antialiasing);
    pintor->translate(zona.topLeft());
    pintor->scale(zona.width() / kCuadricula, zona.height() / kCuadricula);
    Dibujar(*pintor, pictograma_, ColoresPara(modo));
    pintor->restore();
  }

  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override {
    QPixmap imagen(tamano);
    imagen.fill(Qt::transparent);
    QPainter pintor(&imagen);
    paint(&pintor, QRect(QPoint(0, 0), tamano), modo, estado);
    return imagen;
  }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> tamanos;
    for (const int lado : {16, 24, 32, 48, 64, 128, 256})
      tamanos << QSize(lado, lado);
    return tamanos;
  }

  QIconEngine* clone() const override { return new MotorIcono(*this); }

 private:
  Pictograma pictograma_;
};

}  // namespace

QColor ColorDeIcono(Pictograma pictograma, const QPalette& paleta) {
  const bool oscuro = paleta.color(QPalette::Window).lightness() < 128;
  switch (pictograma) {
    case Pictograma::Error:
      return oscuro ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB3, 0x26, 0x1E);
    case Pictograma::Aviso:
      return ColorAviso(paleta);
    case Pictograma::Correcto:
      return oscuro ? QColor(0x81, 0xD4, 0x8D) : QColor(0x1B, 0x6B, 0x2F);
    default:
      return paleta.color(QPalette::WindowText);
  }
}

QIcon Icono(Pictograma pictograma) {
  return QIcon(new MotorIcono(pictograma));
}

}  // namespace comunes
