#pragma once

#include <QLabel>

namespace principal {

/// Etiqueta que ocupa a lo más `lineas` líneas: lo que no cabe acaba en puntos suspensivos y se lee entero en
/// la ayuda del ratón. El texto viene de fuera: nunca es marcado. Para las ayudas técnicas es siempre el
/// entero.
class EtiquetaRecortada : public QLabel {
  Q_OBJECT
  Q_PROPERTY(int lineas MEMBER lineas_)

 public:
  explicit EtiquetaRecortada(QWidget* padre = nullptr);

  bool hasHeightForWidth() const override { return lineas_ > 1; }
  int heightForWidth(int ancho) const override;
  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;

 private:
  /// El texto repartido en líneas de ese ancho, la última con lo que sobre.
  QStringList repartir(int ancho) const;

  int lineas_ = 1;
};

}  // namespace principal
