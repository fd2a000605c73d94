#pragma once

#include <QWidget>

namespace principal {

class VistaRegistros;

/// Regla de posiciones (10, 20, … 600) encima de una lista de registros; se desplaza con ella.
class ReglaPosiciones : public QWidget {
  Q_OBJECT

 public:
  explicit ReglaPosiciones(VistaRegistros* vista);
  int alto() const;

 signals:
  /// Posición bajo el ratón, o 0.
  void posicionBajoRaton(int posicion);

 protected:
  void paintEvent(QPaintEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void leaveEvent(QEvent* evento) override;

 private:
  VistaRegistros* vista_;
};

}  // namespace principal
