#include "ventanas/principal/EtiquetaRecortada.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>
#include <utility>
#include <vector>

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

void EtiquetaRecortada::ponerPorPartes() {
  porPartes_ = true;
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

QString EtiquetaRecortada::textoQueCabe() const {
  const QFontMetrics medidas = fontMetrics();
  QString texto = text();
  if (porPartes_ && medidas.horizontalAdvance(texto) > width()) {
    const QString entre = u" · "_s;
    QStringList partes = texto.split(entre);
    int sitio = width() - static_cast<int>(partes.size() - 1) * medidas.horizontalAdvance(entre);
    std::vector<std::pair<int, qsizetype>> anchos;
    anchos.reserve(static_cast<std::size_t>(partes.size()));
    for (const QString& parte : partes)
      anchos.emplace_back(medidas.horizontalAdvance(parte), anchos.size());
    // De la más corta a la más larga: lo que una no gasta es de las que quedan.
    std::ranges::sort(anchos);
    int quedan = static_cast<int>(anchos.size());
    for (const auto& [ancho, cual] : anchos) {
      const int suyo = sitio / quedan--;
      if (ancho > suyo) partes[cual] = medidas.elidedText(partes[cual], recorte_, suyo);
      sitio -= std::min(ancho, suyo);
    }
    texto = partes.join(entre);
  }
  return medidas.elidedText(texto, recorte_, width());
}

void EtiquetaRecortada::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  pintor.setPen(palette().color(foregroundRole()));
  pintor.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, textoQueCabe());
}

}  // namespace principal
