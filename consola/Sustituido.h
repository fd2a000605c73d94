#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace consola {

/// El fichero que una orden va a sustituir por el suyo, si ya lo hay: se mira antes de escribir y, escrito,
/// se dice en la salida de errores cuál era y lo que medía.
class Sustituido {
 public:
  explicit Sustituido(const std::filesystem::path& destino);
  void decir() const;

 private:
  std::filesystem::path ruta_;  // la de verdad, al final de los enlaces
  std::optional<std::uintmax_t> bytes_;
};

}  // namespace consola
