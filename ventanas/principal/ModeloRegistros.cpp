#include "ventanas/principal/ModeloRegistros.h"

#include <QScopeGuard>
#include <limits>

#include "ventanas/principal/Columnas.h"
#include "ventanas/principal/TextoVisible.h"

namespace principal {

void ModeloRegistros::avisarCambio(int fila) {
  const QModelIndex indice = index(fila);
  if (indice.isValid()) emit dataChanged(indice, indice);
}

void ModeloRegistros::cambiar(const Cambio& cambio) {
  beginResetModel();
  const auto alSalir = qScopeGuard([this] { endResetModel(); });
  cambio(lista_);
}

void ModeloRegistros::reescribir(const Cambio& cambio) {
  const auto alSalir = qScopeGuard([this] {
    if (!lista_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
  });
  cambio(lista_);
}

int ModeloRegistros::rowCount(const QModelIndex& padre) const {
  if (padre.isValid()) return 0;
  return static_cast<int>(std::min<std::size_t>(lista_.size(), std::numeric_limits<int>::max()));
}

QVariant ModeloRegistros::data(const QModelIndex& indice, int papel) const {
  if (!indice.isValid() || papel != Qt::DisplayRole) return {};
  return TextoVisible(lista_[static_cast<std::size_t>(indice.row())].substr(0, Columnas::kMaxima));
}

}  // namespace principal
