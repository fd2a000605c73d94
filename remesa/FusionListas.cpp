#include <vector>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/Fusion.h"
#include "remesa/Observaciones.h"

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
    if (EsDeTotales(acumulado[i])) sobran.push_back(i);
  }
  acumulado.quitar(sobran);
}

Totales RecalcularTotales(ListaRegistros& acumulado, Resumen* resumen) {
  Recuento recuento;
  Resumidor resumidor;
  std::string nuevo;  // cppcheck-suppress variableScope ; fuera del bucle, aprovecha su memoria
  std::size_t i = 0;
  try {
    for (; i < acumulado.size(); ++i) {
      acumulado.anticipar(i);
      if (Cambia(acumulado[i], recuento.contar(acumulado[i]), nuevo)) acumulado.sustituir(i, nuevo);
      if (resumen) resumidor.dar(acumulado[i]);
    }
  } catch (const ficheros::ErrorEjecucion&) {
    if (resumen) {
      for (; i < acumulado.size(); ++i)
        resumidor.dar(acumulado[i]);
      *resumen = resumidor.resumen();
    }
    throw;
  }
  if (resumen) *resumen = resumidor.resumen();
  return recuento.totales();
}

}  // namespace remesa
