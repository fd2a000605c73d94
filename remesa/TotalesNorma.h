#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "remesa/Campos.h"

namespace remesa {

/// Lo que suman unos registros; el importe, en céntimos.
struct SumaNorma {
  std::int64_t importe = 0;
  std::int64_t adeudos = 0;
  std::int64_t registros = 0;
  void sumar(const SumaNorma& otra);
};

/// Un campo de un registro de totales y lo que la norma pide en él.
struct TotalDebido {
  Posiciones donde;
  std::int64_t valor;
};

/// Céntimos que dice el importe de un adeudo, leído como en el recálculo: 0 si no dice ninguno.
std::int64_t ImporteDe(std::string_view adeudo);

/// Los totales de la norma, registro a registro: cada 04, los de su bloque; cada 05, los de su acreedor; el
/// 99, los del fichero. Un registro de código desconocido cuenta donde cae. Es la única suma por bloques: la
/// usan las observaciones de la ventana, las comprobaciones y quien los escribe.
class TotalesNorma {
 public:
  /// Cuenta el registro. De uno de totales da lo que debe decir, siempre por este orden: importe, adeudos y
  /// registros (vale hasta el siguiente); de los demás, nada.
  std::span<const TotalDebido> dar(std::string_view registro, ClaseRegistro clase);

 private:
  std::span<const TotalDebido> deber(const SumaNorma& suma, Posiciones importe, Posiciones adeudos,
                                     Posiciones registros);

  SumaNorma bloque_, acreedor_, fichero_;
  std::array<TotalDebido, 3> debidos_{};
};

}  // namespace remesa
