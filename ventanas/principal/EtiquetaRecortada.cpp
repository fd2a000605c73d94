#include "ventanas/principal/EtiquetaRecortada.h"

#include <QHelpEvent>
#include <QResizeEvent>
#include <QStylePainter>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>

namespace principal {

using namespace Qt::StringLiterals;

namespace {

// Más que esto no se pide: un nombre largo no debe dejar sin sitio a los avisos de al lado.
constexpr int kCaracteresPedidos = 50;
constexpr int kCaracteresMinimos = 8;

}  // namespace

EtiquetaRecortada::EtiquetaRecortada(QWidget* padre) : QLabel(padre) {
  setTextFormat(Qt::PlainText);
}

QStringList EtiquetaRecortada::repartir(int ancho) const {
  QStringList partes;
  QTextLayout reparto(text(), font());
  reparto.beginLayout();
  for (QTextLine linea = reparto.createLine(); linea.isValid(); linea = reparto.createLine()) {
    linea.setLineWidth(ancho);
    const bool ultima = partes.size() + 1 == lineas_;
    partes << (ultima ? text().mid(linea.textStart()) : text().mid(linea.textStart(), linea.textLength()));
    if (ultima) break;
  }
  reparto.endLayout();
  return partes;
}

int EtiquetaRecortada::heightForWidth(int ancho) const {
  return std::max(1, static_cast<int>(repartir(ancho).size())) * fontMetrics().lineSpacing();
}

QSize EtiquetaRecortada::sizeHint() const {
  const int texto = fontMetrics().horizontalAdvance(text()) + 2;
  return {std::min(texto, kCaracteresPedidos * fontMetrics().averageCharWidth()), minimumSizeHint().height()};
}

QSize EtiquetaRecortada::minimumSizeHint() const {
  return {kCaracteresMinimos * fontMetrics().averageCharWidth(), heightForWidth(std::max(1, width()))};
}

bool EtiquetaRecortada::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const QStringList partes = repartir(width());
    const bool cabe = partes.isEmpty() || fontMetrics().horizontalAdvance(partes.constLast()) <= width();
    const QString ayuda = u"<span>"_s + text().toHtmlEscaped() + u"</span>"_s;
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), cabe ? QString() : ayuda, this);
    return true;
  }
  return QLabel::event(evento);
}

void EtiquetaRecortada::resizeEvent(QResizeEvent* evento) {
  QLabel::resizeEvent(evento);
  // Con otro ancho cambia la altura que hace falta, y el divisor solo mira la mínima.
  if (lineas_ > 1 && evento->size().width() != evento->oldSize().width()) updateGeometry();
}

void EtiquetaRecortada::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  pintor.setPen(palette().color(foregroundRole()));
  const QStringList partes = repartir(width());
  const int alto = fontMetrics().lineSpacing();
  int y = (height() - alto * static_cast<int>(partes.size())) / 2;
  for (const QString& parte : partes) {
    const auto donde = lineas_ > 1 ? Qt::ElideRight : Qt::ElideMiddle;
    pintor.drawText(QRect(0, y, width(), alto), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    fontMetrics().elidedText(parte.trimmed(), donde, width()));
    y += alto;
  }
}

}  // namespace principal
