#include "ui_frmUnirQ19.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

void frmUnirQ19::imprimir() {
  if (ui_->Acumulado->lista().empty()) return;
}

}  // namespace principal
