#include "comunes/plataforma/DialogoSistema.h"

namespace comunes {

bool DialogoDelSistema() {
  return false;
}

}  // namespace comunes
