#pragma once

#include "devoluciones/Cotejo.h"

namespace consola {

enum class FormaLista : std::uint8_t { Texto, Json, Csv };

/// Escribe en la salida las devoluciones del lote. `cotejo`, nulo si no se buscaron. false si no se pudo.
bool EscribirDevoluciones(const devoluciones::Lote& lote, const devoluciones::Cotejo* cotejo,
                          FormaLista forma);

}  // namespace consola
