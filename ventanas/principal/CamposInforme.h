#pragma once

#include <QString>
#include <string_view>

#include "comunes/rejilla/Rejilla.h"
#include "remesa/Registro.h"

// Los campos de los registros como salen en el listado.

namespace principal {

inline constexpr auto kColumnasInforme = "Nombre#25;Importe#8>;IBAN#25=;Concepto#30;Referencia#10<";

QString TextoCampo(std::string_view registro, remesa::Posiciones donde);
/// AAAAMMDD como DD/MM/AAAA.
QString FechaCampo(std::string_view registro, remesa::Posiciones donde);
/// El IBAN con su prefijo y en grupos de cuatro.
QString CuentaCampo(std::string_view registro, remesa::Posiciones donde);
/// Céntimos como importe; cero, en blanco.
QString ImporteCampo(std::string_view registro, remesa::Posiciones donde);
QString NumeroCampo(std::string_view registro, remesa::Posiciones donde);

/// Pone un registro 03, completo a 600, en la fila.
void AnadirAdeudo(comunes::Rejilla& visor, int fila, std::string_view registro);

}  // namespace principal
