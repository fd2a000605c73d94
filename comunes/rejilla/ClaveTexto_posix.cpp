#include "comunes/rejilla/ClaveTexto.h"

namespace comunes {

ClaveTexto ClavesTexto::de(const QString& texto) const {
  return orden_.sortKey(texto);
}

}  // namespace comunes
