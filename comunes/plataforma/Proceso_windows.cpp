#include "comunes/plataforma/Proceso.h"

namespace comunes {

// Un fichero no comparte números con las salidas, ni hay señales que maten al proceso.
void PrepararSalidas() {}

}  // namespace comunes
