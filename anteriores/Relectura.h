#pragma once

#include <memory>
#include <optional>
#include <string>

#include "anteriores/Indice.h"
#include "ficheros/Lectura.h"

namespace anteriores {

/// Vuelve a leer registros de los ficheros de un índice, que ha de vivir mientras tanto. Tiene abierto el
/// último: conviene pedirlos por ficheros.
class Relectura {
 public:
  explicit Relectura(const Indice& indice) : indice_(indice) {}

  /// El registro, de 600 bytes; sin valor si el fichero ya no es el que se leyó, o no está.
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

  const Indice& indice_;
  std::optional<Abierto> abierto_;
  std::optional<std::uint32_t> perdido_;  // el último que no se pudo abrir
};

}  // namespace anteriores
