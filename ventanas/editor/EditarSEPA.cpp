#include "ventanas/editor/EditarSEPA.h"

#include "ventanas/editor/EdiSEPA.h"

namespace editor {

bool EditarSEPA(ListaAcumulado& lista, int tipo, QWidget* propietario) {
  if (lista.actual < 0 || lista.actual >= static_cast<int>(lista.registros.size())) return false;
  EdiSEPA ventana(lista, tipo, propietario);
  ventana.exec();
  return ventana.Sustituido();
}

}  // namespace editor
