#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>

#include "remesa/ListaRegistros.h"

namespace principal {

/// Lo que lleva el listado de una remesa. Importes en céntimos.
struct RecuentoInforme {
  std::size_t adeudos = 0;
  std::int64_t importe = 0;
  std::size_t otros = 0;  ///< Registros 03 que se listan y no son adeudos: los opcionales 004, 005 y 006.
  std::int64_t importeOtros = 0;  ///< Lo que en ellos está donde los adeudos llevan el importe.
};

/// ¿Sale en el listado?
bool EntraEnInforme(std::string_view registro, bool soloAdeudos);

RecuentoInforme ContarInforme(const remesa::ListaRegistros& lista);

/// "Incluye 2 registros que no son adeudos (12.345,67 €). Adeudos: 45, 2.129,55 €"; vacío si todos lo son.
QString TextoRecuentoInforme(const RecuentoInforme& recuento);

}  // namespace principal
