#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/Campos.h"

// Qué campo de un registro es qué elemento de un pain.008, en los dos sentidos. El único sitio donde aparece
// la ruta de un elemento. Fuente: guía de la AEB de adeudos en ISO 20022 y los esquemas pain.008.001.02 y
// .08.

namespace iso20022 {

enum class Version : std::uint8_t { V02, V08 };

/// El elemento del que cuelga una ruta: GrpHdr, PmtInf o DrctDbtTxInf.
enum class Grado : std::uint8_t { Mensaje, Bloque, Adeudo };
inline constexpr std::size_t kGrados = 3;

/// Cómo se pasa un campo a su elemento, o varios seguidos a los suyos.
enum class Forma : std::uint8_t {
  Texto,
  Referencia,        ///< Texto que no empieza ni acaba en "/" ni tiene "//".
  ReferenciaAdeudo,  ///< La misma; en blanco, NOTPROVIDED.
  Codigo,            ///< Cuatro letras o cifras.
  TipoAdeudo,
  Fecha,
  Importe,
  Cuenta,        ///< IBAN.
  CuentaDeudor,  ///< IBAN, o CCC si su letra es B.
  EntidadOriginal,
  // Varios elementos: kPartes dice cuáles.
  Presentador,
  Acreedor,
  Identificacion,  ///< Tipo, código y emisor.
  Direccion,       ///< D1, D2, D3 y país.
  Banco,           ///< BIC del deudor.
  BancoAcreedor,   ///< De los ajustes.
  // Sin campo.
  IdMensaje,  ///< De la identificación del fichero.
  FechaHora,  ///< De la fecha de creación y la identificación del fichero.
  IdBloque,
  Cuantos,
  Suma,
  Instrumento,  ///< CORE o B2B, según la versión del cuaderno.
  CambioMandato,
  Fijo,
};

/// Para qué vale una fila: la que solo se lee es otro sitio donde un mensaje puede traer lo mismo.
enum class Uso : std::uint8_t { Ambos, SoloLeer };

struct Correspondencia {
  Grado grado;
  std::string_view ruta;
  Forma forma;
  remesa::ClaseRegistro clase = remesa::ClaseRegistro::Desconocido;
  remesa::Posiciones donde{0, 0};  ///< El campo, o el primero de los suyos.
  bool exigido = false;            ///< En blanco no se puede cobrar.
  std::string_view fijo = {};
  Uso uso = Uso::Ambos;
};

// Las partes de lo que ocupa varios elementos, en el orden del esquema.

enum class ParteDireccion : std::uint8_t { Via, Numero, CP, Poblacion, Provincia, Pais, Linea, Linea2 };
enum class ParteIdentificacion : std::uint8_t {
  Bic,
  Organizacion,
  EmisorOrganizacion,
  Persona,
  EmisorPersona
};
enum class ParteBanco : std::uint8_t { Bic, Otro };
enum class ParteAcreedor : std::uint8_t { Identificador, Esquema };
enum class PartePresentador : std::uint8_t { Organizacion, EsquemaOrganizacion, Persona, EsquemaPersona };

/// Un elemento con valor propio.
struct Elemento {
  const Correspondencia* de;
  std::uint8_t parte;
  /// Nombres desde el grado, de la .08, separados por "/". Uno repetido lleva detrás "[2]".
  std::string ruta;
  Uso uso;
};

/// Lo que ocupa una correspondencia: tantos elementos desde `primero`, en los de su grado.
struct Entrada {
  const Correspondencia* de;
  std::size_t primero, elementos;
  std::span<const remesa::Campo> campos;  ///< El suyo y los que le siguen en su registro.
};

/// La tabla entera, hecha una vez.
class Tabla {
 public:
  static const Tabla& Unica();

  /// En el orden del esquema.
  std::span<const Elemento> elementos(Grado grado) const {
    return elementos_[static_cast<std::size_t>(grado)];
  }
  std::span<const Entrada> entradas(Grado grado) const { return entradas_[static_cast<std::size_t>(grado)]; }
  /// Las que salen, al escribir, de los registros de una clase.
  std::span<const Entrada> entradas(Grado grado, remesa::ClaseRegistro clase) const {
    return deClase_[static_cast<std::size_t>(grado)][static_cast<std::size_t>(clase)];
  }

 private:
  Tabla();
  std::vector<Elemento> elementos_[kGrados];
  std::vector<Entrada> entradas_[kGrados];
  std::vector<Entrada> deClase_[kGrados][static_cast<std::size_t>(remesa::ClaseRegistro::Desconocido) + 1];
};

/// El nombre de un elemento en una versión: la .02 llama de otro modo a dos.
std::string_view NombreEn(Version version, std::string_view nombre);

/// "urn:iso:std:iso:20022:tech:xsd:pain.008.001.08"
std::string_view Espacio(Version version);

inline constexpr std::string_view kSinDato = "NOTPROVIDED";
inline constexpr std::string_view kEsquema = "SEPA";
inline constexpr std::string_view kEsquemaBasico = "CORE";
inline constexpr std::string_view kEntreEmpresas = "B2B";
inline constexpr std::string_view kCambioDeCuenta = "SMNDA";

}  // namespace iso20022
