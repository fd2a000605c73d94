#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string_view>

#include "remesa/Campos.h"

// Un registro como lo leen las personas. Los datos vienen de fuera: todo es texto sin marcas. Lo que no se
// entiende como lo que su campo dice que es (un importe con letras, un día que no existe) sale tal como está
// y entre « », nunca como un número.

namespace principal {

/// Las columnas en que se reparte cualquier registro, en su orden.
enum class Columna : std::uint8_t {
  Numero,
  Tipo,
  Nombre,
  Importe,
  Cuenta,
  Referencia,
  Mandato,
  TipoAdeudo,
  Fecha,
  Concepto,
};
inline constexpr int kColumnasRegistro = 10;

/// Título para la cabecera: "Importe".
QString TituloColumna(Columna columna);
/// Qué pone en ella cada registro, en una frase.
QString ExplicacionColumna(Columna columna);
/// Los números se alinean por su último carácter.
constexpr bool VaALaDerecha(Columna columna) {
  return columna == Columna::Numero || columna == Columna::Importe;
}

/// Qué es el registro: "Adeudo", "Total general", "Adeudo devuelto"; nunca vacío.
QString TipoRegistro(std::string_view registro);

/// Lo que el registro tiene en esa columna, o nada. Importes sin el signo del euro. `numero`, el del
/// registro, desde 1.
QString TextoCelda(std::string_view registro, std::size_t numero, Columna columna);
/// Las celdas de todas las columnas.
QStringList TextosCeldas(std::string_view registro, std::size_t numero);

/// Campo del que sale la celda (el primero, si son dos); nullptr si de ninguno.
const remesa::Campo* CampoDe(std::string_view registro, Columna columna);
/// Columna en que se ve esa posición (desde 1) del registro, o -1.
int ColumnaDePosicion(std::string_view registro, int posicion);

/// Valor de un campo: "52,10 €", "01/12/2026", "ES95 2100…"; los demás, sin blancos a los lados.
QString ValorEnPalabras(std::string_view registro, const remesa::Campo& campo);

/// El registro en una línea: "Núria Núñez · 52,10 € · ES95 … · Cuota de noviembre".
QString EnPalabras(std::string_view registro);

}  // namespace principal
