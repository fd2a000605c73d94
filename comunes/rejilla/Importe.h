#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace comunes {

/// Los signos del usuario; quien lee o escribe muchas celdas los pide una vez.
struct SignosNumero {
  QString decimal;
  QString grupo;
  static SignosNumero DelUsuario();
};

/// Importe en coma fija con cuatro decimales.
using Diezmilesimas = std::int64_t;

/// Miles con su signo y dos decimales.
inline const QString kFormatoImporte = QLatin1String("#,##0.00");

/// Lee una celda y la redondea al céntimo, la mitad hacia fuera del cero. Vale lo escrito con los signos del
/// usuario ("1.234,50"), un número con punto ("1234.50") y lo que empiece por uno; lo demás es 0. Un punto
/// seguido de grupos de tres cifras exactas es de grupo si ese es el signo de grupo del usuario ("1.234" son
/// mil y pico). Lanza ErrorEjecucion 6 si no cabe.
Diezmilesimas LeerImporte(const QString& texto, const SignosNumero& signos = SignosNumero::DelUsuario());

/// Valor si todo el texto es un número, para ordenar; sin valor si no lo es.
std::optional<double> NumeroEntero(const QString& texto, const SignosNumero& signos);

/// Suma; lanza ErrorEjecucion 6 si no cabe.
Diezmilesimas Sumar(Diezmilesimas a, Diezmilesimas b);

/// Importe según un formato de "0", "#", "," y "." con texto fijo delante y detrás; el valor 0 da "" salvo
/// con `ceros`. Más de cuatro decimales van a 0.
QString FormatoCelda(Diezmilesimas valor, bool ceros = false, const QString& formato = kFormatoImporte,
                     const SignosNumero& signos = SignosNumero::DelUsuario());

/// Lo mismo para un texto numérico.
inline QString FormatoCelda(const QString& numero, bool ceros = false,
                            const QString& formato = kFormatoImporte) {
  return FormatoCelda(LeerImporte(numero), ceros, formato);
}

}  // namespace comunes
