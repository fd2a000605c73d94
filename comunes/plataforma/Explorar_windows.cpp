#include "comunes/plataforma/Explorar.h"

namespace comunes {

bool DialogoDelSistema() {
  return true;
}

}  // namespace comunes
