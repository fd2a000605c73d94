#pragma once

#include <QAbstractListModel>
#include <functional>

#include "remesa/ListaRegistros.h"

namespace principal {

/// Modelo de lista sobre los registros de una remesa; da a lo más Columnas::kMaxima posiciones de cada uno, y
/// solo cuando se le piden.
class ModeloRegistros : public QAbstractListModel {
  Q_OBJECT

 public:
  using Cambio = std::function<void(remesa::ListaRegistros&)>;
  using QAbstractListModel::QAbstractListModel;

  const remesa::ListaRegistros& lista() const { return lista_; }
  /// Para quien reescribe registros uno a uno y avisa con `avisarCambio`.
  remesa::ListaRegistros& editable() { return lista_; }
  void avisarCambio(int fila);

  /// Cambio que añade o quita registros. Si lanza, el modelo queda como lo dejó el cambio.
  void cambiar(const Cambio& cambio);
  /// Cambio que solo sustituye registros. Si lanza, igual.
  void reescribir(const Cambio& cambio);

  int rowCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;

 private:
  remesa::ListaRegistros lista_;
};

}  // namespace principal
