#pragma once

#include <QObject>
#include <atomic>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "remesa/Comprobacion.h"

namespace principal {

/// La comprobación de lo que se guarda, en otro hilo: empieza al crearse, llega cuando llega y, si se
/// destruye antes, se deja a medias. Tiene su propia lista, que no copia los registros.
class Veredicto : public QObject {
  Q_OBJECT

 public:
  /// Sin resultado, no se ha podido comprobar.
  using Resultado = std::optional<remesa::ResultadoComprobacion>;

  /// Guarda además los hallazgos del registro `fila`, desde 1; con 0, ninguno.
  Veredicto(remesa::ListaRegistros lista, remesa::Dia hoy, std::uint64_t fila = 0);

  /// Pide que se deje a medias, sin esperar a que se deje; ya no llamará a nadie.
  void parar();
  /// Ha acabado, o se ha dejado: destruirlo no espera.
  bool listo() const noexcept { return listo_; }
  /// Cuando ha acabado.
  const Resultado& resultado() const { return resultado_; }
  /// Los del registro pedido, cuando ha acabado.
  const std::vector<remesa::Hallazgo>& hallazgos() const { return hallazgos_; }
  /// Llama a `contar` en el hilo de las ventanas: enseguida si ya ha acabado y, si no, cuando acabe.
  void alLlegar(std::function<void(const Resultado&)> contar);

 private:
  void entregar();

  std::function<void(const Resultado&)> contar_;
  Resultado resultado_;
  std::vector<remesa::Hallazgo> hallazgos_;
  std::atomic<bool> listo_ = false;
  std::jthread hilo_;  // el último: acaba antes de que se vaya lo que usa
};

}  // namespace principal
