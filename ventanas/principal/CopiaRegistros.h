#pragma once

#include <cstddef>
#include <vector>

namespace principal {

class VistaRegistros;

enum class Copia {
  Texto,  ///< los registros enteros, uno por línea
  Tabla,  ///< sus columnas a la vista, con su título, para una hoja de cálculo
};

/// Los registros sobre los que se da una orden: los seleccionados o, si no hay ninguno, el actual.
std::vector<std::size_t> Senalados(const VistaRegistros& vista);

/// Copia los señalados al portapapeles y da cuántos son. Lanza comunes::TrabajoDetenido si el operador lo
/// detiene, y ErrorEjecucion 7 si es más de lo que el portapapeles debe llevar; entonces no cambia.
std::size_t Copiar(const VistaRegistros& vista, Copia como);

}  // namespace principal
