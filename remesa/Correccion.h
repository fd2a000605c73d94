#pragma once

#include <cstdint>
#include <string>

#include "remesa/Hallazgo.h"

namespace remesa {

/// Qué se le hace a un registro.
enum class CambioRegistro : std::uint8_t {
  Campo,  ///< Unas posiciones suyas cambian.
  Quita,  ///< Se elimina.
  Orden,  ///< Desde él, los adeudos de su bloque, o los registros de un adeudo, se ponen en su orden.
};

/// Lo que corrige un hallazgo que tiene una sola respuesta buena. Los textos son bytes del fichero
/// (Windows-1252), sin los blancos de detrás.
struct Correccion {
  CodigoHallazgo codigo{};
  CambioRegistro cambio = CambioRegistro::Campo;
  std::uint64_t registro = 0;  ///< Desde 1, en la remesa sin corregir.
  ClaseRegistro clase = ClaseRegistro::Desconocido;
  Posiciones donde{0, 0};  ///< 0 y 0 si no procede.
  const Campo* campo = nullptr;
  std::string antes = {};
  std::string despues = {};
  std::uint64_t movidos = 0;  ///< De un orden, los registros que cambian de sitio.
  bool arrastrada = false;    ///< La pide otra: sin ella, lo corregido dejaría un error nuevo.
  std::string deudor = {};
  std::string referencia = {};
};

/// Si un hallazgo de ese código puede tener corrección; no siempre la tiene.
bool PuedeCorregirse(CodigoHallazgo codigo);

}  // namespace remesa
