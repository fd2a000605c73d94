#include "comunes/plataforma/Explorar.h"

namespace comunes {

bool DialogoDelSistema() {
  return false;
}

}  // namespace comunes
