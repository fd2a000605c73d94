#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "remesa/Campos.h"
#include "remesa/Repetidos.h"

namespace anteriores {

/// Un campo sin los blancos de los lados.
std::string_view Valor(std::string_view registro, remesa::Posiciones donde);

/// Lo mismo, carácter a carácter, en el juego de SEPA: así van los textos en un XML y en lo que el banco
/// devuelve. Las huellas de aquí son de los textos así.
bool MismoTexto(std::string_view uno, std::string_view otro);

/// La huella de un acreedor; 0 si no se dice.
std::uint64_t HuellaAcreedor(std::string_view identificador);
/// La de una referencia; 0 si no se da.
std::uint64_t HuellaReferencia(std::string_view referencia);
/// Lo mismo con la identificación de un fichero, que en un XML puede ir sin "PRE".
std::uint64_t HuellaIdentificacion(std::string_view identificacion);
/// 32 bits de la de una cuenta, en cualquiera de sus formas; 0 si no se da.
std::uint32_t HuellaCuenta(std::string_view cuenta);

/// El día que hace un número de remesa::NumeroDeDia, que no sea 0.
remesa::Dia DiaDeNumero(std::uint16_t numero);

/// El bloque en que se está, según pasan los registros.
struct BloqueActual {
  std::string cabecera;        ///< Su 02, o "" entre dos bloques.
  std::uint64_t numero = 0;    ///< El del 02, desde 1.
  std::uint64_t acreedor = 0;  ///< Huella.
  std::uint16_t dia = 0;       ///< El de cobro; 0 si no se sabe.

  /// `numero`, el del registro, desde 1.
  void dar(std::string_view registro, std::uint64_t suNumero);
};

/// Por lo que se compara un adeudo.
struct ClavesAdeudo {
  std::uint64_t acreedor = 0, mandato = 0, referencia = 0;  ///< Huellas; 0, no se dice.
  std::uint64_t importe = 0;                                ///< Céntimos; 0 si no se entiende.
  std::uint32_t cuenta = 0, concepto = 0;                   ///< 32 bits de sus huellas.
  std::uint16_t dia = 0;
  remesa::TipoAdeudo tipo = remesa::TipoAdeudo::Otro;
};

/// De un registro 003 de 600 bytes.
ClavesAdeudo Claves(std::string_view adeudo, const BloqueActual& bloque);

/// Lo que distingue a una remesa de las demás.
struct ResumenRemesa {
  std::uint64_t contenido = 0;  ///< Huella de sus registros, con sus fines de línea o sin ellos.
  std::uint64_t registros = 0;
  std::uint64_t suma = 0;  ///< Huella de sus adeudos, en el orden que sea.
  std::uint64_t adeudos = 0;
  std::uint64_t importe = 0;         ///< Céntimos.
  std::uint64_t identificacion = 0;  ///< Huella de la del fichero.
  std::uint64_t presentada = 0;      ///< Huella de esa y de su presentador.
  std::uint64_t presentador = 0;     ///< El número de su 01; 0 si no lo tiene.

  void dar(std::string_view registro, std::uint64_t numero);
  void darAdeudo(const ClavesAdeudo& claves);
  /// El mismo fichero, byte a byte salvo sus fines de línea.
  bool mismoContenido(const ResumenRemesa& otra) const;
  bool mismosAdeudos(const ResumenRemesa& otra) const;
};

/// Hace el de una remesa según pasan sus registros.
class Resumidor {
 public:
  void dar(std::string_view registro, std::uint64_t numero);
  const ResumenRemesa& resumen() const noexcept { return resumen_; }
  const std::string& presentador() const noexcept { return presentador_; }  ///< El primer 01.

 private:
  ResumenRemesa resumen_;
  BloqueActual bloque_;
  std::string presentador_;
};

}  // namespace anteriores
