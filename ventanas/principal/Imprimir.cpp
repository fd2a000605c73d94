#include <optional>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Informe.h"
#include "ventanas/principal/RecuentoInforme.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

bool frmUnirQ19::confirmarOtros() {
  const QString otros = TextoRecuentoInforme(ContarInforme(ui_->Acumulado->lista()));
  if (otros.isEmpty()) return true;
  if (comunes::Confirmar(
          u"El listado no es solo de adeudos.;;%1.;;Para dejarlos fuera está «Solo adeudos».;; ¿ Lo "
          "imprime así ? "_s.arg(otros),
          1))
    return true;
  ui_->SoloAdeudos->setFocus();
  return false;
}

void frmUnirQ19::imprimir() {
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (lista.empty()) return;
  decir({});
  const bool conReferencia = ui_->RefI->isChecked();
  const bool soloAdeudos = ui_->SoloAdeudos->isChecked();
  const bool porBloques = conBloques();
  if (!soloAdeudos && !confirmarOtros()) return;
  comunes::Rejilla visor(ui_->VisorPrt->objectName());
  std::optional<Informe> informe;
  // La vista previa lo necesita antes de que se acepte; sin ella no se prepara hasta imprimir.
  const auto preparado = [&]() -> const Informe& {
    if (!informe) {
      const comunes::Reloj reloj;
      informe = PrepararInforme(visor, lista, FicheroActual, conReferencia, soloAdeudos, porBloques);
    }
    return *informe;
  };
  comunes::ListadoImprimible listado;
  listado.padre = this;
  listado.anchoTabla = AnchoInforme(conReferencia);
  listado.carpeta = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, QString());
  listado.rotulos = [&] {
    const Informe& datos = preparado();
    return comunes::RotulosListado{datos.titulo, datos.subtitulo + u" - "_s + datos.titulo,
                                   u"Remesa "_s + datos.titulo};
  };
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return ImprimirInforme(trabajo, visor, preparado(), avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  decir(fin.mensaje);
  listado_ = fin.documento;
  ui_->AbrirListado->setVisible(!listado_.isEmpty());
}

void frmUnirQ19::abrirListado() {
  const QString fallo = comunes::AbrirDocumento(listado_);
  if (!fallo.isEmpty()) decir(fallo);
}

}  // namespace principal
