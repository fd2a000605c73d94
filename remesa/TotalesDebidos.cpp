#include "remesa/TotalesDebidos.h"

#include <algorithm>

#include "remesa/Validez.h"

namespace remesa {

TotalesDebidos::TotalesDebidos(const ListaRegistros& lista) {
  TotalesNorma norma;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    const std::string_view registro = lista[i];
    if (registro.size() < kLongitudRegistro && EnBlanco(registro)) continue;
    const ClaseRegistro clase = Clase(registro);
    if (clase == ClaseRegistro::Adeudo && !SonCifras(Recortar(LeerCampo(registro, kImporteAdeudo))))
      seEntienden_ = false;
    const auto debidos = norma.dar(registro, clase);
    if (!debidos.empty()) std::ranges::copy(debidos, totales_[i].begin());
  }
}

std::string TotalesDebidos::de(std::size_t i, Posiciones donde) const {
  const auto suyos = totales_.find(i);
  if (suyos == totales_.end()) return {};
  const auto& debidos = suyos->second;
  const auto debido = std::ranges::find(debidos, donde, &TotalDebido::donde);
  if (debido == debidos.end() || (debido == debidos.begin() && !seEntienden_)) return {};
  const std::string cifras = CifrasDe(debido->valor, donde.longitud());
  return cifras.size() == static_cast<std::size_t>(donde.longitud()) ? cifras : std::string();
}

}  // namespace remesa
