#include <malloc.h>

#include "comunes/impresion/Memoria.h"

namespace comunes {

void ConservarMemoriaDePagina() {
  constexpr int kMega = 1024 * 1024;
  mallopt(M_MMAP_THRESHOLD, 32 * kMega);
  mallopt(M_TRIM_THRESHOLD, 64 * kMega);
}

}  // namespace comunes
