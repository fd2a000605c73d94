#include "remesa/FechasCorregidas.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <tuple>
#include <vector>

#include "remesa/ReglasCuentas.h"

namespace remesa {
namespace {

struct CabeceraFechada {
  std::size_t indice = 0;
  std::string_view acreedor, cuenta;
  std::string antes = {}, despues = {};
};

bool HaDeCambiar(Dia cobro, Dia hoy) {
  if (EsAntigua(cobro) || cobro > hoy + kCobroLejano) return false;  // tiene mal el año
  return cobro <= hoy || EsFinDeSemana(cobro) || Festivo(cobro) != FestivoTarget::Ninguno;
}

/// Si los bloques, puestos por su fecha y luego como están, siguen en el mismo orden.
bool MismoOrden(std::span<const CabeceraFechada> bloques) {
  const auto orden = [&](auto fecha) {
    std::vector<std::size_t> indices(bloques.size());
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    std::ranges::stable_sort(indices, {}, [&](std::size_t i) { return bloques[i].*fecha; });
    return indices;
  };
  return orden(&CabeceraFechada::antes) == orden(&CabeceraFechada::despues);
}

}  // namespace

std::map<std::size_t, std::string> FechasCorregidas(const ListaRegistros& lista,
                                                    std::span<const std::size_t> cabeceras, Dia hoy) {
  std::map<std::string_view, std::vector<CabeceraFechada>> deAcreedor;
  for (const std::size_t i : cabeceras) {
    CabeceraFechada bloque{.indice = i,
                           .acreedor = Recortar(LeerCampo(lista[i], kIdentificadorAcreedor)),
                           .cuenta = CuentaComparable(Recortar(LeerCampo(lista[i], kCuentaAcreedor)))};
    // Las que no son fechas van antes que todas, como al mirar los mandatos.
    if (const std::optional<Dia> cobro = LeerFecha(LeerCampo(lista[i], kFechaCobro)); cobro) {
      bloque.antes = bloque.despues = LeerCampo(lista[i], kFechaCobro);
      if (HaDeCambiar(*cobro, hoy)) bloque.despues = EscribirFecha(HabilDeCobro(*cobro, hoy));
    }
    deAcreedor[bloque.acreedor].push_back(std::move(bloque));
  }
  std::map<std::size_t, std::string> fechas;
  for (const auto& [acreedor, bloques] : deAcreedor) {
    if (!MismoOrden(bloques)) continue;
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> cuantos;
    for (const CabeceraFechada& bloque : bloques)
      ++cuantos[{bloque.despues, bloque.cuenta}];
    for (const CabeceraFechada& bloque : bloques)
      if (bloque.antes != bloque.despues && cuantos[{bloque.despues, bloque.cuenta}] == 1)
        fechas.emplace(bloque.indice, bloque.despues);
  }
  return fechas;
}

}  // namespace remesa
