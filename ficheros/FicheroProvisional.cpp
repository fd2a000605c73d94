#include "ficheros/FicheroProvisional.h"

#include "ficheros/ErrorEjecucion.h"

namespace ficheros {

void FicheroProvisional::escribir(std::string_view bytes) {
  constexpr std::size_t kTrozo = std::size_t{1} << 18;
  pendientes_ += bytes;
  if (pendientes_.size() >= kTrozo) volcar();
}

std::size_t FicheroProvisional::leerEn(std::uintmax_t donde, std::span<char> destino) {
  volcar();
  std::size_t total = 0;
  while (total < destino.size()) {
    const std::size_t leidos = leerAlgoEn(donde + total, destino.subspan(total));
    if (leidos == 0) break;
    total += leidos;
  }
  // Nadie más lo tiene: si acaba antes, lo escrito no se ha guardado.
  if (total < destino.size() && donde + total < enDisco_) throw ErrorEjecucion(kErrorDeDispositivo, carpeta_);
  return total;
}

void FicheroProvisional::volcar() {
  std::string_view quedan = pendientes_;
  while (!quedan.empty()) {
    const std::size_t escritos = escribirAlgo(quedan);
    enDisco_ += escritos;
    quedan.remove_prefix(escritos);
  }
  pendientes_.clear();
}

}  // namespace ficheros
