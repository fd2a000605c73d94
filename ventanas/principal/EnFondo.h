#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "ventanas/principal/Veredicto.h"

namespace principal {

class ModeloRegistros;

/// Comprueba en otro hilo lo que se guardaría de una lista. Lo que se pida deja lo de antes, que ya no se
/// cuenta; varias peticiones seguidas son una, y no hay nunca más de un hilo. Al destruirse se deja.
class EnFondo : public QObject {
  Q_OBJECT

 public:
  /// `modelo` vive más.
  explicit EnFondo(const ModeloRegistros& modelo, QObject* padre = nullptr);

  using Contar = std::function<void(const Veredicto&)>;
  /// Llama a `contar` en el hilo de las ventanas cuando acabe. `fila`, como en Veredicto.
  void pedir(std::uint64_t fila, Contar contar);
  void dejar();

 private:
  void empezar();

  const ModeloRegistros& modelo_;
  std::uint64_t fila_ = 0;
  Contar contar_;
  std::unique_ptr<Veredicto> enCurso_;
  QTimer espera_;
};

}  // namespace principal
