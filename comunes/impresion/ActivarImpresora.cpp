#include <QMarginsF>
#include <QMessageBox>
#include <QPageLayout>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <stdexcept>

#include "comunes/impresion/Impresora.h"
#include "comunes/impresion/VentanaImpresora.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPuntosPorTwip = 72.0 / 1440.0;
constexpr double kMargenLateral = 73 * kPuntosPorTwip;
constexpr double kMargenVertical = 567 * kPuntosPorTwip;

NombresImpresoras nombresPuestos;

/// La que está en vigor desde la última activación.
struct {
  QString nombre;
  QPageLayout::Orientation orientacion = QPageLayout::Portrait;
  int copias = 1;
} enVigor;

void ponerOrientacion(QPrinter& impresora, QPageLayout::Orientation orientacion) {
  if (!impresora.setPageOrientation(orientacion)) {
    throw std::runtime_error("La impresora no admite esa orientación del papel.");
  }
}

std::unique_ptr<QPrinter> crear(const QString& nombre) {
  if (nombre == kDocumentoPDF) {
    auto impresora = std::make_unique<QPrinter>(QPrinter::HighResolution);
    impresora->setOutputFormat(QPrinter::PdfFormat);
    impresora->setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                    QMarginsF(kMargenLateral, kMargenVertical, kMargenLateral, kMargenVertical)));
    return impresora;
  }
  auto impresora = std::make_unique<QPrinter>(QPrinterInfo::printerInfo(nombre), QPrinter::HighResolution);
  return impresora;
}

/// El nombre de la lista de la aplicación que coincide con el elegido, blancos aparte.
QString buscar(const QString& elegida) {
  QStringList todas = NombresDeImpresoras();
  todas.append(kDocumentoPDF);
  const auto hallada = std::find_if(todas.begin(), todas.end(), [&](const QString& nombre) {
    return nombre.trimmed() == elegida.trimmed();
  });
  if (hallada == todas.end()) throw std::runtime_error("La impresora elegida ya no está disponible.");
  return *hallada;
}

}  // namespace

AjustesImpresora& AjustesDeImpresora() {
  static AjustesImpresora ajustes;
  return ajustes;
}

QStringList NombresDeImpresoras() {
  return nombresPuestos ? nombresPuestos() : QPrinterInfo::availablePrinterNames();
}

void PonerNombresImpresoras(NombresImpresoras nombres) {
  nombresPuestos = std::move(nombres);
}

QString NombreImpresoraActual() {
  if (!enVigor.nombre.isEmpty()) return enVigor.nombre;
  const QString delSistema = nombresPuestos ? QString() : QPrinterInfo::defaultPrinterName();
  return delSistema.isEmpty() ? kDocumentoPDF : delSistema;
}

bool ActivarImpresora(bool showDialog, const PeticionImpresora& peticion) {
  AjustesImpresora& ajustes = AjustesDeImpresora();
  ajustes.cancelada = false;
  if (showDialog) Impresora(peticion).exec();
  if (ajustes.cancelada) return false;
  try {
    const QString nombre = buscar(ajustes.elegida.isEmpty() ? NombreImpresoraActual() : ajustes.elegida);
    const auto orientacion =
        ajustes.orientacion == "Horizontal"_L1 ? QPageLayout::Landscape : QPageLayout::Portrait;
    ponerOrientacion(*crear(nombre), orientacion);
    enVigor = {nombre, orientacion, ajustes.copias};
    return true;
  } catch (const std::exception& error) {
    // Sigue en vigor la que había, y su orientación es la que se propone después.
    ajustes.orientacion = enVigor.orientacion == QPageLayout::Landscape ? u"Horizontal"_s : u"Vertical"_s;
    QMessageBox caja(QMessageBox::Critical, u"Activación Impresora "_s + ajustes.elegida,
                     QString::fromUtf8(error.what()), QMessageBox::Ok, peticion.padre);
    caja.setTextFormat(Qt::PlainText);
    caja.exec();
    return false;
  }
}

bool ImprimeEnDocumento() {
  return NombreImpresoraActual() == kDocumentoPDF;
}

std::unique_ptr<QPrinter> CrearImpresora(const QString& nombre, QPageLayout::Orientation orientacion,
                                         int copias) {
  auto impresora = crear(nombre);
  ponerOrientacion(*impresora, orientacion);
  if (nombre != kDocumentoPDF) impresora->setCopyCount(std::clamp(copias, 1, kCopiasMaximas));
  return impresora;
}

std::unique_ptr<QPrinter> CrearImpresora() {
  return CrearImpresora(NombreImpresoraActual(), enVigor.orientacion, enVigor.copias);
}

}  // namespace comunes
