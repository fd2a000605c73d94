#pragma once

#include <memory>
#include <optional>
#include <string>

#include "anteriores/Indice.h"
#include "ficheros/Lectura.h"

namespace anteriores {

/// Vuelve a leer registros de los ficheros de un índice, que ha de vivir mientras tanto, como `seguir`. Tiene
/// abierto el último: conviene pedirlos por ficheros.
class Relectura {
 public:
  Relectura(const Indice& indice, const Seguir& seguir) : indice_(indice), seguir_(seguir) {}

  /// El registro, de 600 bytes; sin valor si el fichero ya no es el que se leyó, o no está. Lanza Detenido.
  std::optional<std::string> registro(std::uint32_t fichero, std::uint64_t numero);

 private:
  struct Abierto {
    std::uint32_t fichero = 0;
    std::unique_ptr<ficheros::LecturaFichero> lectura;
    std::vector<std::uint64_t> inicios;  // de cada línea, si no se calculan
    remesa::ListaRegistros lista;        // los de un XML
  };
  bool abrir(std::uint32_t fichero);
  std::string leer(std::uint64_t numero);

  void continuar() const {
    if (!seguir_()) throw Detenido();
  }

  const Indice& indice_;
  const Seguir& seguir_;
  std::optional<Abierto> abierto_;
  std::optional<std::uint32_t> perdido_;  // el último que no se pudo abrir
};

}  // namespace anteriores
