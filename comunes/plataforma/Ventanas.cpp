#include "comunes/plataforma/Ventanas.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>
#include <QTextDocument>
#include <QVariant>
#include <QWidget>

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

const QString kFuenteDialogos = u"MS Shell Dlg 2"_s;
const QString kFuenteFija = u"Courier New"_s;

void sustituir(const QString& familia, QFontDatabase::SystemFont sistema) {
  QFont::insertSubstitution(familia, QFontInfo(QFontDatabase::systemFont(sistema)).family());
}

}  // namespace

void PonerFuentes() {
  sustituir(kFuenteDialogos, QFontDatabase::GeneralFont);
  sustituir(kFuenteFija, QFontDatabase::FixedFont);
}

void FuentesVentana(QWidget& ventana) {
  const auto controles = ventana.findChildren<QWidget*>();
  // Primero se fijan las letras propias: si no, tomarían la de un control que las contenga.
  for (const bool propias : {true, false}) {
    for (QWidget* control : controles) {
      const bool propia = control->property("Tag").toString().contains(u"(FF)"_s);
      if (propia != propias) continue;
      QFont letra = control->font();
      letra.setFamilies({propia ? letra.family() : kFuenteDialogos});
      control->setFont(letra);
    }
  }
}

QColor ColorAviso(const QPalette& paleta) {
  const bool oscuro = paleta.color(QPalette::Window).lightness() < 128;
  return oscuro ? QColor(0xFF, 0xB4, 0x6B) : QColor(0x9A, 0x34, 0x00);
}

QWidget* VentanaActiva() {
  QWidget* ventana = QApplication::activeWindow();
  while (ventana != nullptr && ventana->windowType() == Qt::Popup)
    ventana = ventana->parentWidget() != nullptr ? ventana->parentWidget()->window() : nullptr;
  return ventana;
}

void DisponerVentana(QWidget& ventana) {
  const QWidget* duena = ventana.parentWidget() ? ventana.parentWidget()->window() : nullptr;
  const QScreen* pantalla = duena ? duena->screen() : ventana.screen();
  if (!pantalla) pantalla = QGuiApplication::primaryScreen();
  const QRect libre = pantalla->availableGeometry();
  // El marco aún no se conoce antes de mostrarla; es poco más que una línea de título.
  const QSize marco(16, 40);
  // Menos que su mínimo no lo será al mostrarse, y al crecer su título se saldría de la pantalla.
  ventana.ensurePolished();
  ventana.resize(ventana.size().boundedTo(libre.size() - marco).expandedTo(ventana.minimumSizeHint()));
  QRect sitio({0, 0}, ventana.size());
  sitio.moveCenter(duena && duena->isVisible() ? duena->geometry().center() : libre.center());
  const int x = std::max(std::min(sitio.x(), libre.right() - sitio.width() - marco.width()), libre.x());
  const int y = std::max(std::min(sitio.y(), libre.bottom() - sitio.height()), libre.y() + marco.height());
  ventana.move(x, y - marco.height());
}

Reloj::Reloj() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Reloj::~Reloj() {
  QGuiApplication::restoreOverrideCursor();
}

QString SinMnemonico(QString texto) {
  return texto.replace(u'&', u"&&"_s);
}

QString TextoLiteral(const QString& texto) {
  return Qt::mightBeRichText(texto) ? Qt::convertFromPlainText(texto) : texto;
}

}  // namespace comunes
