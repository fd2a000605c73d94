#pragma once

#include <span>
#include <string_view>

#include "remesa/TablaCampos.h"

namespace remesa {

/// Código de un registro: sus dos primeras posiciones, mire lo que mire el resto.
enum class CodigoRegistro : std::uint8_t {
  Presentador,       ///< "01"
  Acreedor,          ///< "02"
  Adeudo,            ///< "03", con cualquier número de dato.
  TotalesFecha,      ///< "04"
  TotalesAcreedor,   ///< "05"
  TotalesGenerales,  ///< "99"
  Otro,
};

CodigoRegistro Codigo(std::string_view registro);

/// "04", "05" y "99".
constexpr bool EsDeTotales(CodigoRegistro codigo) {
  return codigo == CodigoRegistro::TotalesFecha || codigo == CodigoRegistro::TotalesAcreedor ||
         codigo == CodigoRegistro::TotalesGenerales;
}

/// Registros del Cuaderno 19.14. Los "03" se distinguen por su número de dato.
enum class ClaseRegistro : std::uint8_t {
  Presentador,       ///< "01"
  Acreedor,          ///< "02"
  Adeudo,            ///< "03", dato "003"
  Ultimos,           ///< "03", dato "004": último acreedor y titular de la domiciliación
  Balanza,           ///< "03", dato "005": balanza de pagos
  Mandato,           ///< "03", dato "006": cambio del mandato
  TotalesFecha,      ///< "04"
  TotalesAcreedor,   ///< "05"
  TotalesGenerales,  ///< "99"
  Desconocido,       ///< Otro código, u otro número de dato en un "03".
};

/// Según el código y, en los "03", el número de dato.
ClaseRegistro Clase(std::string_view registro);

/// Campos en orden de posición, de la 1 a la 600 sin huecos; ninguno si es desconocido.
std::span<const Campo> CamposDe(ClaseRegistro clase);
/// Los de su clase o, si no la tiene, los de un registro de rechazos o de devoluciones.
std::span<const Campo> CamposDe(std::string_view registro);

/// Nombre del registro para las personas, en UTF-8 ("Adeudo individual"); vacío si es desconocido.
std::string_view NombreRegistro(ClaseRegistro clase);

/// Campo que cubre la posición (desde 1); nullptr si no hay o el registro es desconocido.
const Campo* CampoEn(std::string_view registro, int posicion);

/// Posiciones de un campo por su nombre; no compila si la tabla no lo tiene.
consteval Posiciones PosicionesDe(std::span<const Campo> campos, std::string_view nombre) {
  for (const Campo& campo : campos)
    if (campo.nombre == nombre) return campo.donde;
  throw "campo inexistente";
}

/// Versión de los cuadernos: el 19.14 (SEPA básico), el 19.15 (de plazo corto, que desde 2016 es el 19.14) y
/// el 19.44 (SEPA entre empresas), con los mismos campos.
inline constexpr std::string_view kVersion1914 = "19143";
inline constexpr std::string_view kVersion1915 = "19154";
inline constexpr std::string_view kVersion1944 = "19445";

// Campos que el propio programa lee o escribe.

inline constexpr Posiciones kCodigo = PosicionesDe(tabla::kPresentador, "Código de registro");
inline constexpr Posiciones kVersion = PosicionesDe(tabla::kPresentador, "Versión del cuaderno");
inline constexpr Posiciones kNumeroDato = PosicionesDe(tabla::kAdeudo, "Número de dato");
/// Última cifra de la versión y dos primeras del número de dato: "300" en un adeudo duplicable e imprimible.
inline constexpr Posiciones kMarcaAdeudo{kVersion.hasta, kNumeroDato.desde + 1};
/// Comienzo de los ficheros de la versión anterior del cuaderno ("5180").
inline constexpr Posiciones kCabezaAnterior{1, 4};

inline constexpr Posiciones kIdentificadorPresentador =
    PosicionesDe(tabla::kPresentador, "Identificador del presentador");
inline constexpr Posiciones kNombrePresentador = PosicionesDe(tabla::kPresentador, "Nombre del presentador");
inline constexpr Posiciones kFechaCreacion =
    PosicionesDe(tabla::kPresentador, "Fecha de creación del fichero");
inline constexpr Posiciones kIdentificacionFichero =
    PosicionesDe(tabla::kPresentador, "Identificación del fichero");

inline constexpr Posiciones kIdentificadorAcreedor =
    PosicionesDe(tabla::kAcreedor, "Identificador del acreedor");
inline constexpr Posiciones kFechaCobro = PosicionesDe(tabla::kAcreedor, "Fecha de cobro");
inline constexpr Posiciones kNombreAcreedor = PosicionesDe(tabla::kAcreedor, "Nombre del acreedor");
inline constexpr Posiciones kCuentaAcreedor = PosicionesDe(tabla::kAcreedor, "Cuenta del acreedor");

inline constexpr Posiciones kReferenciaAdeudo = PosicionesDe(tabla::kAdeudo, "Referencia del adeudo");
inline constexpr Posiciones kReferenciaMandato = PosicionesDe(tabla::kAdeudo, "Referencia única del mandato");
inline constexpr Posiciones kImporteAdeudo = PosicionesDe(tabla::kAdeudo, "Importe del adeudo");
inline constexpr Posiciones kNombreDeudor = PosicionesDe(tabla::kAdeudo, "Nombre del deudor");
/// Las dos referencias, que los registros opcionales comparten con su adeudo.
inline constexpr Posiciones kReferencias{kReferenciaAdeudo.desde, kReferenciaMandato.hasta};
inline constexpr Posiciones kTipoAdeudo = PosicionesDe(tabla::kAdeudo, "Tipo de adeudo");
/// Los dos que, con la cabecera, deciden en qué bloque de un XML va el adeudo.
inline constexpr Posiciones kTipoYCategoria{kTipoAdeudo.desde,
                                            PosicionesDe(tabla::kAdeudo, "Categoría de propósito").hasta};
inline constexpr Posiciones kFechaFirma = PosicionesDe(tabla::kAdeudo, "Fecha de firma del mandato");
inline constexpr Posiciones kEntidadDeudor = PosicionesDe(tabla::kAdeudo, "Entidad del deudor");
inline constexpr Posiciones kClaseCuenta =
    PosicionesDe(tabla::kAdeudo, "Identificador de la cuenta del deudor");
inline constexpr Posiciones kCuentaDeudor = PosicionesDe(tabla::kAdeudo, "Cuenta del deudor");
inline constexpr Posiciones kDireccionDeudor = PosicionesDe(tabla::kAdeudo, "Dirección del deudor (D1)");
inline constexpr Posiciones kCodigoDeudor =
    PosicionesDe(tabla::kAdeudo, "Identificación del deudor (código)");
inline constexpr Posiciones kConcepto = PosicionesDe(tabla::kAdeudo, "Concepto");

inline constexpr Posiciones kEntidadReceptora = PosicionesDe(tabla::kPresentador, "Entidad receptora");

inline constexpr Posiciones kNombreUltimoAcreedor =
    PosicionesDe(tabla::kUltimos, "Nombre del último acreedor");
inline constexpr Posiciones kCodigoUltimoAcreedor =
    PosicionesDe(tabla::kUltimos, "Identificación del último acreedor (código)");
inline constexpr Posiciones kNombreTitular =
    PosicionesDe(tabla::kUltimos, "Nombre del titular de la domiciliación");
inline constexpr Posiciones kCodigoTitular =
    PosicionesDe(tabla::kUltimos, "Identificación del titular (código)");

inline constexpr Posiciones kMandatoOriginal =
    PosicionesDe(tabla::kMandato, "Referencia única del mandato original");
inline constexpr Posiciones kNombreAcreedorOriginal =
    PosicionesDe(tabla::kMandato, "Nombre del acreedor original");
inline constexpr Posiciones kAcreedorOriginal =
    PosicionesDe(tabla::kMandato, "Identificador del acreedor original");
inline constexpr Posiciones kCuentaOriginal = PosicionesDe(tabla::kMandato, "Cuenta del deudor original");
inline constexpr Posiciones kEntidadOriginal = PosicionesDe(tabla::kMandato, "Entidad del deudor original");

inline constexpr Posiciones kAcreedor04 = PosicionesDe(tabla::kTotalesFecha, "Identificador del acreedor");
inline constexpr Posiciones kAcreedor05 = PosicionesDe(tabla::kTotalesAcreedor, "Identificador del acreedor");
inline constexpr Posiciones kFecha04 = PosicionesDe(tabla::kTotalesFecha, "Fecha de cobro");
inline constexpr Posiciones kImporte04 = PosicionesDe(tabla::kTotalesFecha, "Total de importes");
inline constexpr Posiciones kAdeudos04 = PosicionesDe(tabla::kTotalesFecha, "Número de adeudos");
inline constexpr Posiciones kRegistros04 = PosicionesDe(tabla::kTotalesFecha, "Total de registros");
inline constexpr Posiciones kImporte05 = PosicionesDe(tabla::kTotalesAcreedor, "Total de importes");
inline constexpr Posiciones kAdeudos05 = PosicionesDe(tabla::kTotalesAcreedor, "Número de adeudos");
inline constexpr Posiciones kRegistros05 = PosicionesDe(tabla::kTotalesAcreedor, "Total de registros");
inline constexpr Posiciones kImporte99 = PosicionesDe(tabla::kTotalesGenerales, "Total de importes general");
inline constexpr Posiciones kAdeudos99 = PosicionesDe(tabla::kTotalesGenerales, "Número de registros");
inline constexpr Posiciones kRegistros99 = PosicionesDe(tabla::kTotalesGenerales, "Total de registros");

// De los rechazos y las devoluciones; lo demás, en las posiciones de la presentación.

inline constexpr Posiciones kFicheroOriginal =
    PosicionesDe(tabla::kAcreedorRechazo, "Identificación del fichero original");
inline constexpr Posiciones kFechaDevolucion =
    PosicionesDe(tabla::kAcreedorDevolucion, "Fecha de devolución");
inline constexpr Posiciones kMotivo = PosicionesDe(tabla::kAdeudoRechazado, "Motivo");
inline constexpr Posiciones kFechaCobroOriginal =
    PosicionesDe(tabla::kAdeudoDevuelto, "Fecha de cobro original");

}  // namespace remesa
