#include "remesa/BloquesListas.h"

#include <numeric>

#include "remesa/Campos.h"
#include "remesa/EscrituraBloques.h"

namespace remesa {
namespace {

/// Compone una lista con registros de otra y totales nuevos entre ellos.
class Composicion {
 public:
  Composicion(const ListaRegistros& lista, const AlPasar& alPasar) : lista_(lista), alPasar_(alPasar) {
    procedencia_.reserve(lista.size() + 8);
  }

  void poner(std::size_t i) {
    anadir(totales_.dar(lista_[i]));
    procedencia_.push_back(i);
    if (alPasar_) alPasar_(lista_[i]);
  }

  Procedencia terminar(ListaRegistros& destino) {
    anadir(totales_.terminar());
    auto datos = std::make_shared_for_overwrite<char[]>(nuevos_.size());
    nuevos_.copy(datos.get(), nuevos_.size());
    std::vector<std::string_view> registros;
    for (std::size_t p = 0; p < nuevos_.size(); p += kLongitudRegistro)
      registros.emplace_back(datos.get() + p, kLongitudRegistro);
    ListaRegistros compuesta = lista_;
    compuesta.anadirBloque({std::move(datos), nuevos_.size()}, std::move(registros));
    compuesta.elegir(procedencia_);
    destino = std::move(compuesta);
    return std::move(procedencia_);
  }

 private:
  void anadir(std::span<const std::string> totales) {
    for (const std::string& registro : totales) {
      procedencia_.push_back(lista_.size() + nuevos_.size() / kLongitudRegistro);
      nuevos_ += registro;
      if (alPasar_) alPasar_(registro);
    }
  }

  const ListaRegistros& lista_;
  const AlPasar& alPasar_;
  TotalesBloques totales_;
  Procedencia procedencia_;
  std::string nuevos_;
};

void Repartir(RepartoBloques& reparto, const ListaRegistros& lista, std::size_t desde) {
  reparto.empezarFichero();
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    reparto.dar(lista[i], desde + i);
  }
  reparto.terminarFichero(desde + lista.size());
}

}  // namespace

Reunion ReunirBloques(ListaRegistros& acumulado, const ListaRegistros& previo, const AlPasar& alPasar) {
  const ListaRegistros* const uno = &previo;
  return ReunirVarios(acumulado, {&uno, 1}, alPasar);
}

Reunion ReunirVarios(ListaRegistros& acumulado, std::span<const ListaRegistros* const> previos,
                     const AlPasar& alPasar) {
  RepartoBloques reparto;
  Repartir(reparto, acumulado, 0);
  if (const std::size_t cual = reparto.indice().avisos().sinDueno) return {SinDueno{false, cual}, {}};
  ListaRegistros todos = acumulado;
  std::vector<std::size_t> indices;
  for (const ListaRegistros* previo : previos) {
    if (previo->empty()) continue;
    Repartir(reparto, *previo, todos.size());
    if (const std::size_t cual = reparto.indice().avisos().sinDueno) return {SinDueno{true, cual}, {}};
    indices.resize(previo->size());
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    todos.anadirDe(*previo, indices);
  }
  reparto.ordenar();

  FuenteLista fuente(todos);
  Composicion composicion(todos, alPasar);
  if (const auto presentador = reparto.presentador()) composicion.poner(*presentador);
  for (std::size_t b = 0; b < reparto.bloques(); ++b) {
    composicion.poner(reparto.cabecera(b));
    for (std::size_t a = 0; a < reparto.adeudos(b); ++a)
      for (const std::size_t i : fuente.indices(reparto.adeudo(b, a)))
        composicion.poner(i);
  }
  return {std::nullopt, composicion.terminar(acumulado)};
}

Procedencia RehacerTotales(ListaRegistros& acumulado, const AlPasar& alPasar) {
  Composicion composicion(acumulado, alPasar);
  const auto presentador = std::ranges::find(acumulado, CodigoRegistro::Presentador, Codigo);
  if (presentador != acumulado.end())
    composicion.poner(static_cast<std::size_t>(presentador - acumulado.begin()));
  std::optional<std::size_t> cabecera;  // la que espera a su primer "03"
  for (std::size_t i = 0; i < acumulado.size(); ++i) {
    acumulado.anticipar(i);
    switch (Codigo(acumulado[i])) {
      case CodigoRegistro::Acreedor:
        cabecera = i;
        break;
      case CodigoRegistro::Adeudo:
        if (cabecera) composicion.poner(*cabecera);
        cabecera.reset();
        composicion.poner(i);
        break;
      default:
        break;
    }
  }
  return composicion.terminar(acumulado);
}

}  // namespace remesa
