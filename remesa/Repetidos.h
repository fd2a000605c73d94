#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "remesa/Calendario.h"
#include "remesa/Huella.h"

namespace remesa {

/// Recuerda claves por su huella de 64 bits: dos claves distintas se confunden una vez entre diez mil
/// millones de parejas de un fichero de un millón. `Entrada` tiene `huella` y `registro`, que es 0 en un
/// hueco.
template <class Entrada>
class Huellas {
 public:
  /// La entrada de esa clave y si acaba de hacerse, ya con su huella y su registro. Vale hasta la siguiente.
  std::pair<Entrada&, bool> poner(std::uint64_t huella, std::uint64_t registro) {
    if (usadas_ * 4 >= tabla_.size() * 3) crecer();
    Entrada& entrada = sitio(huella);
    if (entrada.registro != 0) return {entrada, false};
    constexpr std::uint64_t kTope = std::numeric_limits<std::uint32_t>::max();
    entrada.huella = huella;
    entrada.registro = static_cast<std::uint32_t>(std::min(registro, kTope));
    ++usadas_;
    return {entrada, true};
  }
  /// Pide ya a la memoria dónde estará: en un fichero grande, lo más de lo que cuesta es esperarla.
  void anticipar(std::uint64_t huella) const noexcept {
    constexpr std::size_t kEnLinea = 64 / sizeof(Entrada);
    if (tabla_.empty()) return;
    const std::size_t i = primero(huella);
    __builtin_prefetch(&tabla_[i]);
    __builtin_prefetch(&tabla_[std::min(i + kEnLinea, tabla_.size() - 1)]);
  }

 private:
  std::size_t primero(std::uint64_t huella) const noexcept {
    return static_cast<std::size_t>((huella >> 32) * tabla_.size() >> 32);
  }
  Entrada& sitio(std::uint64_t huella) {
    std::size_t i = primero(huella);
    while (tabla_[i].registro != 0 && tabla_[i].huella != huella)
      i = i + 1 < tabla_.size() ? i + 1 : 0;
    return tabla_[i];
  }
  /// Poco a poco: lo que se mide es la memoria, y doblando la tabla la mitad estaría vacía.
  void crecer() {
    constexpr std::size_t kInicial = 1024;
    const std::vector<Entrada> anterior =
        std::exchange(tabla_, std::vector<Entrada>(std::max(kInicial, tabla_.size() + tabla_.size() / 2)));
    for (const Entrada& entrada : anterior)
      if (entrada.registro != 0) sitio(entrada.huella) = entrada;
  }

  std::vector<Entrada> tabla_;
  std::size_t usadas_ = 0;
};

/// Una clave ya vista y, con ella, un dato más.
struct ClaveVista {
  std::uint64_t huella = 0;
  std::uint32_t registro = 0;
  std::uint32_t marca = 0;
};

/// Claves de las que solo importa quién las tenía.
class ClavesVistas {
 public:
  /// El registro anterior que la tenía; 0 si ninguno. Recuerda el suyo, que no puede ser 0.
  std::uint64_t poner(std::uint64_t huella, std::uint64_t registro) {
    const auto [entrada, nueva] = claves_.poner(huella, registro);
    return nueva ? 0 : entrada.registro;
  }
  void anticipar(std::uint64_t huella) const noexcept { claves_.anticipar(huella); }

 private:
  Huellas<ClaveVista> claves_;
};

/// Lo que los tipos de adeudo de un mandato no pueden ser a la vez.
enum class TipoAdeudo : std::uint8_t { Otro, FRST, RCUR, FNAL, OOFF };

/// El de un campo, sin blancos a los lados.
TipoAdeudo LeerTipoAdeudo(std::string_view tipo);

/// Días desde 1970, de 1 a 65535; 0 si no hay fecha.
std::uint16_t NumeroDeDia(const std::optional<Dia>& dia);

/// Un mandato sin adeudos caduca.
inline constexpr std::chrono::months kVidaMandato{36};

/// Un adeudo, para buscar los que se le parecen.
struct AdeudoVisto {
  /// Huellas, cada una con su acreedor; 0 lo que no se sabe. El cobro es el mandato, el importe y la fecha;
  /// el cargo, la cuenta, el importe y el concepto.
  std::uint64_t referencia = 0, mandato = 0, cuenta = 0, cobro = 0, cargo = 0;
  TipoAdeudo tipo = TipoAdeudo::Otro;
  std::uint16_t dia = 0;  ///< El de cobro, desde 1970; 0 si no se sabe.
  std::uint64_t registro = 0;
};

/// Los registros anteriores con los que un adeudo choca; 0, ninguno.
struct Choques {
  std::uint64_t cobro = 0;        ///< El mismo mandato, importe y fecha de cobro.
  std::uint64_t otraCuenta = 0;   ///< El mismo mandato con otra cuenta.
  std::uint64_t secuencia = 0;    ///< El mismo mandato, con un tipo que no va con el suyo.
  std::uint64_t otroMandato = 0;  ///< La misma cuenta, importe y concepto por otro mandato del acreedor.
};

/// Los adeudos de un fichero que se parecen demasiado.
class Repetidos {
 public:
  /// Con mandato.
  Choques adeudo(const AdeudoVisto& adeudo);
  /// Que se va a dar dentro de poco.
  void anticipar(const AdeudoVisto& adeudo) const noexcept;

 private:
  struct Mandato {
    std::uint64_t huella = 0;
    std::uint64_t cobro = 0;  // el primero, que no está en `cobros_` hasta que haya otro
    std::uint32_t registro = 0;
    std::uint32_t cuenta : 29 = 0;
    std::uint32_t conFrst : 1 = 0;
    std::uint32_t conFnal : 1 = 0;
    std::uint32_t conOoff : 1 = 0;
    std::uint32_t senalado = 0;             // el que lleva FNAL, OOFF o FRST
    std::uint16_t primero = 0, ultimo = 0;  // días de cobro; 0, no se saben
  };
  static std::uint64_t secuencia(Mandato& mandato, bool nuevo, const AdeudoVisto& adeudo);

  ClavesVistas cobros_;
  Huellas<ClaveVista> cargos_;
  Huellas<Mandato> mandatos_;
};

}  // namespace remesa
