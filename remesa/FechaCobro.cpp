#include "remesa/FechaCobro.h"

#include <string>

namespace remesa {

std::vector<std::size_t> Cabeceras(const ListaRegistros& lista) {
  std::vector<std::size_t> cabeceras;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    if (Codigo(lista[i]) == CodigoRegistro::Acreedor) cabeceras.push_back(i);
  }
  return cabeceras;
}

void CambiarFechaCobro(ListaRegistros& lista, std::span<const std::size_t> cabeceras,
                       std::string_view fecha) {
  const auto poner = [&](std::size_t i, Posiciones donde) {
    std::string registro(lista[i]);
    AjustarLongitud(registro);
    EscribirCampo(registro, donde, fecha);
    lista.sustituir(i, registro);
  };
  for (const std::size_t cabecera : cabeceras) {
    poner(cabecera, kFechaCobro);
    for (std::size_t i = cabecera + 1; i < lista.size(); ++i) {
      const CodigoRegistro codigo = Codigo(lista[i]);
      if (codigo == CodigoRegistro::TotalesFecha) poner(i, kFecha04);
      if (codigo != CodigoRegistro::Adeudo && codigo != CodigoRegistro::Otro) break;
    }
  }
}

}  // namespace remesa
