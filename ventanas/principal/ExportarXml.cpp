#include "comunes/dialogos/MyBox.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/VentanaXml.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

void frmUnirQ19::exportarXml() {
  decir({});
  if (ui_->Acumulado->lista().empty())
    return comunes::Avisar(u"La remesa está vacía: no hay nada que exportar."_s);
  if (!exportacion_) {
    exportacion_ = new VentanaXml(
        ui_->Acumulado->lista(),
        [this](std::uint64_t fila, int posicion) {
          editar(static_cast<int>(fila) - 1, posicion);
          if (exportacion_) exportacion_->activateWindow();
        },
        [this](const QString& que) {
          navegador_->refrescar();
          decir(que);
        },
        this);
    exportacion_->setAttribute(Qt::WA_DeleteOnClose);
    const QAbstractItemModel* modelo = ui_->Acumulado->model();
    connect(modelo, &QAbstractItemModel::modelReset, exportacion_, &VentanaXml::caducar);
    connect(modelo, &QAbstractItemModel::dataChanged, exportacion_, &VentanaXml::caducar);
  }
  exportacion_->examinar();
  exportacion_->show();
  exportacion_->raise();
  exportacion_->activateWindow();
}

}  // namespace principal
