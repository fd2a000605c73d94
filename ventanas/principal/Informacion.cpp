#include <QFileInfo>
#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "ficheros/Rutas.h"
#include "remesa/Campos.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/LugarVacio.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

bool frmUnirQ19::importadoVisible() const {
  return !ui_->Importado->isHidden();
}

void frmUnirQ19::mirarAcumulado() {
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (conBloques()) {
    indiceAcumulado_ = {};
    indiceAcumulado_.empezarFichero();
    for (const std::string_view registro : lista)
      indiceAcumulado_.dar(registro);
    indiceAcumulado_.terminarFichero();
  }
  resumenAcumulado_ = remesa::Resumir(lista);
  mostrarObservaciones();
}

void frmUnirQ19::mostrarObservaciones() {
  const auto elegidos = navegador_->elegidos().size();
  ui_->InfoPreview->setText((elegidos > 1 ? u"%1 ficheros elegidos · "_s.arg(elegidos) : QString()) +
                            (rutaPreview_.isEmpty()
                                 ? u"Ningún fichero previsualizado"_s
                                 : TextoFichero(QFileInfo(rutaPreview_).fileName(), resumenPreview_)));
  ui_->Ficheros->renovarSenales();
  const auto ficheros = static_cast<std::size_t>(rutasImportadas_.size());
  if (resumenAcumulado_.vacia())
    ui_->InfoAcumulado->ponerCuenta(u"Remesa vacía"_s, {});
  else
    ui_->InfoAcumulado->ponerCuenta(
        u"%1 · %2%3"_s.arg(TextoCuenta(ficheros, u"fichero"_s, u"ficheros"_s),
                           conBloques() ? textoBloques() : QString(),
                           TextoCuenta(resumenAcumulado_.adeudos, u"adeudo"_s, u"adeudos"_s)),
        TextoEuros(resumenAcumulado_.importe));
  const AvisosPreview avisos = avisosPreview();
  ui_->AvisoPreview->ponerAvisos(avisos.textos, avisos.otroBloque);
  const auto observaciones = conBloques() ? ObservarAcumulado(resumenAcumulado_, indiceAcumulado_)
                                          : remesa::ObservarAcumulado(resumenAcumulado_);
  const bool seRecalculan = std::ranges::any_of(observaciones, [](const remesa::Observacion& o) {
    return o.clase == remesa::ClaseObservacion::TotalesNoCuadran;
  });
  ui_->AvisoAcumulado->ponerAvisos(avisoMezcla() + avisoGuardada() + TextosObservaciones(observaciones),
                                   seRecalculan);
}

QString frmUnirQ19::loQueHay() const {
  if (resumenAcumulado_.vacia()) return {};
  const auto ficheros = static_cast<std::size_t>(rutasImportadas_.size());
  return u"%1, %2, %3"_s.arg(TextoCuenta(ficheros, u"fichero"_s, u"ficheros"_s),
                             TextoCuenta(resumenAcumulado_.adeudos, u"adeudo"_s, u"adeudos"_s),
                             TextoEuros(resumenAcumulado_.importe));
}

frmUnirQ19::AvisosPreview frmUnirQ19::avisosPreview() const {
  AvisosPreview avisos;
  if (!rechazo_.isEmpty()) avisos.textos << rechazo_;
  if (rutaPreview_.isEmpty()) return avisos;
  if (const QString aviso = avisoDevoluciones(); !aviso.isEmpty()) {
    avisos.textos << aviso;
    return avisos;
  }
  if (!importadoVisible()) {
    avisos.textos += perdidas_;
    using C = remesa::ClaseObservacion;
    const auto observaciones =
        conBloques() ? observarConBloques() : remesa::ObservarImportacion(resumenPreview_, resumenAcumulado_);
    avisos.textos += TextosObservaciones(observaciones);
    avisos.otroBloque = std::ranges::any_of(observaciones, [](const remesa::Observacion& o) {
      return o.clase == C::OtroAcreedor || o.clase == C::OtraFecha || o.clase == C::OtraCuenta;
    });
    return avisos;
  }
  // En Debian dos ficheros pueden distinguirse solo en las mayúsculas, y cuentan como el mismo.
  const QString importada = rutasImportadas_.value(comunes::Mayusculas(rutaPreview_));
  if (importada.isEmpty() || ficheros::EsElMismo(comunes::ARuta(importada), comunes::ARuta(rutaPreview_)))
    return avisos;
  const QFileInfo esta(rutaPreview_), otra(importada);
  avisos.textos
      << u"%1 se queda fuera: ya se importó %2, y dos nombres que solo se distinguen por las mayúsculas "
         "cuentan como uno. Cámbiele el nombre y elíjalo otra vez."_s.arg(
             esta.fileName(), esta.path() == otra.path() ? otra.fileName() : importada);
  return avisos;
}

void frmUnirQ19::decir(const QString& texto) {
  ui_->EstadoMensaje->setText(comunes::ConMarcasEscritas(texto));
  ui_->AbrirListado->hide();
  ui_->VerComprobacion->hide();
  ui_->Deshacer->hide();
  lugar_->olvidarGuardado();
}

}  // namespace principal
