#pragma once

#include <QString>
#include <cstdint>
#include <string_view>

namespace iso20022 {

/// Lo que un mensaje dice y sus registros no pueden decir. El texto del código ("A601") no cambia nunca de
/// significado; los nuevos se añaden al final.
enum class CodigoAviso : std::uint8_t {
  SinSitio,
  Cortado,
  Caracteres,
  Importe,
  Repetido,
  Recuento,
  OtroValor,
  Fecha,
  CambioVacio,
};

std::string_view TextoCodigo(CodigoAviso codigo);

/// Un aviso de la lectura de un mensaje, como datos.
struct AvisoLectura {
  CodigoAviso codigo{};
  QString elemento;  ///< Su ruta desde GrpHdr o PmtInf.
  QString valor;     ///< Lo que dice el mensaje.
  QString cambio;    ///< Lo que queda de él, o lo que se esperaba.
  std::size_t linea = 0;
  std::uint64_t adeudo = 0;  ///< Desde 1, en el orden del mensaje; 0 si no es de uno.
  QString referencia = {};   ///< La de ese adeudo, si ya se leyó.
};

}  // namespace iso20022
