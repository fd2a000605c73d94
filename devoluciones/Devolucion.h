#pragma once

#include <QString>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "remesa/Calendario.h"

namespace devoluciones {

/// Un dato de una devolución: bytes que su lote mantiene vivos, sin blancos a los lados, o ausente si la
/// forma del fichero no lo trae. En Windows-1252 si vino en un registro y en UTF-8 si en un XML.
class Dato {
 public:
  constexpr Dato() = default;
  constexpr Dato(std::string_view bytes, bool utf8) : bytes_(bytes), presente_(true), utf8_(utf8) {}

  constexpr bool presente() const noexcept { return presente_; }
  /// Ausente o en blanco.
  constexpr bool vacio() const noexcept { return bytes_.empty(); }
  constexpr std::string_view bytes() const noexcept { return bytes_; }
  QString texto() const;
  /// Como iría en un registro (Windows-1252): lo que la página no tiene, como '?'.
  std::string enRegistro() const;

 private:
  std::string_view bytes_;
  bool presente_ = false;
  bool utf8_ = false;
};

/// Qué no se cobró.
enum class Alcance : std::uint8_t {
  Adeudo,
  Bloque,   ///< Un bloque rechazado entero, sin sus adeudos; lo nombra `bloqueOriginal`.
  Mensaje,  ///< Un fichero rechazado entero; lo nombra `ficheroOriginal`.
};

/// Un adeudo rechazado o devuelto, o todo un bloque. Lo que su fichero no trae está ausente.
struct Devolucion {
  Alcance alcance = Alcance::Adeudo;
  std::uint32_t fichero = 0;   ///< En Lote::ficheros().
  std::uint64_t registro = 0;  ///< Registro o, en un XML, línea en que está. Desde 1.
  Dato referencia, mandato, deudor, cuenta, concepto;
  Dato motivo;      ///< El código.
  Dato textoBanco;  ///< Lo que el banco añade al código.
  Dato acreedor;    ///< Su identificador.
  Dato nombreAcreedor, cuentaAcreedor;
  Dato ficheroOriginal;                        ///< La identificación de la remesa en que se presentó.
  Dato bloqueOriginal;                         ///< La de su bloque, en un XML.
  std::optional<std::int64_t> importe;         ///< Céntimos. De un bloque entero, su suma, si se dice.
  std::optional<std::int64_t> adeudos;         ///< Los de un bloque entero, si se dice.
  std::int64_t aparte = 0;                     ///< Otros del bloque, que vienen cada uno en su línea.
  std::optional<remesa::Dia> fechaCobro;       ///< En la que se cobró o iba a cobrarse.
  std::optional<remesa::Dia> fechaDevolucion;  ///< La del cargo al acreedor.
};

/// Suma de céntimos que se queda en el máximo: un XML puede traer importes de cualquier tamaño.
constexpr std::int64_t SumaAcotada(std::int64_t uno, std::int64_t otro) {
  std::int64_t suma = 0;
  return __builtin_add_overflow(uno, otro, &suma) ? std::numeric_limits<std::int64_t>::max() : suma;
}

/// "Referencia no dada" de los XML, que en un registro va en blanco.
inline constexpr std::string_view kSinReferencia = "NOTPROVIDED";

}  // namespace devoluciones
