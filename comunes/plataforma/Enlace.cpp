#include "comunes/plataforma/Enlace.h"

#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace comunes {

namespace {

constexpr int kAire = 3;  // píxeles a cada lado del texto

}  // namespace

Enlace::Enlace(QWidget* padre) : QPushButton(padre) {
  setFlat(true);
  setAutoDefault(false);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Enlace::ponerColor(const QColor& color) {
  if (color == propio_) return;
  propio_ = color;
  update();
}

QSize Enlace::sizeHint() const {
  const QSize texto = fontMetrics().size(Qt::TextShowMnemonic, text());
  return {texto.width() + 2 * kAire, texto.height() + 2};
}

void Enlace::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  // El azul de los enlaces de algunos escritorios no se lee sobre su propio fondo oscuro.
  const bool oscuro = palette().color(QPalette::Window).lightness() < 128;
  QColor color = oscuro ? QColor(0x7A, 0xB8, 0xFF) : QColor(0x1F, 0x5F, 0xB8);
  if (propio_.isValid()) color = propio_;
  if (isDown()) color = palette().color(QPalette::WindowText);
  pintor.setPen(color);
  pintor.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, text());
  // La raya va debajo de la de su letra, que así se distingue.
  const int ancho = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
  const int raya = (height() + fontMetrics().height()) / 2;
  pintor.drawLine((width() - ancho) / 2, raya, (width() + ancho) / 2 - 1, raya);
  if (!hasFocus()) return;
  QStyleOptionFocusRect foco;
  foco.initFrom(this);
  foco.backgroundColor = palette().color(QPalette::Window);
  pintor.drawPrimitive(QStyle::PE_FrameFocusRect, foco);
}

}  // namespace comunes
