#include <QAccessible>
#include <QFileInfo>

#include "comunes/plataforma/Formatos.h"
#include "remesa/Campos.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {
namespace {

QString Cuenta(std::size_t cuantos, const QString& uno, const QString& varios) {
  return comunes::FormatoNumero(static_cast<double>(cuantos), 0) + QLatin1Char(' ') +
         (cuantos == 1 ? uno : varios);
}

void Avisar(QLabel* etiqueta, const QStringList& avisos) {
  const QString texto = avisos.join(QLatin1Char('\n'));
  if (etiqueta->text() == texto) return;
  etiqueta->setText(texto);
  if (texto.isEmpty()) return;
  QAccessibleEvent anuncio(etiqueta, QAccessible::Alert);
  QAccessible::updateAccessibility(&anuncio);
}

}  // namespace

bool frmUnirQ19::importadoVisible() const {
  return !ui_->Importado->isHidden();
}

void frmUnirQ19::mirarAcumulado() {
  resumenAcumulado_ = remesa::Resumir(ui_->Acumulado->lista());
  mostrarObservaciones();
}

void frmUnirQ19::mostrarObservaciones() {
  ui_->InfoPreview->setText(
      rutaPreview_.isEmpty()
          ? tr("Ningún fichero previsualizado")
          : tr("%1: %2").arg(QFileInfo(rutaPreview_).fileName(),
                             Cuenta(resumenPreview_.registros, tr("registro"), tr("registros"))));
  ui_->InfoAcumulado->setText(
      resumenAcumulado_.vacia()
          ? tr("Remesa vacía")
          : tr("%1, %2, %3 €")
                .arg(Cuenta(static_cast<std::size_t>(rutasImportadas_.size()), tr("fichero"), tr("ficheros")),
                     Cuenta(resumenAcumulado_.adeudos, tr("adeudo"), tr("adeudos")),
                     comunes::FormatoCentimos(resumenAcumulado_.importe)));
  QStringList avisosPreview;
  const QString importada = rutasImportadas_.value(FicheroActual);
  if (importadoVisible() && !importada.isEmpty() && importada != rutaActual_)
    avisosPreview
        << tr("Ya se importó %1, cuyo nombre solo cambia en mayúsculas y minúsculas").arg(importada);
  Avisar(ui_->AvisoPreview, avisosPreview);
  Avisar(ui_->AvisoAcumulado, {});
}

void frmUnirQ19::mostrarPosicion(const VistaRegistros& lista, int fila, int posicion) {
  QString texto;
  if (posicion > 0) {
    texto = tr("Posición %1").arg(posicion);
    // Sobre la regla vale el registro actual.
    const int registro = fila >= 0 ? fila : lista.actual();
    if (registro >= 0) {
      if (const remesa::Campo* campo =
              remesa::CampoEn(lista.lista()[static_cast<std::size_t>(registro)], posicion)) {
        texto +=
            tr(" · %1 (%2-%3)")
                .arg(QString::fromUtf8(campo->nombre.data(), static_cast<qsizetype>(campo->nombre.size())))
                .arg(campo->donde.desde)
                .arg(campo->donde.hasta);
      }
      texto = tr("Registro %1 · ").arg(registro + 1) + texto;
    }
  }
  ui_->EstadoPosicion->setText(texto);
}

void frmUnirQ19::decir(const QString& texto) {
  ui_->EstadoMensaje->setText(texto);
}

void frmUnirQ19::ajustarColores() {
  const bool oscuro = palette().color(QPalette::Window).lightness() < 128;
  for (QLabel* aviso : {ui_->AvisoPreview, ui_->AvisoAcumulado}) {
    QPalette colores = aviso->palette();
    const QColor color = oscuro ? QColor(0xFF, 0xB4, 0x6B) : QColor(0x9A, 0x34, 0x00);
    if (colores.color(QPalette::WindowText) == color) continue;
    colores.setColor(QPalette::WindowText, color);
    aviso->setPalette(colores);
  }
}

}  // namespace principal
