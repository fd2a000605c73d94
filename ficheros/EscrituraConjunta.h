#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "ficheros/EscrituraSegura.h"

namespace ficheros {

/// Varios ficheros que quedan todos o ninguno. Cada uno se escribe en su temporal; al confirmar, si uno no
/// puede ponerse en su sitio, los anteriores vuelven a ser lo que eran. Todos lanzan ErrorEjecucion.
class EscrituraConjunta {
 public:
  /// Sin `sustituir`, un fichero que ya exista es un error 58.
  explicit EscrituraConjunta(bool sustituir = true) : sustituir_(sustituir) {}
  ~EscrituraConjunta();
  EscrituraConjunta(const EscrituraConjunta&) = delete;
  EscrituraConjunta& operator=(const EscrituraConjunta&) = delete;

  /// El que sigue; vale hasta que se confirma. Escrito, conviene volcarlo: suelta su memoria.
  EscrituraSegura& anadir(const std::filesystem::path& destino);
  void confirmar();

 private:
  struct Parte {
    std::filesystem::path destino;
    std::unique_ptr<EscrituraSegura> escritura;
    std::filesystem::path real = {};      // el destino, sin enlaces
    std::filesystem::path respaldo = {};  // lo que había; vacío si nada
    bool publicado = false;
  };
  void respaldar(Parte& parte);
  void deshacer() noexcept;

  bool sustituir_;
  std::vector<Parte> partes_;
};

}  // namespace ficheros
