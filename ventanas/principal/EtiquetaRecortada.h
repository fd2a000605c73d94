#pragma once

#include <QLabel>

namespace principal {

/// Etiqueta de una línea: lo que no cabe se quita, del medio si no se dice otra cosa, y se lee entero en la
/// ayuda del ratón. El texto viene de fuera: nunca es marcado. Para las ayudas técnicas es siempre el entero.
class EtiquetaRecortada : public QLabel {
  Q_OBJECT

 public:
  explicit EtiquetaRecortada(QWidget* padre = nullptr);

  void ponerRecorte(Qt::TextElideMode recorte);
  /// Lo que va entre " · " se recorta por separado, y lo más largo antes: un nombre no se lleva el importe.
  void ponerPorPartes();
  /// El ancho que pide a lo más, en caracteres.
  void ponerPedidos(int caracteres);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;

 private:
  QString textoQueCabe() const;

  bool porPartes_ = false;
  Qt::TextElideMode recorte_ = Qt::ElideMiddle;
  // Más que esto no se pide: un nombre largo no debe dejar sin sitio a los avisos de al lado.
  int pedidos_ = 50;
};

}  // namespace principal
