#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "remesa/Registro.h"

// La tabla de los registros del Cuaderno 19.14: el único sitio donde una posición aparece con su número.

namespace remesa {

/// Alfanumérico (a la izquierda, completado con blancos) o numérico (a la derecha, completado con ceros).
enum class TipoCampo : std::uint8_t { A, N };

/// Qué representa el campo, para quien tenga que comprobarlo o mostrarlo.
enum class ValorCampo : std::uint8_t {
  Libre,
  Codigo,
  Version,
  NumeroDato,
  Texto,
  Numero,
  Fecha,
  Importe,
  Identificador,  ///< Identificador de presentador o de acreedor (AT-02).
  Referencia,
  Cuenta,
  Bic,
  Pais,
  Direccion,
  TipoAdeudo,
  TipoIdentificacion,
  CodigoIdentificacion,
  EmisorIdentificacion,
  ClaseCuenta,
  ClasePago,
  EntidadOriginal,
  IdentificacionFichero,
  Categoria,
  Proposito,
};

struct Campo {
  std::string_view nombre;  ///< UTF-8, como en la norma.
  Posiciones donde;
  TipoCampo tipo;
  bool obligatorio;
  ValorCampo valor;
  constexpr bool libre() const { return valor == ValorCampo::Libre; }
};

namespace tabla {

inline constexpr TipoCampo A = TipoCampo::A;
inline constexpr TipoCampo N = TipoCampo::N;
inline constexpr bool OB = true;
inline constexpr bool OP = false;
using V = ValorCampo;

inline constexpr std::array kPresentador{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Identificador del presentador", {11, 45}, A, OB, V::Identificador},
    Campo{"Nombre del presentador", {46, 115}, A, OB, V::Texto},
    Campo{"Fecha de creación del fichero", {116, 123}, N, OB, V::Fecha},
    Campo{"Identificación del fichero", {124, 158}, A, OB, V::IdentificacionFichero},
    Campo{"Entidad receptora", {159, 162}, N, OB, V::Numero},
    Campo{"Oficina receptora", {163, 166}, N, OB, V::Numero},
    Campo{"Libre", {167, 600}, A, OB, V::Libre},
};

inline constexpr std::array kAcreedor{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Identificador del acreedor", {11, 45}, A, OB, V::Identificador},
    Campo{"Fecha de cobro", {46, 53}, N, OB, V::Fecha},
    Campo{"Nombre del acreedor", {54, 123}, A, OB, V::Texto},
    Campo{"Dirección del acreedor (D1)", {124, 173}, A, OP, V::Direccion},
    Campo{"Dirección del acreedor (D2)", {174, 223}, A, OP, V::Direccion},
    Campo{"Dirección del acreedor (D3)", {224, 263}, A, OP, V::Direccion},
    Campo{"País del acreedor", {264, 265}, A, OP, V::Pais},
    Campo{"Cuenta del acreedor", {266, 299}, A, OB, V::Cuenta},
    Campo{"Libre", {300, 600}, A, OB, V::Libre},
};

inline constexpr std::array kAdeudo{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Referencia del adeudo", {11, 45}, A, OB, V::Referencia},
    Campo{"Referencia única del mandato", {46, 80}, A, OB, V::Referencia},
    Campo{"Tipo de adeudo", {81, 84}, A, OB, V::TipoAdeudo},
    Campo{"Categoría de propósito", {85, 88}, A, OP, V::Categoria},
    Campo{"Importe del adeudo", {89, 99}, N, OB, V::Importe},
    Campo{"Fecha de firma del mandato", {100, 107}, N, OB, V::Fecha},
    Campo{"Entidad del deudor", {108, 118}, A, OB, V::Bic},
    Campo{"Nombre del deudor", {119, 188}, A, OB, V::Texto},
    Campo{"Dirección del deudor (D1)", {189, 238}, A, OP, V::Direccion},
    Campo{"Dirección del deudor (D2)", {239, 288}, A, OP, V::Direccion},
    Campo{"Dirección del deudor (D3)", {289, 328}, A, OP, V::Direccion},
    Campo{"País del deudor", {329, 330}, A, OP, V::Pais},
    Campo{"Tipo de identificación del deudor", {331, 331}, N, OP, V::TipoIdentificacion},
    Campo{"Identificación del deudor (código)", {332, 367}, A, OP, V::CodigoIdentificacion},
    Campo{"Identificación del deudor (emisor)", {368, 402}, A, OP, V::EmisorIdentificacion},
    Campo{"Identificador de la cuenta del deudor", {403, 403}, A, OB, V::ClaseCuenta},
    Campo{"Cuenta del deudor", {404, 437}, A, OB, V::Cuenta},
    Campo{"Propósito del adeudo", {438, 441}, A, OP, V::Proposito},
    Campo{"Concepto", {442, 581}, A, OP, V::Texto},
    Campo{"Libre", {582, 600}, A, OB, V::Libre},
};

inline constexpr std::array kUltimos{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Referencia del adeudo", {11, 45}, A, OB, V::Referencia},
    Campo{"Referencia única del mandato", {46, 80}, A, OB, V::Referencia},
    Campo{"Nombre del último acreedor", {81, 150}, A, OP, V::Texto},
    Campo{"Tipo de identificación del último acreedor", {151, 151}, N, OP, V::TipoIdentificacion},
    Campo{"Identificación del último acreedor (código)", {152, 187}, A, OP, V::CodigoIdentificacion},
    Campo{"Identificación del último acreedor (emisor)", {188, 222}, A, OP, V::EmisorIdentificacion},
    Campo{"Nombre del titular de la domiciliación", {223, 292}, A, OP, V::Texto},
    Campo{"Tipo de identificación del titular", {293, 293}, N, OP, V::TipoIdentificacion},
    Campo{"Identificación del titular (código)", {294, 329}, A, OP, V::CodigoIdentificacion},
    Campo{"Identificación del titular (emisor)", {330, 364}, A, OP, V::EmisorIdentificacion},
    Campo{"Libre", {365, 600}, A, OB, V::Libre},
};

inline constexpr std::array kBalanza{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Referencia del adeudo", {11, 45}, A, OB, V::Referencia},
    Campo{"Referencia única del mandato", {46, 80}, A, OB, V::Referencia},
    Campo{"Clase de pago", {81, 82}, N, OP, V::ClasePago},
    Campo{"Código estadístico", {83, 88}, N, OP, V::Numero},
    Campo{"País del deudor", {89, 90}, A, OP, V::Pais},
    Campo{"NIF del emisor", {91, 99}, A, OP, V::Texto},
    Campo{"NOF, número de operación financiera", {100, 107}, A, OP, V::Texto},
    Campo{"Código ISIN", {108, 119}, A, OP, V::Texto},
    Campo{"Libre", {120, 600}, A, OB, V::Libre},
};

inline constexpr std::array kMandato{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Versión del cuaderno", {3, 7}, N, OB, V::Version},
    Campo{"Número de dato", {8, 10}, N, OB, V::NumeroDato},
    Campo{"Referencia del adeudo", {11, 45}, A, OB, V::Referencia},
    Campo{"Referencia única del mandato", {46, 80}, A, OB, V::Referencia},
    Campo{"Referencia única del mandato original", {81, 115}, A, OP, V::Referencia},
    Campo{"Nombre del acreedor original", {116, 185}, A, OP, V::Texto},
    Campo{"Identificador del acreedor original", {186, 220}, A, OP, V::Identificador},
    Campo{"Cuenta del deudor original", {221, 254}, A, OP, V::Cuenta},
    Campo{"Entidad del deudor original", {255, 259}, A, OP, V::EntidadOriginal},
    Campo{"Libre", {260, 600}, A, OB, V::Libre},
};

inline constexpr std::array kTotalesFecha{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Identificador del acreedor", {3, 37}, A, OB, V::Identificador},
    Campo{"Fecha de cobro", {38, 45}, N, OB, V::Fecha},
    Campo{"Total de importes", {46, 62}, N, OB, V::Importe},
    Campo{"Número de adeudos", {63, 70}, N, OB, V::Numero},
    Campo{"Total de registros", {71, 80}, N, OB, V::Numero},
    Campo{"Libre", {81, 600}, A, OB, V::Libre},
};

inline constexpr std::array kTotalesAcreedor{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Identificador del acreedor", {3, 37}, A, OB, V::Identificador},
    Campo{"Total de importes", {38, 54}, N, OB, V::Importe},
    Campo{"Número de adeudos", {55, 62}, N, OB, V::Numero},
    Campo{"Total de registros", {63, 72}, N, OB, V::Numero},
    Campo{"Libre", {73, 600}, A, OB, V::Libre},
};

inline constexpr std::array kTotalesGenerales{
    Campo{"Código de registro", {1, 2}, N, OB, V::Codigo},
    Campo{"Total de importes general", {3, 19}, N, OB, V::Importe},
    Campo{"Número de registros", {20, 27}, N, OB, V::Numero},
    Campo{"Total de registros", {28, 37}, N, OB, V::Numero},
    Campo{"Libre", {38, 600}, A, OB, V::Libre},
};

// Los de rechazos (11 a 15) y devoluciones (21 a 25) son los de la presentación con algún campo más o con
// otro nombre: aquí solo está la diferencia.

/// Los campos de `base` y, en el sitio de su último, que es el libre, los de `cola`.
template <std::size_t N, std::size_t M>
consteval std::array<Campo, N - 1 + M> ConCola(const std::array<Campo, N>& base,
                                               const std::array<Campo, M>& cola) {
  std::array<Campo, N - 1 + M> campos{};
  for (std::size_t i = 0; i + 1 < N; ++i)
    campos[i] = base[i];
  for (std::size_t i = 0; i < M; ++i)
    campos[N - 1 + i] = cola[i];
  return campos;
}

template <std::size_t N>
consteval std::array<Campo, N> Renombrado(std::array<Campo, N> campos, std::string_view antes,
                                          std::string_view ahora) {
  for (Campo& campo : campos) {
    if (campo.nombre != antes) continue;
    campo.nombre = ahora;
    return campos;
  }
  throw "campo inexistente";
}

inline constexpr std::array kPresentadorRetorno =
    Renombrado(Renombrado(kPresentador, "Entidad receptora", "Entidad que informa"), "Oficina receptora",
               "Oficina que informa");

inline constexpr std::array kAcreedorRechazo = ConCola(
    kAcreedor, std::array{Campo{"Identificación del fichero original", {300, 334}, A, OB, V::Referencia},
                          Campo{"Libre", {335, 600}, A, OB, V::Libre}});
inline constexpr std::array kAcreedorDevolucion =
    Renombrado(kAcreedorRechazo, "Fecha de cobro", "Fecha de devolución");

inline constexpr std::array kAdeudoRechazado = ConCola(
    kAdeudo,
    std::array{Campo{"Motivo", {582, 585}, A, OB, V::Texto}, Campo{"Libre", {586, 600}, A, OB, V::Libre}});
inline constexpr std::array kAdeudoDevuelto =
    ConCola(kAdeudo, std::array{Campo{"Motivo", {582, 585}, A, OB, V::Texto},
                                Campo{"Fecha de cobro original", {586, 593}, N, OB, V::Fecha},
                                Campo{"Libre", {594, 600}, A, OB, V::Libre}});

inline constexpr std::array kTotalesFechaDevolucion =
    Renombrado(kTotalesFecha, "Fecha de cobro", "Fecha de devolución");

}  // namespace tabla
}  // namespace remesa
