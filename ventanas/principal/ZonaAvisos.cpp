#include "ventanas/principal/ZonaAvisos.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QStylePainter>
#include <QTextLayout>
#include <QToolTip>

#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Ventanas.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCaracteresMinimos = 20;
constexpr int kAireEnlace = 6;  // píxeles entre el texto y el enlace

}  // namespace

ZonaAvisos::ZonaAvisos(QWidget* padre)
    : QLabel(padre), mas_(new comunes::Enlace(this)), enlace_(new comunes::Enlace(this)) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  mas_->setText(u"más…"_s);
  mas_->setAccessibleName(u"Ver los avisos enteros"_s);
  mas_->hide();
  enlace_->hide();
  connect(mas_, &QAbstractButton::clicked, this,
          [this] { ensenarEntero(mas_->mapToGlobal(QPoint(0, mas_->height()))); });
}

QWidget* ZonaAvisos::boton() const {
  return mas_;
}

void ZonaAvisos::ponerLineas(int lineas) {
  lineas_ = lineas;
  updateGeometry();
  repartir();
}

void ZonaAvisos::ponerAvisos(const QStringList& avisos, bool conEnlace) {
  const QString nuevo = avisos.join(u' ');
  if (nuevo == text() && conEnlace == !enlace_->isHidden()) return;
  enlace_->setVisible(conEnlace);
  setText(nuevo);
  repartir();
  if (nuevo.isEmpty()) return;
  QAccessibleEvent anuncio(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&anuncio);
}

QSize ZonaAvisos::minimumSizeHint() const {
  return {kCaracteresMinimos * fontMetrics().averageCharWidth(), lineas_ * fontMetrics().lineSpacing() + 2};
}

void ZonaAvisos::repartir() {
  partes_.clear();
  const QString todo = text();
  bool cabe = true;
  QTextLayout reparto(todo, font());
  reparto.beginLayout();
  for (QTextLine linea = reparto.createLine(); linea.isValid(); linea = reparto.createLine()) {
    linea.setLineWidth(width());
    if (partes_.size() == lineas_) {
      cabe = false;
      break;
    }
    partes_ << todo.mid(linea.textStart(), linea.textLength()).trimmed();
  }
  reparto.endLayout();
  colocarEnlaces(cabe);
  update();
}

/// «más…» si no cabe todo, y el enlace, al final de la última línea o, si no hay sitio, en la siguiente.
void ZonaAvisos::colocarEnlaces(bool cabe) {
  const int delEnlace = enlace_->isHidden() ? 0 : enlace_->sizeHint().width() + kAireEnlace;
  auto linea = std::max<qsizetype>(partes_.size() - 1, 0);
  int x = partes_.isEmpty() ? 0 : fontMetrics().horizontalAdvance(partes_.last());
  if (cabe && x + delEnlace > width()) {
    cabe = partes_.size() < lineas_;
    ++linea;
    x = 0;
  }
  const auto colocar = [&](QWidget* cual) {
    const QSize suyo = cual->sizeHint();
    const int alto = fontMetrics().lineSpacing();
    cual->setGeometry(x, static_cast<int>(linea) * alto + (alto - suyo.height()) / 2, suyo.width(),
                      suyo.height());
    x += suyo.width();
  };
  const bool teniaFoco = mas_->hasFocus();
  mas_->setVisible(!cabe);
  if (cabe) {
    if (teniaFoco) window()->setFocus();
  } else {
    QString& ultima = partes_.last();
    linea = partes_.size() - 1;
    // Se recorta siempre: con la palabra siguiente no cabía, pero «más…» ocupa lo suyo.
    ultima = fontMetrics().elidedText(ultima + u'…', Qt::ElideRight,
                                      std::max(0, width() - mas_->sizeHint().width() - delEnlace));
    x = fontMetrics().horizontalAdvance(ultima);
    colocar(mas_);
  }
  if (delEnlace == 0) return;
  if (x > 0) x += kAireEnlace;
  colocar(enlace_);
}

void ZonaAvisos::ensenarEntero(const QPoint& donde) {
  constexpr int kMilisegundos = 60000;
  // Con la etiqueta, la ayuda se reparte en líneas.
  QToolTip::showText(donde, u"<span>"_s + text().toHtmlEscaped() + u"</span>"_s, this, rect(), kMilisegundos);
}

void ZonaAvisos::changeEvent(QEvent* evento) {
  QLabel::changeEvent(evento);
  if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) repartir();
}

bool ZonaAvisos::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    if (mas_->isVisible())
      ensenarEntero(static_cast<QHelpEvent*>(evento)->globalPos());
    else
      QToolTip::hideText();
    return true;
  }
  return QLabel::event(evento);
}

void ZonaAvisos::resizeEvent(QResizeEvent* evento) {
  QLabel::resizeEvent(evento);
  repartir();
}

void ZonaAvisos::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  pintor.setPen(comunes::ColorAviso(palette()));
  const int alto = fontMetrics().lineSpacing();
  int y = 0;
  for (const QString& parte : partes_) {
    pintor.drawText(QRect(0, y, width(), alto), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, parte);
    y += alto;
  }
}

}  // namespace principal
