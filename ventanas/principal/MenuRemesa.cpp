#include <QFileInfo>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Identificacion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaSeparar.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

// Los rótulos y el orden están en el formulario; aquí, lo que hace cada orden del menú.
void frmUnirQ19::prepararMenuRemesa() {
  connect(ui_->mnuCorregir, &QAction::triggered, this, [this] { corregir(); });
  connect(ui_->mnuFechaCobro, &QAction::triggered, this, &frmUnirQ19::cambiarFechaCobro);
  connect(ui_->mnuRenovar, &QAction::triggered, this, &frmUnirQ19::renovarIdentificacion);
  connect(ui_->mnuSeparar, &QAction::triggered, this, &frmUnirQ19::separarRemesa);
  connect(ui_->mnuExportarXml, &QAction::triggered, this, &frmUnirQ19::exportarXml);
}

void frmUnirQ19::renovarIdentificacion() {
  VistaRegistros& acumulado = *ui_->Acumulado;
  decir({});
  const remesa::ListaRegistros& lista = acumulado.lista();
  const auto cual = std::ranges::find(lista, remesa::CodigoRegistro::Presentador, remesa::Codigo);
  if (cual == lista.end())
    return comunes::Avisar(
        u"La remesa no tiene cabecera del presentador (01): no hay identificación que renovar."_s);
  const auto fila = static_cast<std::size_t>(cual - lista.begin());
  std::string registro(*cual);
  remesa::AjustarLongitud(registro);
  remesa::RenovarIdentificacion(registro, comunes::Ahora());
  acumulado.modelo().editable().sustituir(fila, registro);
  acumulado.modelo().avisarCambio(static_cast<int>(fila));
  mirarAcumulado();
  decir(u"Identificación del fichero: %1"_s.arg(
      comunes::DesdeWindows1252(remesa::Recortar(LeerCampo(registro, remesa::kIdentificacionFichero)))));
}

void frmUnirQ19::separarRemesa() {
  decir({});
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (lista.empty()) return comunes::Avisar(u"La remesa está vacía: no hay nada que separar."_s);
  VentanaSeparar ventana(lista, this);
  if (!ventana.sePuede()) return comunes::Avisar(ventana.impedimento());
  if (ventana.exec() != QDialog::Accepted) return;
  navegador_->refrescar();
  decir(u"%1 en %2"_s.arg(TextoCuenta(ventana.escritos(), u"fichero escrito"_s, u"ficheros escritos"_s),
                          ventana.carpeta()));
}

}  // namespace principal
