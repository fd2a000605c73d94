#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <optional>
#include <vector>

#include "remesa/Correccion.h"

namespace principal {

/// Unas correcciones, cada una en su fila, con una marca las que se pueden dejar sin hacer. No compone más
/// que las filas que se ven.
class ModeloCorrecciones : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Columna { kCodigo, kRegistro, kQue, kCampo, kAntes, kDespues, kDeudor, kReferencia, kColumnas };

  using QAbstractTableModel::QAbstractTableModel;

  /// Todas marcadas y a la vista.
  void poner(std::vector<remesa::Correccion> correcciones);
  /// Deja a la vista las de un código; sin él, todas.
  void ver(std::optional<remesa::CodigoHallazgo> codigo);

  const std::vector<remesa::Correccion>& correcciones() const { return correcciones_; }
  const remesa::Correccion& enFila(int fila) const;
  bool marcada(std::size_t cual) const { return marcadas_[cual]; }
  /// Las que se harán: las marcadas y las que van con otra.
  std::size_t marcadas() const;

  bool marcadaEnFila(int fila) const { return marcadas_[visibles_[static_cast<std::size_t>(fila)]]; }
  /// De la fila `desde` a la `hasta`, ambas incluidas.
  void marcar(int desde, int hasta, bool si);

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;
  bool setData(const QModelIndex& indice, const QVariant& valor, int papel) override;
  Qt::ItemFlags flags(const QModelIndex& indice) const override;

 private:
  std::vector<remesa::Correccion> correcciones_;
  std::vector<bool> marcadas_;
  std::vector<std::size_t> visibles_;
};

}  // namespace principal
