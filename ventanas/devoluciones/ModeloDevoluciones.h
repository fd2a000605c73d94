#pragma once

#include <vector>

#include "comunes/rejilla/ModeloRejilla.h"

namespace ventanas {

/// La rejilla de las devoluciones, con una casilla en la primera columna de las que pueden presentarse otra
/// vez. Lo marcado es de cada devolución (su `RowItem`), no de su fila.
class ModeloDevoluciones : public comunes::ModeloRejilla {
  Q_OBJECT

 public:
  using ModeloRejilla::ModeloRejilla;

  enum class Marca : std::uint8_t { NoAdmite, Sin, Puesta };

  /// Una por devolución, en su orden.
  void ponerMarcas(std::vector<Marca> marcas) { marcas_ = std::move(marcas); }
  const std::vector<Marca>& marcas() const { return marcas_; }
  /// Marca las de esas filas, o las desmarca si todas lo están.
  void alternar(const std::vector<int>& filas);
  /// La devolución de una fila; -1 si no es de ninguna.
  int devolucion(int fila) const;

  QVariant data(const QModelIndex& indice, int papel) const override;
  Qt::ItemFlags flags(const QModelIndex& indice) const override;
  bool setData(const QModelIndex& indice, const QVariant& valor, int papel) override;

 signals:
  void marcasCambiadas();

 private:
  Marca marca(int fila) const;
  void poner(int fila, Marca marca);

  std::vector<Marca> marcas_;
};

}  // namespace ventanas
