#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/TotalesNorma.h"

namespace remesa {

/// Los registros de totales de una remesa por bloques, hechos de nuevo: blancos fuera de sus campos, el
/// acreedor y la fecha de su cabecera y las sumas de la norma, sin más límite que el ancho de sus campos.
/// Los 04, 05 y 99 que ya hubiera no se le dan.
class TotalesBloques {
 public:
  /// Los que van delante de `registro`, que se cuenta: al abrirse un bloque, el 04 del anterior y, si es de
  /// otro acreedor, su 05. Valen hasta la siguiente llamada. Lanza ErrorEjecucion 6 si uno no cabe.
  std::span<const std::string> dar(std::string_view registro);
  /// Los que van al final. Ninguno si no hubo registros. Lanza como `dar`.
  std::span<const std::string> terminar();

  /// Lo que suman todos; el importe en céntimos. Completo tras `terminar`.
  const SumaNorma& general() const noexcept { return general_; }

 private:
  void cerrarBloque();
  void cerrarAcreedor();
  SumaNorma anadir(std::string registro, ClaseRegistro clase);

  TotalesNorma norma_;
  SumaNorma general_;
  std::vector<std::string> nuevos_;
  std::string acreedor_, fecha_;  // de la cabecera en curso
  std::int64_t importe_ = 0;      // del bloque en curso
  bool hayBloque_ = false;
  bool hayAcreedor_ = false;
  bool hayRegistros_ = false;
};

}  // namespace remesa
