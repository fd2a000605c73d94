#include "remesa/ReferenciasCambiadas.h"

#include "remesa/CaracteresSEPA.h"
#include "remesa/Huella.h"

namespace remesa {
namespace {

std::uint64_t HuellaAcreedor(std::string_view cabecera) {
  return Huella(Recortar(LeerCampo(cabecera, kIdentificadorAcreedor)));
}

}  // namespace

std::uint64_t ReferenciasCambiadas::clave(std::uint64_t acreedor, std::string_view registro,
                                          Posiciones donde) {
  const std::string cambiada = EquivalenteSEPA(LeerCampo(registro, donde));
  const std::uint64_t huella = Mezclar(acreedor, Huella(Recortar(cambiada)));
  return Mezclar(huella, static_cast<std::uint64_t>(donde.desde));
}

ReferenciasCambiadas::ReferenciasCambiadas(const ListaRegistros& lista) {
  std::uint64_t acreedor = 0;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    const ClaseRegistro clase = Clase(lista[i]);
    if (clase == ClaseRegistro::Acreedor) acreedor = HuellaAcreedor(lista[i]);
    if (clase != ClaseRegistro::Adeudo) continue;
    for (const Posiciones donde : {kReferenciaAdeudo, kReferenciaMandato}) {
      const std::uint64_t original = Huella(Recortar(LeerCampo(lista[i], donde))) | 1;
      const auto [suya, nueva] = originales_.emplace(clave(acreedor, lista[i], donde), original);
      if (!nueva && suya->second != original) suya->second = 0;
    }
  }
}

bool ReferenciasCambiadas::choca(std::string_view cabecera, std::string_view registro,
                                 Posiciones donde) const {
  const auto suya = originales_.find(clave(HuellaAcreedor(cabecera), registro, donde));
  return suya != originales_.end() && suya->second == 0;
}

}  // namespace remesa
