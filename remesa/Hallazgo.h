#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "remesa/Campos.h"

namespace remesa {

/// Lo que una comprobación puede encontrar. El texto del código ("E304", "A402") no cambia nunca de
/// significado; los nuevos se añaden al final de su centena: 1 forma del fichero, 2 registros y su orden,
/// 3 campos, 4 relación entre registros.
enum class CodigoHallazgo : std::uint8_t {
  Longitud,
  SoloLF,
  SinRegistros,
  NoEsRemesa,
  DeVuelta,
  Utf8,
  CodigoDesconocido,
  Version,
  NumeroDato,
  FueraDeOrden,
  FaltaRegistro,
  VersionesMezcladas,
  ObligatorioVacio,
  NoNumerico,
  FechaInexistente,
  ImporteCero,
  Iban,
  Ccc,
  IdentificadorAcreedor,
  FueraDeLista,
  Identificacion,
  SinAlinear,
  FueraDeSEPA,
  BicNoEspanol,
  IdentificacionFichero,
  FechaIdentificacion,
  Proposito,
  ReferenciasDistintas,
  OtraCabecera,
  TotalImportes,
  TotalAdeudos,
  TotalRegistros,
  Secuencia,
  OtraEntidad,
  SmndaConCuenta,
  NadaCambia,
  MismoTitular,
  BloqueRepetido,
  IdentificacionUsada,
  MarcaDeBytes,
  SoloCR,
  FinesMezclados,
  SinUltimoFin,
  EntreEmpresas,
  RegistroSinUso,
  OpcionalVacio,
  Caracteres,
  Direccion,
  LibreConDatos,
  Bic,
  FechaAntigua,
  PaisIncorporado,
  DigitosCcc,
  CuentaNacional,
  BicDeOtroPais,
  FaltaDireccion,
  PropositoRaro,
  NumeroFiscal,
  OtroBanco,
  SinOrdenar,
  ReferenciaRepetida,
  CobroDoble,
  MandatoDosCuentas,
  FirmaPosterior,
  Frst,
  CobroPasado,
  CobroFinDeSemana,
  CobroFestivo,
  CobroHoy,
  FirmaFutura,
  CreacionFutura,
  CobroLejano,
  FirmaCaducada,
  EntidadReceptora,
  CuentaPropia,
  DosMandatos,
  YaEnviado,
  CobroCercano,
  MandatoUnico,
  TrasUltimo,
  YaHuboPrimero,
  MandatoSinUso,
  CuentaCambiada,
  YaDevuelto,
  YaGuardado,
};

/// Todos, en el orden de sus textos.
std::span<const CodigoHallazgo> CodigosHallazgo();

/// "E304": la letra dice el nivel.
std::string_view TextoCodigo(CodigoHallazgo codigo);

/// Error: el banco lo rechazará o se perderá algo. Lo demás son avisos.
bool EsError(CodigoHallazgo codigo);

/// Lo que se sabe de algo que se envió antes, para decirlo. Los textos, en UTF-8.
struct EnviadoAntes {
  std::string fichero;         ///< Su ruta.
  std::string fecha = {};      ///< AAAAMMDD: la de cobro o, de un fichero entero, la de creación.
  std::uint64_t registro = 0;  ///< Desde 1.
  std::string vuelta = {};  ///< Cómo volvió: "devuelto el 03/12/2026, motivo AM04 (…)"; vacío si no consta.
};

/// Un hallazgo, como datos. Los textos son bytes del fichero (Windows-1252).
struct Hallazgo {
  CodigoHallazgo codigo{};
  std::uint64_t registro = 0;  ///< Desde 1; 0, el fichero entero. Una línea acabada en LF es un registro.
  std::uint64_t fila = 0;      ///< El registro del programa que lo contiene: no separa los LF sueltos.
  ClaseRegistro clase = ClaseRegistro::Desconocido;
  Posiciones donde{0, 0};        ///< 0 y 0 si no procede.
  const Campo* campo = nullptr;  ///< De la tabla de campos; nullptr si no es de un campo.
  std::string valor = {};        ///< Lo que dice el fichero, sin los blancos de los lados.
  std::string esperado = {};     ///< El dato o los datos que valdrían; vacío si no se pueden enumerar.
  std::uint64_t otro = 0;        ///< El otro registro implicado (un repetido), desde 1; o cuántos.
  std::string deudor = {};
  std::string referencia = {};
  std::shared_ptr<const EnviadoAntes> antes = {};  ///< Solo de lo que se compara con otros ficheros.
};

using ReceptorHallazgos = std::function<void(Hallazgo&&)>;

}  // namespace remesa
