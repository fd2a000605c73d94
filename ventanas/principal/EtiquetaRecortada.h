#pragma once

#include <QLabel>

namespace principal {

/// Etiqueta de una línea: lo que no cabe se quita del medio y se lee entero en la ayuda del ratón. El texto
/// viene de fuera: nunca es marcado. Para las ayudas técnicas es siempre el entero.
class EtiquetaRecortada : public QLabel {
  Q_OBJECT

 public:
  explicit EtiquetaRecortada(QWidget* padre = nullptr);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
};

}  // namespace principal
