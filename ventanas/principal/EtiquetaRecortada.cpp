#include "ventanas/principal/EtiquetaRecortada.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolTip>

namespace principal {

EtiquetaRecortada::EtiquetaRecortada(QWidget* padre) : QLabel(padre) {
  setTextFormat(Qt::PlainText);
}

QSize EtiquetaRecortada::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

bool EtiquetaRecortada::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const bool cabe = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
    const QString ayuda = QStringLiteral("<span>") + text().toHtmlEscaped() + QStringLiteral("</span>");
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), cabe ? QString() : ayuda, this);
    return true;
  }
  return QLabel::event(evento);
}

void EtiquetaRecortada::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  const QString visible = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
  style()->drawItemText(&pintor, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        visible, foregroundRole());
}

}  // namespace principal
