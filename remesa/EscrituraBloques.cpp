#include "remesa/EscrituraBloques.h"

#include "remesa/TotalesBloques.h"

namespace remesa {

void FuenteLista::adeudo(const RepartoBloques::Adeudo& adeudo, const Receptor& recibir) {
  for (const std::size_t i : indices(adeudo))
    recibir(lista_[i]);
}

const std::vector<std::size_t>& FuenteLista::indices(const RepartoBloques::Adeudo& adeudo) {
  indices_.clear();
  const auto tomar = [&](RepartoBloques::Tramo tramo) {
    for (std::size_t i = tramo.desde; i < tramo.hasta; ++i)
      if (Codigo(lista_[i]) == CodigoRegistro::Adeudo) indices_.push_back(i);
  };
  tomar(adeudo.donde);
  std::ranges::for_each(adeudo.detras, tomar);
  adeudo.ordenar(indices_, [&](std::size_t i) { return lista_[i]; });
  return indices_;
}

std::vector<Rebanada> Enteros(const RepartoBloques& reparto) {
  std::vector<Rebanada> rebanadas;
  for (std::size_t b = 0; b < reparto.bloques(); ++b)
    rebanadas.push_back({b, 0, reparto.adeudos(b)});
  return rebanadas;
}

SumaNorma EscribirBloques(const RepartoBloques& reparto, std::span<const Rebanada> rebanadas,
                          FuenteRegistros& fuente, const std::optional<Renovacion>& renovacion,
                          const std::function<void(std::string_view bytes)>& escribir) {
  TotalesBloques totales;
  std::string completo;
  const auto escribirRegistro = [&](std::string_view registro) {
    escribir(ComoSeGuarda(registro, completo));
    escribir("\r\n");
  };
  const auto poner = [&](std::string_view registro) {
    for (const std::string& total : totales.dar(registro))
      escribirRegistro(total);
    escribirRegistro(registro);
  };
  if (const auto presentador = reparto.presentador()) {
    std::string registro(fuente.registro(*presentador));
    AjustarLongitud(registro);
    if (renovacion) RenovarIdentificacion(registro, renovacion->ahora, renovacion->parte);
    poner(registro);
  }
  const FuenteRegistros::Receptor recibir = poner;
  for (const Rebanada& rebanada : rebanadas) {
    // Contar la cabecera escribe lo que cierra el bloque anterior: la fuente no se toca mientras.
    poner(std::string(fuente.registro(reparto.cabecera(rebanada.bloque))));
    for (std::size_t a = rebanada.desde; a < rebanada.hasta; ++a)
      fuente.adeudo(reparto.adeudo(rebanada.bloque, a), recibir);
  }
  for (const std::string& total : totales.terminar())
    escribirRegistro(total);
  return totales.general();
}

}  // namespace remesa
