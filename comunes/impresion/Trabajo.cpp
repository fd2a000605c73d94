#include "comunes/impresion/Trabajo.h"

#include <QMarginsF>
#include <cmath>

#include "comunes/plataforma/Sistema.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

namespace {

constexpr double kTwipsPulgada = 1440;
constexpr double kTwipsMilimetro = kTwipsPulgada / 25.4;
constexpr double kGrosorBorde = 8;

}  // namespace

QSizeF ZonaImprimible(const QPageLayout& pagina) {
  // En milímetros, y no en los puntos enteros que el toolkit usa: a un A4 le quitaría los twips que hacen
  // falta para la última columna.
  const QSizeF papel = pagina.pageSize().size(QPageSize::Millimeter);
  const bool apaisado = pagina.orientation() == QPageLayout::Landscape;
  const double ancho = apaisado ? papel.height() : papel.width();
  const double alto = apaisado ? papel.width() : papel.height();
  const auto margenes = [&] {
    QPageLayout enPuntos = pagina;
    enPuntos.setUnits(QPageLayout::Point);
    return enPuntos.margins() * kTwipsPunto;
  }();
  return {std::round(ancho * kTwipsMilimetro) - std::round(margenes.left()) - std::round(margenes.right()),
          std::round(alto * kTwipsMilimetro) - std::round(margenes.top()) - std::round(margenes.bottom())};
}

TrabajoImpresion::TrabajoImpresion(QPagedPaintDevice& dispositivo)
    : dispositivo_(dispositivo), zona_(ZonaImprimible(dispositivo.pageLayout())) {
  ConservarMemoria();
  // Se dibuja contando desde el borde del papel, porque el toolkit redondea los márgenes a puntos.
  QPageLayout pagina = dispositivo.pageLayout();
  pagina.setUnits(QPageLayout::Point);
  const QMarginsF margenes = pagina.margins() * kTwipsPunto;
  pagina.setMode(QPageLayout::FullPageMode);
  dispositivo.setPageLayout(pagina);
  if (!pintor_.begin(&dispositivo)) throw ficheros::ErrorEjecucion(ficheros::kErrorDeImpresora);
  const double escalaX = dispositivo.logicalDpiX() / kTwipsPulgada;
  const double escalaY = dispositivo.logicalDpiY() / kTwipsPulgada;
  pintor_.scale(escalaX, escalaY);
  // Lo que el papel del dispositivo se aparte del de verdad se reparte a los dos lados.
  const double sobraX = dispositivo.width() / escalaX - zona_.width() - margenes.left() - margenes.right();
  const double sobraY = dispositivo.height() / escalaY - zona_.height() - margenes.top() - margenes.bottom();
  pintor_.translate(margenes.left() + sobraX / 2, margenes.top() + sobraY / 2);
}

void TrabajoImpresion::NuevaPagina() {
  if (!dispositivo_.newPage()) throw ficheros::ErrorEjecucion(ficheros::kErrorDeImpresora);
  empezada_ = false;
  ++pagina_;
}

void TrabajoImpresion::Terminar() {
  if (pintor_.isActive() && !pintor_.end()) throw ficheros::ErrorEjecucion(ficheros::kErrorDeImpresora);
}

void TrabajoImpresion::colocarColor(const QColor& color) {
  if (color == color_) return;
  pintor_.setPen(color);
  color_ = color;
}

void TrabajoImpresion::Texto(double x, double y, const QString& texto, const Letra& letra, int tamano,
                             const QColor& color) {
  empezada_ = true;
  if (texto.isEmpty()) return;
  if (letra_ != &letra || tamano_ != tamano) {
    pintor_.setFont(letra.Fuente(tamano));
    letra_ = &letra;
    tamano_ = tamano;
  }
  colocarColor(color);
  pintor_.drawText(QPointF(x, y + letra.Ascenso(tamano)), texto);
}

void TrabajoImpresion::Rectangulo(const QRectF& rectangulo, const QColor& fondo, const QColor& borde) {
  empezada_ = true;
  pintor_.fillRect(rectangulo, fondo);
  if (!borde.isValid()) return;
  color_ = QColor();
  pintor_.setPen(QPen(borde, kGrosorBorde));
  pintor_.setBrush(Qt::NoBrush);
  pintor_.drawRect(rectangulo);
}

}  // namespace comunes
