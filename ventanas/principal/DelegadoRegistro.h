#pragma once

#include <QStyledItemDelegate>

namespace principal {

class VistaRegistros;

/// Pinta las posiciones visibles de un registro, cada carácter en su columna.
class DelegadoRegistro : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit DelegadoRegistro(VistaRegistros* vista);

  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;
  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;

 private:
  VistaRegistros* vista_;
};

}  // namespace principal
