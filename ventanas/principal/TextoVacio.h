#pragma once

#include <QLabel>

class QAbstractItemView;

namespace principal {

/// Lo que se lee en una vista de elementos mientras no tiene ninguno. Para las ayudas técnicas es entonces la
/// descripción de la vista.
class TextoVacio : public QLabel {
  Q_OBJECT

 public:
  /// `vista` ha de tener ya su modelo.
  explicit TextoVacio(QAbstractItemView& vista);
  void poner(const QString& texto);

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void mostrarSiVacia();

  QAbstractItemView& vista_;
};

}  // namespace principal
