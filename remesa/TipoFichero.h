#pragma once

#include <cstdint>
#include <string_view>

namespace remesa {

/// Qué fichero de los cuadernos bancarios es, por su primer registro.
enum class TipoFichero : std::uint8_t {
  Presentacion,            ///< Remesa de adeudos básicos: versión 19143 y códigos 01 a 05.
  Rechazos,                ///< Adeudos rechazados antes del cobro: 19143, códigos 11 a 15.
  Devoluciones,            ///< Adeudos devueltos después del cobro: 19143, códigos 21 a 25.
  SolicitudesCancelacion,  ///< Lo que el acreedor pide revocar o cancelar: 19143, códigos 31 a 35.
  PlazoCorto,              ///< Adeudos de plazo corto, 19154, hoy parte de los básicos.
  Empresas,                ///< Adeudos entre empresas: 19445.
  Transferencias,          ///< Órdenes del Cuaderno 34: empieza por "01ORD34".
  Anterior,                ///< El Cuaderno 19 de antes de SEPA: empieza por "5180".
  Ajeno,                   ///< Otra cosa.
};

/// Basta con los 7 primeros bytes del fichero. Sin versión (los registros de totales no la llevan) es Ajeno.
/// Qué se admite como remesa no lo decide esto, sino ComprobarCabeza, que mira menos.
TipoFichero TipoDe(std::string_view primerRegistro);

/// Rechazos o devoluciones: lo que lee `devoluciones/`.
constexpr bool EsDeDevoluciones(TipoFichero tipo) {
  return tipo == TipoFichero::Rechazos || tipo == TipoFichero::Devoluciones;
}

/// Para las personas, en UTF-8 y para seguir a «es»: "una remesa de adeudos"; nunca vacío.
std::string_view NombreTipo(TipoFichero tipo);

}  // namespace remesa
