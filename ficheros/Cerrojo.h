#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace ficheros {

/// Exclusión entre programas: solo uno puede tener puesto el cerrojo de una ruta. Lo pone el sistema, así que
/// se suelta también si el programa muere, sea cuando sea. En esa ruta queda un fichero, que mientras está
/// puesto dice quién lo tiene.
class Cerrojo {
 public:
  /// `quien`, para los que esperen.
  explicit Cerrojo(std::filesystem::path ruta, std::string quien = {});
  /// Lo suelta.
  ~Cerrojo();
  Cerrojo(const Cerrojo&) = delete;
  Cerrojo& operator=(const Cerrojo&) = delete;

  /// Lo pone; falso si lo tiene otro. Lanza ErrorEjecucion si la ruta no admite ninguno.
  bool poner();
  /// Quién lo tiene, según él mismo, cuando `poner` ha devuelto falso; vacío si no se sabe.
  std::string quienLoTiene() const;

  /// Lo más que se lee de lo que otro dice de sí.
  static constexpr std::size_t kMaximoQuien = 200;

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace ficheros
