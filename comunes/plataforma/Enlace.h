#pragma once

#include <QPushButton>

namespace comunes {

/// Botón con aspecto de enlace: texto subrayado, del color de los enlaces sobre fondo claro u oscuro, y sin
/// marco. Se pulsa con el ratón, con su letra y con el teclado. Con `TabFocus`, pulsarlo con el ratón no saca
/// de la caja en que se esté.
class Enlace : public QPushButton {
  Q_OBJECT

 public:
  explicit Enlace(QWidget* padre = nullptr);

  /// El del texto, en vez del de los enlaces; uno no válido lo repone.
  void ponerColor(const QColor& color);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  QColor propio_;
};

}  // namespace comunes
