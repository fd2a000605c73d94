#pragma once

#include <filesystem>
#include <memory>

namespace ficheros {

/// Exclusión entre programas: solo uno puede tener puesto el cerrojo de una ruta. Lo pone el sistema, así que
/// se suelta también si el programa muere, sea cuando sea. En esa ruta queda un fichero vacío.
class Cerrojo {
 public:
  explicit Cerrojo(std::filesystem::path ruta);
  /// Lo suelta.
  ~Cerrojo();
  Cerrojo(const Cerrojo&) = delete;
  Cerrojo& operator=(const Cerrojo&) = delete;

  /// Lo pone; falso si lo tiene otro. Lanza ErrorEjecucion si la ruta no admite ninguno.
  bool poner();

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace ficheros
