#include "comunes/impresion/Memoria.h"

namespace comunes {

// El montón de Windows no devuelve por su cuenta lo que se acaba de soltar.
void ConservarMemoriaDePagina() {}

}  // namespace comunes
