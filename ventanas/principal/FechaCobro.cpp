#include "remesa/FechaCobro.h"

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaFechaCobro.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

void frmUnirQ19::cambiarFechaCobro() {
  decir({});
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (remesa::Cabeceras(lista).empty())
    return comunes::Avisar(
        u"La remesa no tiene cabecera de acreedor (02): no hay fecha de cobro que cambiar."_s);
  VentanaFechaCobro ventana(lista, ui_->Acumulado->actual(), comunes::Hoy(), this);
  if (ventana.exec() != QDialog::Accepted) return;
  const std::string fecha = ventana.fecha();
  const auto cabeceras = ventana.cabeceras();
  comoUnPaso(u"cambiar la fecha de cobro"_s, [&] {
    ui_->Acumulado->modelo().reescribir(
        [&](remesa::ListaRegistros& suya) { remesa::CambiarFechaCobro(suya, cabeceras, fecha); });
    // Dos bloques pueden ser ahora el mismo, o ir en otro orden.
    if (!conBloques() || !reunir({}, u"Los bloques quedan como estaban."_s)) mirarAcumulado();
  });
  decir(u"Fecha de cobro: %1 en %2"_s.arg(comunes::DesdeWindows1252(remesa::FechaQ19(fecha)),
                                          TextoCuenta(cabeceras.size(), u"bloque"_s, u"bloques"_s)));
}

}  // namespace principal
