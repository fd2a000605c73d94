#include <QFileInfo>

#include "comunes/plataforma/Texto.h"
#include "ficheros/Rutas.h"
#include "remesa/Campos.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

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
          ? u"Ningún fichero previsualizado"_s
          : u"%1: %2"_s.arg(comunes::ConMarcasEscritas(QFileInfo(rutaPreview_).fileName()),
                            TextoCuenta(resumenPreview_.registros, u"registro"_s, u"registros"_s)));
  const auto ficheros = static_cast<std::size_t>(rutasImportadas_.size());
  ui_->InfoAcumulado->setText(
      resumenAcumulado_.vacia()
          ? u"Remesa vacía"_s
          : u"%1, %2, %3"_s.arg(TextoCuenta(ficheros, u"fichero"_s, u"ficheros"_s),
                                TextoCuenta(resumenAcumulado_.adeudos, u"adeudo"_s, u"adeudos"_s),
                                TextoEuros(resumenAcumulado_.importe)));
  ui_->AvisoPreview->ponerAvisos(avisosPreview());
  ui_->AvisoAcumulado->ponerAvisos(TextosObservaciones(remesa::ObservarAcumulado(resumenAcumulado_)));
}

QStringList frmUnirQ19::avisosPreview() const {
  QStringList avisos;
  if (!rechazo_.isEmpty()) avisos << rechazo_;
  if (rutaPreview_.isEmpty()) return avisos;
  if (const QString aviso = avisoDevoluciones(); !aviso.isEmpty()) return avisos << aviso;
  if (!importadoVisible())
    return avisos + TextosObservaciones(remesa::ObservarImportacion(resumenPreview_, resumenAcumulado_));
  // En Debian dos ficheros pueden distinguirse solo en las mayúsculas, y cuentan como el mismo.
  const QString importada = rutasImportadas_.value(comunes::Mayusculas(rutaPreview_));
  if (importada.isEmpty() || ficheros::EsElMismo(comunes::ARuta(importada), comunes::ARuta(rutaPreview_)))
    return avisos;
  const QFileInfo esta(rutaPreview_), otra(importada);
  return avisos
         << u"%1 se queda fuera: ya se importó %2, y dos nombres que solo se distinguen por las mayúsculas "
            "cuentan como uno. Cámbiele el nombre y elíjalo otra vez."_s.arg(
                esta.fileName(), esta.path() == otra.path() ? otra.fileName() : importada);
}

void frmUnirQ19::mostrarPosicion(const VistaRegistros& lista, int fila, int posicion) {
  QString texto;
  if (posicion > 0) {
    texto = u"Posición %1"_s.arg(posicion);
    // Sobre la regla vale el registro actual.
    const int registro = fila >= 0 ? fila : lista.actual();
    if (registro >= 0) {
      if (const remesa::Campo* campo =
              remesa::CampoEn(lista.lista()[static_cast<std::size_t>(registro)], posicion)) {
        texto +=
            u" · %1 (%2-%3)"_s
                .arg(QString::fromUtf8(campo->nombre.data(), static_cast<qsizetype>(campo->nombre.size())))
                .arg(campo->donde.desde)
                .arg(campo->donde.hasta);
      }
      texto = u"Registro %1 · "_s.arg(registro + 1) + texto;
    }
  }
  ui_->EstadoPosicion->setText(texto);
}

void frmUnirQ19::decir(const QString& texto) {
  ui_->EstadoMensaje->setText(comunes::ConMarcasEscritas(texto));
  ui_->AbrirListado->hide();
  ui_->VerComprobacion->hide();
}

}  // namespace principal
