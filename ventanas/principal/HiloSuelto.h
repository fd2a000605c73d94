#pragma once

#include <atomic>
#include <functional>
#include <memory>

namespace principal {

/// Un trabajo en otro hilo que nadie espera: puede estar parado en un disco que no contesta, y entonces se
/// deja y acabará cuando pueda. El trabajo tiene lo suyo, y no toca nada de quien lo empezó.
class HiloSuelto {
 public:
  /// Da false si se ha dejado.
  using Seguir = std::function<bool()>;

  HiloSuelto() = default;
  ~HiloSuelto() { dejar(); }
  HiloSuelto(const HiloSuelto&) = delete;
  HiloSuelto& operator=(const HiloSuelto&) = delete;

  /// Deja el que hubiera y empieza otro, que no ha de lanzar nada. false si no hay más hilos.
  bool empezar(std::function<void(const Seguir&)> trabajo);
  void dejar();
  /// Hay uno, que no ha acabado.
  bool enMarcha() const { return marcas_ && !marcas_->acabado; }
  /// Lo deja y le da un momento para que acabe; para cuando se cierra el programa.
  void dejarDelTodo();

 private:
  struct Marcas {
    std::atomic<bool> dejado = false, acabado = false;
  };
  std::shared_ptr<Marcas> marcas_;
};

}  // namespace principal
