#pragma once

#include <QAbstractTableModel>

#include "comunes/rejilla/Rejilla.h"

namespace comunes {

/// Enseña una Rejilla en una QTableView: la cabecera es la fila 0 y la fila 0 del modelo la primera no fija.
/// La vista aplica anchos, alturas y ocultos cuando llega `modelReset`. La rejilla vive más que el modelo.
class ModeloRejilla : public QAbstractTableModel {
  Q_OBJECT
 public:
  /// El `RowItem` de la fila.
  static constexpr int kElemento = Qt::UserRole;

  explicit ModeloRejilla(Rejilla& rejilla, QObject* padre = nullptr);
  ~ModeloRejilla() override;

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  QVariant headerData(int seccion, Qt::Orientation orientacion, int papel) const override;

  /// Fila de la rejilla que corresponde a una del modelo.
  int FilaRejilla(int fila) const { return fila + rejilla_.FixedRows(); }
  /// En píxeles independientes del dispositivo (15 twips); 0, columna oculta.
  int AnchoColumna(int columna) const;
  int AltoFila(int fila) const;
  bool FilaOculta(int fila) const { return rejilla_.RowHeight(FilaRejilla(fila)) < 1; }

 private:
  Rejilla& rejilla_;
  int filas_ = 0;
  int columnas_ = 0;
};

}  // namespace comunes
