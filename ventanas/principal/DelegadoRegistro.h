#pragma once

#include <QStyledItemDelegate>
#include <string_view>

namespace principal {

class VistaRegistros;

/// Pinta las posiciones visibles de un registro, cada carácter en su columna.
class DelegadoRegistro : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit DelegadoRegistro(VistaRegistros* vista);

  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;
  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;

 protected:
  /// Fondo y marcas son iguales se lea como se lea. `visible`, la parte de la fila que se ve; `tinta`, la del
  /// texto.
  virtual void pintarContenido(QPainter& pintor, const QRect& fila, const QRect& visible, const QColor& tinta,
                               int indice) const;
  const VistaRegistros& vista() const { return *vista_; }

 private:
  VistaRegistros* vista_;
};

}  // namespace principal
