#include "comunes/plataforma/DialogoSistema.h"

namespace comunes {

bool DialogoDelSistema() {
  return true;
}

}  // namespace comunes
