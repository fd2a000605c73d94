#include "ventanas/principal/LineaRemesa.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

#include "comunes/plataforma/Enlace.h"
#include "ventanas/principal/TextosComprobacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

constexpr double kLetraTotal = 1.5;  // veces la letra corriente
constexpr int kCaracteresLinea = 24;
constexpr int kCaracteresPlegada = 40;
constexpr int kAireSenal = 4;  // píxeles entre la señal y lo que dice
const QString kEntre = u" · "_s;

}  // namespace

LineaRemesa::LineaRemesa(QWidget* padre) : QLabel(padre), enlace_(new comunes::Enlace(this)) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  enlace_->setObjectName(u"Veredicto"_s);
  enlace_->setToolTip(u"Ver los errores y avisos de lo que se guardaría"_s);
  enlace_->setAccessibleDescription(u"Comprobar remesa"_s);
  enlace_->hide();
}

void LineaRemesa::ponerCuenta(const QString& cuenta, const QString& total) {
  if (cuenta == cuenta_ && total == total_) return;
  cuenta_ = cuenta;
  total_ = total;
  setText(total.isEmpty() ? cuenta : cuenta + kEntre + total);
  repartir();
}

void LineaRemesa::ponerVeredicto(Estado estado, std::uint64_t errores, std::uint64_t avisos) {
  using comunes::Pictograma;
  switch (estado) {
    case Estado::SinNada:
      veredicto_.clear();
      break;
    case Estado::Comprobando:
      veredicto_ = u"Comprobando…"_s;
      break;
    case Estado::Fallida:
      veredicto_ = u"No se ha podido comprobar"_s;
      break;
    case Estado::Comprobada:
      veredicto_ = TextoVeredicto(errores, avisos);
      break;
  }
  senal_ = errores > 0 ? Pictograma::Error : avisos > 0 ? Pictograma::Aviso : Pictograma::Correcto;
  conSenal_ = estado == Estado::Comprobada;
  enlace_->setText(veredicto_);
  enlace_->setVisible(conSenal_ && errores + avisos > 0);
  colorear();
  if (plegada_) updateGeometry();
  repartir();
}

void LineaRemesa::ponerSeleccion(const QString& seleccion) {
  if (seleccion == seleccion_) return;
  seleccion_ = seleccion;
  repartir();
}

void LineaRemesa::plegar(bool plegada) {
  plegada_ = plegada;
  updateGeometry();
  repartir();
}

QFont LineaRemesa::letraTotal() const {
  QFont letra = font();
  letra.setBold(true);
  if (!plegada_) letra.setPointSizeF(letra.pointSizeF() * kLetraTotal);
  return letra;
}

QSize LineaRemesa::minimumSizeHint() const {
  // Plegada comparte línea: el total y el veredicto, si no son desmedidos, han de caber.
  const int caracter = fontMetrics().averageCharWidth();
  const int ancho = plegada_ ? std::min(anchoTotal() + anchoVeredicto(), kCaracteresPlegada * caracter) : 0;
  return {std::max(kCaracteresLinea * caracter, ancho),
          std::max(QFontMetrics(letraTotal()).height(), fontMetrics().height()) + 2};
}

QSize LineaRemesa::sizeHint() const {
  return {fontMetrics().horizontalAdvance(cuenta_ + kEntre) + anchoTotal() + anchoVeredicto(),
          minimumSizeHint().height()};
}

int LineaRemesa::anchoTotal() const {
  return total_.isEmpty() ? 0 : QFontMetrics(letraTotal()).horizontalAdvance(total_);
}

int LineaRemesa::anchoVeredicto() const {
  if (veredicto_.isEmpty()) return 0;
  const int senal = conSenal_ ? fontMetrics().height() + kAireSenal : 0;
  const int texto =
      enlace_->isHidden() ? fontMetrics().horizontalAdvance(veredicto_) : enlace_->sizeHint().width();
  return fontMetrics().horizontalAdvance(kEntre) + senal + texto;
}

