#include "ficheros/Lectura.h"

#include <array>

#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace {

constexpr const char* kCambia = "otro programa lo está cambiando";
constexpr const char* kCortado = "otro programa lo ha cortado";

}  // namespace

std::size_t LecturaFichero::leer(std::span<char> destino) {
  std::size_t total = 0;
  while (total < destino.size()) {
    const std::size_t leidos = leerAlgo(destino.subspan(total));
    if (leidos == 0) break;
    total += leidos;
  }
  leidos_ += total;
  if (leidos_ > tamano_ || (total < destino.size() && leidos_ == tamano_ && reescrito())) darPorCambiado();
  if (total < destino.size() && leidos_ < tamano_) throw ErrorEjecucion(kFinDeArchivo, ruta_, kCortado);
  return total;
}

std::size_t LecturaFichero::leerEn(std::uintmax_t donde, std::span<char> destino, bool mirar) {
  std::size_t total = 0;
  while (total < destino.size()) {
    const std::size_t leidos = leerAlgoEn(donde + total, destino.subspan(total));
    if (leidos == 0) break;
    total += leidos;
  }
  if (donde + total > tamano_ || (mirar && reescrito())) darPorCambiado();
  if (total < destino.size() && donde + total < tamano_) throw ErrorEjecucion(kFinDeArchivo, ruta_, kCortado);
  return total;
}

void LecturaFichero::comprobarMarca(const Marca& antes) const {
  if (marca() != antes) darPorCambiado();
}

void LecturaFichero::darPorCambiado() const {
  throw ErrorEjecucion(kErrorDeAcceso, ruta_, kCambia);
}

void LecturaFichero::comprobarFinal() {
  std::array<char, 1> sobra{};
  leer(sobra);
}

}  // namespace ficheros
