#pragma once

#include <QLabel>

namespace principal {

/// Etiqueta de una línea que acaba en puntos suspensivos si no cabe y entonces da el texto entero como ayuda.
/// El texto viene de fuera: nunca es marcado.
class EtiquetaRecortada : public QLabel {
  Q_OBJECT

 public:
  explicit EtiquetaRecortada(QWidget* padre = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
};

}  // namespace principal
