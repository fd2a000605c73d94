#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "remesa/Campos.h"

namespace iso20022 {

/// Lo que impide pasar una remesa a XML, o lo que al hacerlo se cambia o se queda fuera. El texto del código
/// ("E506", "A501") no cambia nunca de significado; los nuevos se añaden al final de los suyos.
enum class CodigoNota : std::uint8_t {
  NoEsRemesa,
  FaltaPresentador,
  OtroPresentador01,
  Identificador,
  Fecha,
  Iban,
  Ccc,
  Version,
  EsquemasMezclados,
  Vacio,
  TipoAdeudo,
  Importe,
  Barras,
  AdeudoSinCabecera,
  NumeroDato,
  ReferenciasDistintas,
  OpcionalRepetido,
  EntidadOriginal,
  SinAdeudos,
  DemasiadosMensajes,
  Caracteres,
  CccConvertido,
  Balanza,
  IdentificacionSinCodigo,
  IdentificacionBic,
  IdentificacionEmisor,
  IdentificacionTipo,
  CodigoProposito,
  Provincia,
  CuentaConCambio,
  OpcionalVacio,
  Libre,
  RegistroDesconocido,
  VariosAcreedores,
  SinBic,
  SinDireccion,
  DireccionNoEscrita,
  DireccionSinPartir,
  BicNoValido,
  SinReferencia,
  OtroPresentador,
  SoloLF,
  AdeudosTrasTotales,
  RegistroLargo,
  ClaseCuenta,
  BicAcreedor,
};

/// "E506": la letra dice el nivel.
std::string_view TextoCodigo(CodigoNota codigo);
bool EsError(CodigoNota codigo);

/// Hasta dónde llega un error: el de un adeudo, o el de su 02, se salva dejándolos fuera.
enum class Alcance : std::uint8_t { Remesa, Bloque, Adeudo };

/// Una nota, como datos. Los textos son bytes (Windows-1252).
struct Nota {
  CodigoNota codigo{};
  Alcance alcance = Alcance::Adeudo;
  std::size_t fuente = 0;      ///< Cuál de las remesas, desde 0.
  std::uint64_t registro = 0;  ///< Desde 1, como en `q19 comprobar`; 0, la remesa entera.
  std::uint64_t fila = 0;      ///< El registro de la lista que lo contiene, desde 1.
  remesa::ClaseRegistro clase = remesa::ClaseRegistro::Desconocido;
  remesa::Posiciones donde{0, 0};
  const remesa::Campo* campo = nullptr;
  std::string valor = {};    ///< Lo que dice la remesa; en un resumen, ejemplos.
  std::string cambio = {};   ///< Lo que se escribe en su lugar, o lo que se esperaba.
  std::uint64_t cuenta = 0;  ///< Cuántos, en un resumen; el otro registro, en un repetido.
  std::string deudor = {};
  std::string referencia = {};
};

using ReceptorNotas = std::function<void(Nota&&)>;

}  // namespace iso20022
