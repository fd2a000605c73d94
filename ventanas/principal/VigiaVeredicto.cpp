#include "ventanas/principal/VigiaVeredicto.h"

#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

VigiaVeredicto::VigiaVeredicto(const ModeloRegistros& modelo, QObject* padre)
    : QObject(padre), modelo_(modelo), fondo_(modelo) {
  connect(&modelo, &QAbstractItemModel::modelReset, this, &VigiaVeredicto::anticuar);
  connect(&modelo, &QAbstractItemModel::dataChanged, this, &VigiaVeredicto::anticuar);
}

void VigiaVeredicto::anticuar() {
  if (modelo_.lista().empty()) {
    fondo_.dejar();
    estado_ = Estado::Vacia;
  } else {
    estado_ = Estado::Comprobando;
    fondo_.pedir(0, [this](const Veredicto& veredicto) {
      estado_ = veredicto.resultado() ? Estado::Comprobada : Estado::Fallida;
      if (veredicto.resultado()) resultado_ = *veredicto.resultado();
      emit cambiado();
    });
  }
  emit cambiado();
}

}  // namespace principal
