#pragma once

#include <QObject>
#include <atomic>
#include <functional>
#include <optional>
#include <thread>

#include "remesa/Comprobacion.h"

namespace principal {

/// La comprobación de lo que se guarda, en otro hilo: empieza al crearse, llega cuando llega y, si se
/// destruye antes, se deja a medias. Tiene su propia lista, que no copia los registros.
class Veredicto : public QObject {
  Q_OBJECT

 public:
  /// Sin resultado, no se ha podido comprobar.
  using Resultado = std::optional<remesa::ResultadoComprobacion>;

  Veredicto(remesa::ListaRegistros lista, remesa::Dia hoy);

  /// Pide que se deje a medias, sin esperar a que se deje; ya no llamará a nadie.
  void parar();
  /// Ha acabado, o se ha dejado: destruirlo no espera.
  bool listo() const noexcept { return listo_; }
  /// Llama a `contar` en el hilo de las ventanas: enseguida si ya ha acabado y, si no, cuando acabe.
  void alLlegar(std::function<void(const Resultado&)> contar);

 private:
  void entregar();

  std::function<void(const Resultado&)> contar_;
  Resultado resultado_;
  std::atomic<bool> listo_ = false;
  std::jthread hilo_;  // el último: acaba antes de que se vaya lo que usa
};

}  // namespace principal
