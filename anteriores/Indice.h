#pragma once

#include <array>
#include <memory>
#include <optional>

#include "anteriores/Claves.h"
#include "anteriores/LecturaAnterior.h"

namespace anteriores {

/// Un adeudo de antes: 56 bytes. Los números de registro se quedan en el máximo.
struct Entrada {
  std::uint64_t mandato = 0, acreedor = 0, referencia = 0;  // como en ClavesAdeudo
  std::uint64_t importe : 40 = 0;
  std::uint64_t dia : 16 = 0;
  std::uint64_t tipo : 8 = 0;
  std::uint32_t cuenta = 0, concepto = 0;
  std::uint32_t fichero = 0;   ///< En Indice::ficheros().
  std::uint32_t registro = 0;  ///< Su 003, desde 1.
  std::uint32_t cabecera = 0;  ///< El 02 de su bloque, desde 1.
  std::uint32_t vuelta = 0;    ///< En Indice::vueltas(), desde 1; 0 si no consta que volviera.
};
static_assert(sizeof(Entrada) <= 64);
/// Los 11 dígitos de un importe caben en 37.
inline constexpr std::uint64_t kMascaraImporte = (std::uint64_t{1} << 40) - 1;

/// Un adeudo que volvió, o varios, según lo dice el banco. Lo que su fichero no trae es 0.
struct Vuelta {
  std::uint32_t fichero = 0;
  std::uint64_t registro = 0;  ///< O la línea, en un XML.
  bool entera = false;         ///< De un fichero entero.
  bool deBloque = false;       ///< De un bloque entero.
  bool rechazo = false;        ///< Antes del cobro.
  std::uint16_t devuelto = 0, cobro = 0;
  std::uint64_t acreedor = 0, mandato = 0, referencia = 0;
  std::optional<std::uint64_t> importe = {};
  std::uint32_t enLote = 0;    ///< Cuál es de las de su fichero, desde 0.
  std::uint64_t original = 0;  ///< La identificación del fichero en que se presentó.
  std::string motivo = {};     ///< El código, como vino, en UTF-8.
};

/// Un fichero de las carpetas que se ha leído.
struct FicheroAnterior {
  FicheroHallado hallado;
  ClaseFichero clase = ClaseFichero::Texto;
  FinUniforme fin = 0;
  ResumenRemesa resumen = {};
  bool enFecha = false;  ///< Tiene algún adeudo desde la fecha pedida.
};

struct PeticionIndice {
  std::vector<std::filesystem::path> carpetas;
  std::optional<remesa::Dia> desde = {};  ///< Se dejan los adeudos que se cobraron antes; sin ella, ninguno.
  unsigned hilos = 2;
};

/// Cuántos meses se mira atrás, y cuántos para ver los mandatos caducados.
inline constexpr int kMeses = 14;
inline constexpr int kMesesDeMas = 40;

/// El día de tantos meses antes; si no existe, el último de su mes.
remesa::Dia MesesAntes(remesa::Dia dia, int meses);

/// Los adeudos que se enviaron antes, según los ficheros de unas carpetas. No cambia: para ponerlo al día se
/// hace otro, que solo lee lo que ha cambiado de tamaño o de hora.
class Indice {
 public:
  /// Se llama desde varios hilos a la vez; con false, se deja.
  using Avance = std::function<bool(std::uintmax_t leidos, std::uintmax_t total)>;

  /// No lanza por lo que haya en las carpetas: lo dice en omitidos() y en carpetasSinLeer(). `anterior`, uno
  /// de la misma petición; si nada ha cambiado, es el que se devuelve. Si se deja, completo() es false.
  static std::shared_ptr<const Indice> Hacer(const PeticionIndice& peticion,
                                             std::shared_ptr<const Indice> anterior = {},
                                             const Avance& avance = {});

  /// Los del mandato, por importe, día, fichero y registro.
  std::span<const Entrada> delMandato(std::uint64_t acreedor, std::uint64_t mandato) const;
  std::span<const Entrada> entradas() const noexcept { return entradas_; }
  std::span<const FicheroAnterior> ficheros() const noexcept { return ficheros_; }
  std::span<const Vuelta> vueltas() const noexcept { return vueltas_; }
  std::span<const Omitido> omitidos() const noexcept { return omitidos_; }
  std::span<const Omitido> carpetasSinLeer() const noexcept { return carpetasSinLeer_; }
  bool completo() const noexcept { return completo_; }

 private:
  friend class Constructor;
  /// Uno que no se toma por lo que lleva dentro: mientras no cambie, no se vuelve a mirar.
  struct NoTomado {
    FicheroHallado hallado;
    std::string causa;
  };
  Indice() = default;

  std::vector<Entrada> entradas_;
  std::vector<FicheroAnterior> ficheros_;
  std::vector<Vuelta> vueltas_;
  std::vector<NoTomado> noTomados_;
  std::vector<Omitido> omitidos_, carpetasSinLeer_;
  std::optional<remesa::Dia> desde_;
  bool completo_ = true;
};

}  // namespace anteriores
