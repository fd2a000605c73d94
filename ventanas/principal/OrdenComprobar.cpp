#include <QDir>
#include <QFileInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "iso20022/LectorXml.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/VentanaHallazgos.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

// Se comprueba la lista en que se está; desde otro sitio, la acumulación, que es lo que se va a guardar, y si
// está vacía, lo previsualizado. La ventana dice cuál.
void frmUnirQ19::comprobar() {
  const bool hayPreview = !rutaPreview_.isEmpty();
  const bool hayAcumulado = !ui_->Acumulado->lista().empty();
  if (hayPreview && (ui_->Preview == focusWidget() || !hayAcumulado))
    comprobarPreview();
  else if (hayAcumulado)
    comprobarAcumulado();
  else
    comunes::Avisar(u"No hay ninguna remesa que comprobar: elija un fichero o importe alguno."_s);
}

void frmUnirQ19::comprobarAcumulado(bool comoGuardada) {
  const QString titulo = comoGuardada ? u"Remesa acumulada, como se guardaría"_s : u"Remesa acumulada"_s;
  mostrarComprobaciones({[titulo] { return titulo; },
                         [this, comoGuardada](const auto& recibir, const auto& avance) {
                           return remesa::ComprobarLista(ui_->Acumulado->lista(), comunes::Hoy(), recibir,
                                                         comoGuardada, avance);
                         },
                         [this](const remesa::Hallazgo& h) {
                           if (h.fila > ui_->Acumulado->lista().size()) return false;
                           editar(static_cast<int>(h.fila) - 1, h.donde.desde);
                           if (comprobaciones_) comprobaciones_->activateWindow();
                           return true;
                         }},
                        ui_->Acumulado);
}

// El fichero y no la lista, que ya no tiene sus fines de línea; de un XML, sus registros.
void frmUnirQ19::comprobarPreview() {
  mostrarComprobaciones(
      {[this] { return u"Previsualizado, %1"_s.arg(QFileInfo(rutaPreview_).fileName()); },
       [this](const auto& recibir, const auto& avance) {
         const std::filesystem::path ruta = comunes::ARuta(rutaPreview_);
         if (iso20022::EmpiezaComoXml(ruta))
           return remesa::ComprobarLista(ui_->Preview->lista(), comunes::Hoy(), recibir, false, avance);
         return remesa::ComprobarFichero(ruta, comunes::Hoy(), recibir, avance);
       },
       [this](const remesa::Hallazgo& h) { return irEnPreview(rutaPreview_, h); }, rutaPreview_},
      ui_->Preview);
}

void frmUnirQ19::comprobarGuardado() {
  const QString ruta = guardado_;
  mostrarComprobaciones({[ruta] { return u"Guardado, %1"_s.arg(QFileInfo(ruta).fileName()); },
                         [ruta](const auto& recibir, const auto& avance) {
                           return remesa::ComprobarFichero(comunes::ARuta(ruta), comunes::Hoy(), recibir,
                                                           avance);
                         },
                         // La acumulación está ya vacía: se lee arriba.
                         [this, ruta](const remesa::Hallazgo& h) { return irEnPreview(ruta, h); }, ruta},
                        nullptr);
}

bool frmUnirQ19::irEnPreview(const QString& ruta, const remesa::Hallazgo& hallazgo) {
  // Puede haberlo escrito esta misma ventana, u otro programa, desde que se leyó.
  if (rutaPreview_ != ruta || marcaPreview_ != Marca(ruta)) elegir(ruta);
  if (rutaPreview_ != ruta || hallazgo.fila > ui_->Preview->lista().size()) return false;
  ui_->Preview->seleccionarSolo(static_cast<int>(hallazgo.fila) - 1);
  ui_->Preview->mostrarPosicion(hallazgo.donde.desde);
  ui_->Preview->setFocus();
  activateWindow();
  const QWidget& zona = *ui_->Preview->viewport();
  const QRect fila = ui_->Preview->visualRect(ui_->Preview->currentIndex()) & zona.rect();
  if (comprobaciones_) comprobaciones_->Apartar(fila.translated(zona.mapToGlobal(QPoint(0, 0))));
  return true;
}

/// Una sola ventana: la nueva sustituye a la que hubiera. `lista`, la que la deja anticuada al cambiar.
void frmUnirQ19::mostrarComprobaciones(OrigenHallazgos comprobada, const VistaRegistros* lista) {
  delete comprobaciones_;
  auto ventana = std::make_unique<VentanaHallazgos>(std::move(comprobada), this);
  ventana->comprobar();
  if (lista != nullptr) {
    const QAbstractItemModel* modelo = lista->model();
    connect(modelo, &QAbstractItemModel::modelReset, ventana.get(), &VentanaHallazgos::caducar);
    connect(modelo, &QAbstractItemModel::dataChanged, ventana.get(), &VentanaHallazgos::caducar);
  }
  comprobaciones_ = ventana.release();
  comprobaciones_->setAttribute(Qt::WA_DeleteOnClose);
  comprobaciones_->show();
}

}  // namespace principal
