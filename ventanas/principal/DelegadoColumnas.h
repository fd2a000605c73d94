#pragma once

#include "ventanas/principal/DelegadoRegistro.h"

namespace principal {

/// Pinta un registro repartido en las columnas de la cabecera de su lista; lo que no cabe acaba en «…».
class DelegadoColumnas : public DelegadoRegistro {
  Q_OBJECT

 public:
  using DelegadoRegistro::DelegadoRegistro;

  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;

 protected:
  void pintarContenido(QPainter& pintor, const QRect& fila, const QRect& visible, const QColor& tinta,
                       int indice) const override;
};

}  // namespace principal
