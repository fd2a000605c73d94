#pragma once

#include <QFont>
#include <QRawFont>
#include <array>

#include "remesa/Registro.h"

namespace principal {

/// Medidas, en píxeles lógicos, con que se pintan las posiciones de un registro. El ancho de columna es
/// entero para que la regla y los caracteres coincidan al píxel en toda escala.
class Columnas {
 public:
  explicit Columnas(const QFont& fuente);

  int ancho() const { return ancho_; }
  int alto() const { return alto_; }
  int base() const { return base_; }
  /// Borde izquierdo de la posición (desde 1) sin desplazamiento.
  int x(int posicion) const { return kMargen + (posicion - 1) * ancho_; }
  /// La última posición que se ve: 600 o, si algún registro es más largo, las que tenga, hasta kMaxima.
  int ultima() const { return ultima_; }
  void ponerUltima(std::size_t ultima);
  /// Posición (desde 1) que cae en `x`, o 0 si ninguna.
  int posicionEn(int x) const;
  int anchoTotal() const { return x(ultima_ + 1) + kMargen; }

  const QRawFont& fuente() const { return fuente_; }
  /// Glifo de un byte de Windows-1252; el del blanco si no es visible.
  quint32 glifo(unsigned char byte) const { return glifos_[byte]; }

  static constexpr int kMargen = 10;
  static constexpr int kMaxima = 32767;

 private:
  QRawFont fuente_;
  int ancho_;
  int alto_;
  int base_;
  int ultima_ = remesa::kLongitudRegistro;
  std::array<quint32, 256> glifos_{};
};

}  // namespace principal
