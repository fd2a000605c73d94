#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "remesa/IndiceBloques.h"

namespace remesa {

/// Con qué se ordenan los "03" de un adeudo: los bytes de su número de dato.
std::uint32_t OrdenDeDato(std::string_view registro03);

/// Dónde queda cada registro al reunir remesas por bloques. Recibe los registros en orden con su posición en
/// la entrada, que solo ha de crecer (bytes de unos ficheros seguidos, registros de una lista), y dice en qué
/// orden se escriben: el primer 01; los acreedores según aparecieron; los bloques de cada uno, por fecha y
/// luego según aparecieron; los adeudos de un bloque, por la referencia y luego según llegaron. Un adeudo es
/// un 003 y los 03 que le siguen hasta otro 003, por número de dato; los que hay entre un 02 y su primer 003
/// forman uno aparte. No guarda registros: de cada adeudo, 58 bytes.
class RepartoBloques {
 public:
  using Numero = IndiceBloques::Numero;
  /// El final no entra.
  struct Tramo {
    std::uint64_t desde = 0;
    std::uint64_t hasta = 0;
  };
  struct Adeudo {
    Tramo donde;                    ///< Dentro, los registros que no son 03 no cuentan.
    std::span<const Tramo> detras;  ///< Otros que han pasado a ser suyos.
    std::string_view referencia;
    bool suelto;    ///< No empieza por un 003.
    bool ordenado;  ///< Sus registros ya están por número de dato.

    /// Pone en su orden sus "03", dados en el que están; `bytes` da los de cada uno.
    template <class Registros, class Bytes>
    void ordenar(Registros& registros, Bytes bytes) const {
      if (ordenado && detras.empty()) return;
      std::ranges::stable_sort(registros.begin() + (suelto ? 0 : 1), registros.end(), {},
                               [&](const auto& registro) { return OrdenDeDato(bytes(registro)); });
    }
  };

  /// El orden de varios ficheros es el de haberlos reunido uno a uno.
  void empezarFichero();
  /// Lanza ErrorEjecucion 7 si son más adeudos de los que puede ordenar (2^32).
  void dar(std::string_view registro, std::uint64_t posicion);
  /// `posicion`, donde acaba el último registro.
  void terminarFichero(std::uint64_t posicion);
  /// No hay más ficheros.
  void ordenar();

  const IndiceBloques& indice() const noexcept { return indice_; }
  /// Posición del "01".
  std::optional<std::uint64_t> presentador() const noexcept { return presentador_; }

  // Tras ordenar. Bloques y adeudos, por su orden y desde 0.
  std::size_t bloques() const noexcept { return orden_.size(); }
  const IndiceBloques::Bloque& bloque(std::size_t b) const { return indice_.bloques()[orden_[b]]; }
  /// Posición de su "02".
  std::uint64_t cabecera(std::size_t b) const { return cabeceras_[orden_[b]]; }
  std::size_t adeudos(std::size_t b) const;
  Adeudo adeudo(std::size_t b, std::size_t cual) const;

 private:
  static constexpr std::size_t kReferencia = 35;

  // Todo en bytes: así caben 46 en 46.
  struct Entrada {
    std::array<char, kReferencia> referencia;
    std::array<unsigned char, 6> desde;
    std::array<unsigned char, 5> largo;  // y, en los bits altos, las marcas
  };
  /// Las entradas seguidas que son de un bloque.
  struct Racha {
    std::uint32_t primera;
    Numero bloque;
  };
  /// Lo que se ordena: ocho bytes de la referencia y la entrada.
  struct Puesto {
    std::uint32_t alta, baja, entrada;
    auto operator<=>(const Puesto&) const = default;  // NOLINT: ve un 0 en lo que genera el compilador
  };

  void cerrarTramo(std::uint64_t posicion);
  void anadir(std::string_view registro, Numero bloque, std::uint64_t posicion, bool suelto);
  void alargar(std::string_view registro);
  void unirSueltos();
  void unirSuelto(std::uint32_t suelto, std::uint32_t dueno);
  void ordenarTrozo(std::span<Puesto> puestos, std::size_t desde);
  Entrada& entrada(std::uint32_t i) { return trozos_[i / kPorTrozo][i % kPorTrozo]; }
  const Entrada& entrada(std::uint32_t i) const { return trozos_[i / kPorTrozo][i % kPorTrozo]; }
  Tramo tramo(const Entrada& e) const;
  static void ponerLargo(Entrada& e, std::uint64_t largo);
  static void marcar(Entrada& e, unsigned char marca) { e.largo.back() |= marca; }
  static bool tiene(const Entrada& e, unsigned char marca) { return (e.largo.back() & marca) != 0; }

  static constexpr std::size_t kPorTrozo = 1 << 14;
  static constexpr unsigned char kSuelto = 0x80, kDesordenado = 0x40, kUnido = 0x20;

  IndiceBloques indice_;
  std::optional<std::uint64_t> presentador_;
  std::vector<std::uint64_t> cabeceras_;  // por número de bloque
  std::vector<std::unique_ptr<Entrada[]>> trozos_;
  std::vector<Racha> rachas_;
  std::unordered_map<std::uint32_t, std::uint32_t> sueltos_;  // el menor dato de cada uno
  std::unordered_map<std::uint32_t, std::vector<Tramo>> unidos_;
  std::uint32_t entradas_ = 0;
  std::uint32_t dato_ = 0;  // del último registro del adeudo en curso
  bool enCurso_ = false;    // hay un adeudo al que van los 03 que no sean 003
  bool abierto_ = false;    // y el último registro es suyo: falta saber dónde acaba

  std::vector<Puesto> puestos_;
  std::vector<std::uint32_t> finales_;  // por número de bloque, dónde acaban sus puestos
  std::vector<Numero> orden_;
};

}  // namespace remesa
