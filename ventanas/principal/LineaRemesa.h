#pragma once

#include <QLabel>
#include <cstdint>

#include "comunes/plataforma/Iconos.h"

namespace comunes {
class Enlace;
}

namespace principal {

/// Lo que hay que saber de la remesa en una línea: cuánto lleva, con el total en letra grande, qué dice su
/// comprobación, en palabras y en color, y cuánto suma lo seleccionado. Si falta ancho se recorta primero la
/// cuenta y luego la selección; el total y el veredicto, nunca. Las ayudas técnicas la leen entera.
class LineaRemesa : public QLabel {
  Q_OBJECT

 public:
  enum class Estado : std::uint8_t { SinNada, Comprobando, Comprobada, Fallida };

  explicit LineaRemesa(QWidget* padre = nullptr);

  /// `total` puede ir vacío; lo demás también es texto de fuera, nunca marcado.
  void ponerCuenta(const QString& cuenta, const QString& total);
  void ponerVeredicto(Estado estado, std::uint64_t errores = 0, std::uint64_t avisos = 0);
  /// Vacío, no se dice nada.
  void ponerSeleccion(const QString& seleccion);
  /// Plegada, el total va en letra corriente y la línea ocupa lo que una.
  void plegar(bool plegada);
  /// Cuántos errores y avisos; a la vista solo si hay alguno.
  comunes::Enlace& enlace() { return *enlace_; }

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* evento) override;
  bool event(QEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;

 private:
  QFont letraTotal() const;
  int anchoTotal() const;
  int anchoVeredicto() const;
  void colorear();
  /// Dónde va cada parte con el ancho que hay.
  void repartir();
  void decirEntera();

  QString cuenta_, total_, seleccion_;
  QString veredicto_;
  comunes::Pictograma senal_ = comunes::Pictograma::Correcto;
  bool conSenal_ = false;
  bool plegada_ = false;
  comunes::Enlace* enlace_;
  // En píxeles, desde la izquierda.
  QString cuentaVista_, seleccionVista_;
  int xTotal_ = 0, xSenal_ = 0, xVeredicto_ = 0, xSeleccion_ = 0;
};

}  // namespace principal
