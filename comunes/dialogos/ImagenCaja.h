#pragma once

#include <QWidget>

namespace comunes {

/// La imagen de la caja. Se pinta a cada tamaño y escala, con colores que se leen en escritorios claros y
/// oscuros.
class ImagenCaja : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int Icono READ Icono WRITE PonerIcono)

 public:
  explicit ImagenCaja(QWidget* padre = nullptr);

  int Icono() const { return icono_; }
  /// 1 aviso, 2 error, 3 advertencia, 4 entrada de datos, 16 pregunta, 17 cifrado; 0 o menos, ninguna imagen;
  /// cualquier otro, la del aviso.
  void PonerIcono(int indice);
  QSize sizeHint() const override { return {48, 48}; }

 protected:
  void paintEvent(QPaintEvent* suceso) override;

 private:
  int icono_ = 1;
};

}  // namespace comunes
