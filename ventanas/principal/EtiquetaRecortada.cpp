#include "ventanas/principal/EtiquetaRecortada.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

namespace principal {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCaracteresMinimos = 8;

}  // namespace

EtiquetaRecortada::EtiquetaRecortada(QWidget* padre) : QLabel(padre) {
  setTextFormat(Qt::PlainText);
}

void EtiquetaRecortada::ponerRecorte(Qt::TextElideMode recorte) {
  recorte_ = recorte;
  update();
}

void EtiquetaRecortada::ponerPedidos(int caracteres) {
  pedidos_ = caracteres;
  updateGeometry();
}

QSize EtiquetaRecortada::sizeHint() const {
  const int texto = fontMetrics().horizontalAdvance(text()) + 2;
  return {std::min(texto, pedidos_ * fontMetrics().averageCharWidth()), minimumSizeHint().height()};
}

QSize EtiquetaRecortada::minimumSizeHint() const {
  return {kCaracteresMinimos * fontMetrics().averageCharWidth(), fontMetrics().lineSpacing()};
}

bool EtiquetaRecortada::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const bool cabe = fontMetrics().horizontalAdvance(text()) <= width();
    const QString ayuda = u"<span>"_s + text().toHtmlEscaped() + u"</span>"_s;
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), cabe ? QString() : ayuda, this);
    return true;
  }
  return QLabel::event(evento);
}

void EtiquetaRecortada::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  pintor.setPen(palette().color(foregroundRole()));
  pintor.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                  fontMetrics().elidedText(text(), recorte_, width()));
}

}  // namespace principal
