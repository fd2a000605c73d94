#include <algorithm>
#include <numeric>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaCorregir.h"
#include "ventanas/principal/VentanaHallazgos.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

bool VariosBloques(const remesa::ListaRegistros& lista) {
  return std::ranges::count(lista, remesa::CodigoRegistro::Acreedor, remesa::Codigo) > 1;
}

}  // namespace

void frmUnirQ19::corregir(const std::vector<remesa::Hallazgo>& elegidos) {
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  decir({});
  if (lista.empty()) return comunes::Avisar(u"La remesa está vacía: no hay nada que corregir."_s);
  const bool sinTotales = VariosBloques(lista) && !conBloques();
  const bool deHallazgos = comprobaciones_ && comprobaciones_->isActiveWindow();
  QWidget* padre = deHallazgos ? static_cast<QWidget*>(comprobaciones_) : this;
  VentanaCorregir ventana(lista, {comunes::Hoy(), elegidos, sinTotales}, padre);
  if (ventana.detenida()) return;
  if (!ventana.impedimento().isEmpty())
    return comunes::Avisar(u"No se puede corregir.;;"_s + QString(ventana.impedimento()).replace(u';', u','));
  if (ventana.vacia())
    return comunes::Avisar(!elegidos.empty()
                               ? u"De lo elegido, nada tiene una sola respuesta: lo ha de corregir usted."_s
                               : u"No hay nada que tenga una sola respuesta: lo que la comprobación dice lo "
                                 "ha de corregir usted."_s);
  switch (ventana.exec()) {
    case QDialog::Accepted:
      return hacerCorrecciones(ventana, sinTotales);
    case VentanaCorregir::kConservarBloques:
      // Reunir los bloques mueve los registros: los hallazgos ya no dicen dónde.
      ui_->Bloques->click();
      if (conBloques()) corregir({});
      return;
    default:
      return;
  }
}

void frmUnirQ19::hacerCorrecciones(const VentanaCorregir& ventana, bool sinTotales) {
  remesa::ListaRegistros lista = ui_->Acumulado->lista();
  const std::size_t habia = lista.size();
  remesa::ResultadoCorreccion resultado = ventana.Corregir(lista);
  if (!resultado.quedan.completa) return decir(u"Corrección detenida: no se ha cambiado nada."_s);
  const QString cuantas = TextoCuenta(resultado.hechas.size(), u"corrección"_s, u"correcciones"_s);
  comoUnPaso(u"corregir: "_s + cuantas, [&] {
    const bool faltan = lista.size() < habia;
    if (resultado.procedencia.empty())
      ui_->Acumulado->modelo().reescribir([&](remesa::ListaRegistros& suya) { suya = std::move(lista); });
    else
      ponerConBloques(std::move(lista), resultado.procedencia);
    if (faltan && sinTotales)
      RecalcularTotales();
    else
      mirarAcumulado();
  });
  decir(u"Hecho: %1"_s.arg(cuantas));
}

}  // namespace principal
