#include <QFileInfo>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Antecedentes.h"
#include "ventanas/principal/SumaSeleccion.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VigiaVeredicto.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

void frmUnirQ19::prepararLineaAcumulado() {
  LineaRemesa& linea = *ui_->InfoAcumulado;
  vigia_ = new VigiaVeredicto(ui_->Acumulado->modelo(), this);
  connect(vigia_, &VigiaVeredicto::cambiado, this, &frmUnirQ19::mostrarVeredicto);
  connect(&linea.enlace(), &QPushButton::clicked, this, [this] { comprobarAcumulado(true); });

  auto* suma = new SumaSeleccion(*ui_->Acumulado, this);
  connect(suma, &SumaSeleccion::sinSuma, this, [&linea] { linea.ponerSeleccion({}); });
  connect(suma, &SumaSeleccion::sumada, this, [&linea](std::size_t adeudos, std::int64_t importe) {
    linea.ponerSeleccion(
        u"Selección: %1, %2"_s.arg(TextoCuenta(adeudos, u"adeudo"_s, u"adeudos"_s), TextoEuros(importe)));
  });

  comunes::Enlace& recalcular = ui_->AvisoAcumulado->enlace();
  recalcular.setText(u"Recalcular ahora"_s);
  connect(&recalcular, &QPushButton::clicked, this, &frmUnirQ19::recalcularAhora);
  connect(ui_->mnuRecalcular, &QAction::triggered, this, &frmUnirQ19::recalcularAhora);

  QWidget* anterior = ui_->Bloques;
  for (QWidget* siguiente : std::initializer_list<QWidget*>{&linea.enlace(), ui_->AvisoAcumulado->boton(),
                                                            &recalcular, ui_->Acumulado}) {
    setTabOrder(anterior, siguiente);
    anterior = siguiente;
  }
}

void frmUnirQ19::mostrarVeredicto() {
  using E = LineaRemesa::Estado;
  LineaRemesa& linea = *ui_->InfoAcumulado;
  switch (vigia_->estado()) {
    case VigiaVeredicto::Estado::Vacia:
      return linea.ponerVeredicto(E::SinNada);
    case VigiaVeredicto::Estado::Comprobando:
      return linea.ponerVeredicto(E::Comprobando);
    case VigiaVeredicto::Estado::Fallida:
      return linea.ponerVeredicto(E::Fallida);
    case VigiaVeredicto::Estado::Comprobada: {
      const Antecedentes::Comparada antes =
          antecedentes_ != nullptr ? antecedentes_->comparada() : Antecedentes::Comparada();
      return linea.ponerVeredicto(E::Comprobada, vigia_->resultado().errores + antes.errores,
                                  vigia_->resultado().avisos + antes.avisos);
    }
  }
}

QString frmUnirQ19::loQueMezcla() const {
  if (conBloques() || resumenPreview_.registros03 == 0 || FicheroActual.isEmpty()) return {};
  const QString de = TextoMezcla(remesa::ObservarImportacion(resumenPreview_, resumenAcumulado_));
  return de.isEmpty() ? QString() : u"%1, de %2"_s.arg(QFileInfo(rutaActual_).fileName(), de);
}

QStringList frmUnirQ19::avisoMezcla() const {
  QStringList ficheros;
  for (auto una = mezclas_.begin(); una != mezclas_.end(); ++una)
    if (!una->isEmpty() && FicherosImportados.startsWith(una.key()))
      ficheros += comunes::ConMarcasEscritas(*una);
  if (ficheros.isEmpty() || resumenAcumulado_.vacia()) return {};
  return {
      u"Mezclados al importar: %1. Todo se cobra con el acreedor, la fecha y la cuenta de la remesa."_s.arg(
          ficheros.join(u". "_s))};
}

void frmUnirQ19::recalcularAhora() {
  if (ui_->Acumulado->lista().empty())
    return comunes::Avisar(u"La remesa está vacía: no hay totales que recalcular."_s);
  const comunes::Reloj reloj;
  decir({});
  comoUnPaso(u"recalcular los totales"_s, [this] { RecalcularTotales(); });
  decir(u"Totales recalculados."_s);
}

}  // namespace principal
