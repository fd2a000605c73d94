#include <vector>

#include "remesa/Campos.h"
#include "remesa/Fusion.h"

namespace remesa {
namespace {

// false si el registro ya tiene escrito lo que se le iba a escribir.
bool Cambia(std::string_view registro, std::span<const Cambio> cambios, std::string& nuevo) {
  if (cambios.empty()) return false;
  nuevo = registro;
  Aplicar(nuevo, cambios);
  return nuevo != registro;
}

}  // namespace

void Importar(ListaRegistros& acumulado, const ListaRegistros& previo) {
  const bool primera = acumulado.empty();
  std::vector<std::size_t> entran;
  entran.reserve(previo.size());
  for (std::size_t i = 0; i < previo.size(); ++i) {
    previo.anticipar(i);
    if (EntraEnImportacion(previo[i], primera)) entran.push_back(i);
  }
  QuitarTotales(acumulado);
  acumulado.anadirDe(previo, entran);
}

void QuitarTotales(ListaRegistros& acumulado) {
  std::vector<std::size_t> sobran;
  for (std::size_t i = 0; i < acumulado.size(); ++i) {
    acumulado.anticipar(i);
    if (EsDeTotales(Codigo(acumulado[i]))) sobran.push_back(i);
  }
  acumulado.quitar(sobran);
}

Totales RecalcularTotales(ListaRegistros& acumulado,
                          const std::function<void(std::string_view registro)>& alPasar) {
  Recuento recuento;
  std::string nuevo;  // cppcheck-suppress variableScope ; fuera del bucle, aprovecha su memoria
  for (std::size_t i = 0; i < acumulado.size(); ++i) {
    acumulado.anticipar(i);
    if (Cambia(acumulado[i], recuento.contar(acumulado[i]), nuevo)) acumulado.sustituir(i, nuevo);
    if (alPasar) alPasar(acumulado[i]);
  }
  return recuento.totales();
}

}  // namespace remesa
