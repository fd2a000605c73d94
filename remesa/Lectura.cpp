#include "remesa/Lectura.h"

#include <array>

#include "remesa/ErrorEjecucion.h"

namespace remesa {

std::size_t LecturaFichero::leer(std::span<char> destino) {
  std::size_t total = 0;
  while (total < destino.size()) {
    const std::size_t leidos = leerAlgo(destino.subspan(total));
    if (leidos == 0) break;
    total += leidos;
  }
  leidos_ += total;
  if (leidos_ > tamano_) throw ErrorEjecucion(75, ruta_);
  if (total < destino.size() && leidos_ < tamano_) throw ErrorEjecucion(62, ruta_);
  return total;
}

void LecturaFichero::comprobarFinal() {
  std::array<char, 1> sobra;
  leer(sobra);
}

}  // namespace remesa
