#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "ventanas/principal/Veredicto.h"

namespace principal {

class ModeloRegistros;

/// Comprueba en otro hilo lo que se guardaría de una lista, y otra vez cada vez que cambia: lo que estuviera
/// a medias se deja. No empieza hasta que la lista lleva un momento quieta, y no hay nunca más de un hilo.
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
  void empezar();
  void terminar(const Veredicto::Resultado& resultado);

  const ModeloRegistros& modelo_;
  Estado estado_ = Estado::Vacia;
  remesa::ResultadoComprobacion resultado_;
  std::unique_ptr<Veredicto> enCurso_;
  QTimer espera_;
};

}  // namespace principal
