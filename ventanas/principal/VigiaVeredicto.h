#pragma once

#include <QObject>

#include "ventanas/principal/EnFondo.h"

namespace principal {

/// Sabe lo que dice la comprobación de lo que se guardaría de una lista: la hace en otro hilo, y otra vez
/// cada vez que cambia.
class VigiaVeredicto : public QObject {
  Q_OBJECT

 public:
  enum class Estado : std::uint8_t { Vacia, Comprobando, Comprobada, Fallida };

  /// `modelo` vive más que el vigía.
  VigiaVeredicto(const ModeloRegistros& modelo, QObject* padre);

  Estado estado() const noexcept { return estado_; }
  /// Solo si está comprobada.
  const remesa::ResultadoComprobacion& resultado() const { return resultado_; }

 signals:
  void cambiado();

 private:
  void anticuar();

  const ModeloRegistros& modelo_;
  EnFondo fondo_;
  Estado estado_ = Estado::Vacia;
  remesa::ResultadoComprobacion resultado_;
};

}  // namespace principal