void LineaRemesa::repartir() {
  const QFontMetrics medidas = fontMetrics();
  const int entre = medidas.horizontalAdvance(kEntre);
  const int fijo = anchoTotal() + anchoVeredicto();
  const int deSeleccion = seleccion_.isEmpty() ? 0 : entre + medidas.horizontalAdvance(seleccion_);
  const int deCuenta = std::max(0, width() - fijo - deSeleccion - (total_.isEmpty() ? 0 : entre));
  cuentaVista_ = medidas.elidedText(cuenta_, Qt::ElideRight, deCuenta);
  int x = medidas.horizontalAdvance(cuentaVista_);
  if (x > 0 && !total_.isEmpty()) x += entre;
  xTotal_ = x;
  x += anchoTotal();
  if (!veredicto_.isEmpty()) {
    x += entre;
    xSenal_ = x;
    if (conSenal_) x += medidas.height() + kAireSenal;
    xVeredicto_ = x;
    const QSize suyo = enlace_->sizeHint();
    // El texto del enlace y el resto de la línea, sobre la misma raya.
    const int raya =
        (height() + QFontMetrics(letraTotal()).ascent() - QFontMetrics(letraTotal()).descent()) / 2;
    enlace_->setGeometry(x, raya - medidas.ascent() - (suyo.height() - medidas.height()) / 2, suyo.width(),
                         suyo.height());
    x += enlace_->isHidden() ? medidas.horizontalAdvance(veredicto_) : suyo.width();
  }
  xSeleccion_ = x + entre;
  seleccionVista_ = medidas.elidedText(seleccion_, Qt::ElideRight, std::max(0, width() - xSeleccion_));
  decirEntera();
  update();
}

void LineaRemesa::decirEntera() {
  QStringList partes{text(), veredicto_, seleccion_};
  partes.removeAll(QString());
  const QString entera = partes.join(kEntre);
  if (entera != accessibleName()) setAccessibleName(entera);
}

void LineaRemesa::colorear() {
  enlace_->ponerColor(comunes::ColorDeIcono(senal_, palette()));
}

void LineaRemesa::changeEvent(QEvent* evento) {
  QLabel::changeEvent(evento);
  if (evento->type() == QEvent::PaletteChange) colorear();
  if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
    updateGeometry();
    repartir();
  }
}

bool LineaRemesa::event(QEvent* evento) {
  if (evento->type() == QEvent::ToolTip) {
    const bool entera = cuentaVista_ == cuenta_ && seleccionVista_ == seleccion_;
    const QString ayuda = u"<span>"_s + accessibleName().toHtmlEscaped() + u"</span>"_s;
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), entera ? QString() : ayuda, this);
    return true;
  }
  return QLabel::event(evento);
}

void LineaRemesa::resizeEvent(QResizeEvent* evento) {
  QLabel::resizeEvent(evento);
  repartir();
}

void LineaRemesa::paintEvent(QPaintEvent*) {
  QStylePainter pintor(this);
  const QFontMetrics grandes(letraTotal());
  const int raya = (height() + grandes.ascent() - grandes.descent()) / 2;
  const QColor texto = palette().color(foregroundRole());
  const int entre = fontMetrics().horizontalAdvance(kEntre);
  const auto escribir = [&](int x, const QString& que) { pintor.drawText(QPoint(x, raya), que); };
  pintor.setPen(texto);
  escribir(0, cuentaVista_);
  if (xTotal_ > 0 && !total_.isEmpty()) escribir(xTotal_ - entre, kEntre);
  pintor.setFont(letraTotal());
  escribir(xTotal_, total_);
  pintor.setFont(font());
  if (!veredicto_.isEmpty()) {
    escribir(xSenal_ - entre, kEntre);
    const int lado = fontMetrics().height();
    if (conSenal_) comunes::Icono(senal_).paint(&pintor, xSenal_, raya - fontMetrics().ascent(), lado, lado);
    if (conSenal_) pintor.setPen(comunes::ColorDeIcono(senal_, palette()));
    if (enlace_->isHidden()) escribir(xVeredicto_, veredicto_);
    pintor.setPen(texto);
  }
  if (seleccionVista_.isEmpty()) return;
  escribir(xSeleccion_ - entre, kEntre);
  escribir(xSeleccion_, seleccionVista_);
}

}  // namespace principal
