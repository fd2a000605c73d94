#pragma once

#include <map>
#include <set>

#include "devoluciones/Lote.h"

namespace devoluciones {

enum class EstadoCotejo : std::uint8_t {
  Hallada,  ///< Se sabe cuál es en las remesas. De un bloque entero, sus adeudos.
  Ambigua,  ///< Hay más de un adeudo que puede ser.
  NoHallada,
};

/// Un adeudo de una remesa presentada, con sus registros opcionales detrás.
struct Presentado {
  std::uint32_t remesa = 0;    ///< En Cotejo::remesas().
  std::uint32_t cabecera = 0;  ///< Su 02, en Cotejo::cabecera().
  std::uint64_t registro = 0;  ///< El de su 003 en su fichero, desde 1.
  std::vector<std::string> registros;
  /// El bloque en que va en un XML; vacío si no hace falta saberlo.
  std::string bloque = {};
};

struct RemesaPresentada {
  std::filesystem::path ruta;
  std::string presentador;     ///< Su 01, o vacío.
  std::string identificacion;  ///< Sin blancos a los lados y en el juego de SEPA.
  bool xml = false;
};

/// Busca de qué adeudo presentado es cada devolución de un lote, que no ha de cambiar mientras. Por la
/// identificación del fichero original, si se sabe y está entre las remesas; y en todo caso por referencia,
/// mandato e importe: los que la devolución traiga, y al menos una de las dos referencias; en el juego de
/// SEPA, que es como van en un XML. Nunca es de otro acreedor. Si aún son varios, deciden las fechas y
/// la cuenta. Una remesa y el XML en que se envió son la misma.
class Cotejo {
 public:
  explicit Cotejo(const Lote& lote);

  /// Lee una remesa. Lanza como RecorrerRemesa, y entonces no toma nada de ella. Da false si es copia de otra
  /// ya leída.
  bool buscarEn(const std::filesystem::path& remesa, const remesa::AvanceLectura& avance = {});

  struct Carpeta {
    std::size_t leidas = 0;
    std::vector<std::filesystem::path> copias;                          ///< De otra ya leída.
    std::vector<std::pair<std::filesystem::path, std::string>> fallos;  ///< Y por qué no se pudieron leer.
  };
  /// Lee todas las remesas de una carpeta, sin entrar en las que tenga dentro; lo que no sea una remesa se
  /// salta. Lanza ErrorEjecucion si no se puede recorrer.
  Carpeta buscarEnCarpeta(const std::filesystem::path& carpeta, const remesa::AvanceLectura& avance = {});

  struct Hallazgo {
    EstadoCotejo estado = EstadoCotejo::NoHallada;
    std::vector<std::size_t> adeudos;  ///< Los que son, o los que pueden ser; índices de presentado().
  };
  /// Cuesta lo que decidirlo: quien lo quiera varias veces, que lo guarde.
  Hallazgo hallazgo(std::size_t devolucion) const;

  /// La devolución con lo que no traía y está en su adeudo, si se halló. Vale mientras el cotejo no cambie.
  Devolucion completada(std::size_t devolucion, const Hallazgo& hallazgo) const;

  const Presentado& presentado(std::size_t i) const { return presentados_[i]; }
  std::span<const RemesaPresentada> remesas() const { return remesas_; }
  const std::string& cabecera(std::size_t i) const { return cabeceras_[i]; }

 private:
  class Lector;
  struct Grupo {
    std::vector<std::size_t> candidatos;
    bool sobran = false;  ///< Hay más de los que se guardan.
  };
  void anadirClave(std::size_t devolucion);
  bool esDeSuAcreedor(const Devolucion& devolucion, std::size_t candidato) const;
  Hallazgo decidir(const Devolucion& devolucion, const Grupo& grupo) const;
  Hallazgo decidirEntero(const Devolucion& devolucion) const;
  bool cuadra(const Devolucion& d, std::span<const std::size_t> suyos) const;
  std::int64_t sumar(std::span<const std::size_t> adeudos) const;
  void quitarCopias(std::vector<std::size_t>& candidatos) const;
  void quitarOtraForma(std::vector<std::size_t>& deEntero) const;
  bool enOtraForma(std::size_t uno, std::size_t otro) const;
  std::string loQueSeConserva(std::size_t presentado) const;

  const Lote& lote_;
  std::map<std::string, std::size_t, std::less<>> claves_;
  std::set<unsigned> mascaras_;  // qué llevan las claves que hay
  std::vector<std::optional<std::size_t>> grupoDe_;
  std::vector<Grupo> grupos_;
  std::map<std::string, Grupo, std::less<>> enteros_;  // por identificación de fichero
  bool hayBloques_ = false;                            // alguna devolución es de un bloque entero
  std::vector<Presentado> presentados_;
  std::vector<RemesaPresentada> remesas_;
  std::vector<std::string> cabeceras_;
  std::set<std::uint64_t> leidas_;  // huellas
};

/// La identificación de un fichero como va en un mensaje: la de una remesa financiada pierde su "PRE".
std::string_view IdentificacionComparable(std::string_view identificacion);

}  // namespace devoluciones
