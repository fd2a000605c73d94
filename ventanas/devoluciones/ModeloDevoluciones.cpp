#include "ventanas/devoluciones/ModeloDevoluciones.h"

#include <algorithm>

namespace ventanas {

int ModeloDevoluciones::devolucion(int fila) const {
  const int cual = index(fila, 0).data(kElemento).toInt();
  return cual >= 0 && cual < std::ssize(marcas_) ? cual : -1;
}

ModeloDevoluciones::Marca ModeloDevoluciones::marca(int fila) const {
  const int cual = devolucion(fila);
  return cual < 0 ? Marca::NoAdmite : marcas_[static_cast<std::size_t>(cual)];
}

void ModeloDevoluciones::poner(int fila, Marca marca) {
  marcas_[static_cast<std::size_t>(devolucion(fila))] = marca;
  emit dataChanged(index(fila, 0), index(fila, 0));
}

QVariant ModeloDevoluciones::data(const QModelIndex& indice, int papel) const {
  if (papel != Qt::CheckStateRole) return ModeloRejilla::data(indice, papel);
  if (!indice.isValid() || indice.column() != 0 || marca(indice.row()) == Marca::NoAdmite) return {};
  return marca(indice.row()) == Marca::Puesta ? Qt::Checked : Qt::Unchecked;
}

Qt::ItemFlags ModeloDevoluciones::flags(const QModelIndex& indice) const {
  const Qt::ItemFlags deTodas = ModeloRejilla::flags(indice);
  const bool admite = indice.isValid() && indice.column() == 0 && marca(indice.row()) != Marca::NoAdmite;
  return admite ? deTodas | Qt::ItemIsUserCheckable : deTodas;
}

bool ModeloDevoluciones::setData(const QModelIndex& indice, const QVariant& valor, int papel) {
  if (papel != Qt::CheckStateRole || indice.column() != 0 || marca(indice.row()) == Marca::NoAdmite)
    return false;
  poner(indice.row(), valor.toInt() == Qt::Checked ? Marca::Puesta : Marca::Sin);
  emit marcasCambiadas();
  return true;
}

void ModeloDevoluciones::alternar(const std::vector<int>& filas) {
  const bool todas = std::ranges::none_of(filas, [this](int fila) { return marca(fila) == Marca::Sin; });
  for (const int fila : filas)
    if (marca(fila) != Marca::NoAdmite) poner(fila, todas ? Marca::Sin : Marca::Puesta);
  emit marcasCambiadas();
}

}  // namespace ventanas
