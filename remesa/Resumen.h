#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/Fichero.h"
#include "remesa/Fusion.h"
#include "remesa/TipoFichero.h"
#include "remesa/TotalesNorma.h"

namespace remesa {

/// Cuántos registros y el número del primero (desde 1; 0 si ninguno).
struct Apariciones {
  std::size_t cuenta = 0;
  std::size_t primero = 0;
};

/// Acreedor, fecha de cobro (AAAAMMDD) y cuenta de un "02", sin blancos a los lados, en bytes del registro.
struct Bloque02 {
  std::string acreedor;
  std::string fecha;
  std::string cuenta;
  bool operator==(const Bloque02&) const = default;
};

/// Lo que un solo recorrido ve en una lista o en un fichero.
struct Resumen {
  TipoFichero tipo = TipoFichero::Ajeno;  ///< Por el primer registro.
  std::size_t registros = 0;
  std::size_t adeudos = 0;   ///< "03" con número de dato "003".
  std::int64_t importe = 0;  ///< Suma real en céntimos, sin el límite de 32 bits.
  std::size_t cabeceras01 = 0;
  std::size_t cabeceras02 = 0;
  std::size_t registros03 = 0;        ///< Todos los "03", opcionales incluidos.
  std::size_t deTotales = 0;          ///< "04", "05" y "99".
  std::size_t totalesInteriores = 0;  ///< De ellos, los que tienen detrás algún "03".
  Apariciones cortos;                 ///< De menos de 600 bytes (las líneas vacías no cuentan).
  Apariciones largos;                 ///< De más de 600 bytes.
  Apariciones conLF;                  ///< Con un LF dentro (solo si se pidió mirar los bytes).
  Apariciones enUtf8;                 ///< Con letras en UTF-8 (igual). Si miden 600 caracteres no son largos.
  std::string palabraUtf8;            ///< La primera que lo muestra.
  std::size_t lineasVacias = 0;       ///< Sin nada más que blancos o 0x1A: se descartan sin perder nada.
  Apariciones descartados;            ///< Con un código que la importación descarta.
  Apariciones copiasIntercaladas;     ///< Opcionales separados de su adeudo por una copia.
  Apariciones opcionalesSueltos;      ///< Opcionales (004-006) que no siguen a su adeudo.
  Apariciones totalesDistintos;       ///< Totales que un recálculo cambiaría (o en los que fallaría).
  bool totalesSegunNorma = true;      ///< Los totales son los de cada bloque, como pide la norma.
  int errorRecalculo = 0;             ///< Número de error que daría un recálculo; 0 si ninguno.
  std::size_t registroError = 0;      ///< El número del registro en que lo daría.
  std::vector<Bloque02> bloques;      ///< Los distintos, en orden de aparición (hasta kMaxBloques).
  std::string nombreAcreedor;         ///< El del primer "02", sin blancos a los lados.
  Bloque02 ultimoBloque;              ///< El del último "02", bajo el que caen los adeudos que se añadan.

  static constexpr std::size_t kMaxBloques = 64;
  bool vacia() const { return registros == 0; }
};

/// Construye el resumen registro a registro, también sobre un flujo.
class Resumidor {
 public:
  /// Con `mirarBytes` busca además LF y UTF-8 dentro de cada registro (recorre todos sus bytes). Sin
  /// `mirarTotales` no los compara con lo que deben decir.
  explicit Resumidor(bool mirarBytes = false, bool mirarTotales = true)
      : mirarBytes_(mirarBytes), mirarTotales_(mirarTotales) {}
  void dar(std::string_view registro);
  const Resumen& resumen() const noexcept { return resumen_; }

 private:
  void mirarForma(std::string_view registro);
  bool mirarUtf8(std::string_view registro);
  void mirarOpcional(std::string_view registro);
  void contarEnNorma(std::string_view registro, ClaseRegistro clase);
  void recontar(std::string_view registro);
  void apuntar(Apariciones& hallazgo) const;
  void abrirBloque(std::string_view registro);
  void contarAdeudo(std::string_view registro);

  Resumen resumen_;
  Recuento recuento_;
  TotalesNorma norma_;
  std::string referencias_, referenciasPrevias_;
  bool hayAdeudo_ = false;       // el último adeudo del bloque sigue a la vista
  bool previoContiguo_ = false;  // y el registro anterior a él era otro adeudo
  bool ultimoEsAdeudo_ = false;
  bool mirarBytes_;
  bool mirarTotales_;
};

/// Resumen de una lista entera.
Resumen Resumir(const ListaRegistros& lista, bool mirarBytes = false);

/// Resumen de un fichero sin tenerlo en memoria, con las líneas cortadas como al cargarlo. Lanza
/// ErrorEjecucion.
Resumen ResumirFichero(const std::filesystem::path& ruta, const AvanceLectura& avance = {});

/// RecalcularTotales y, en el mismo recorrido, el resumen de lo que queda, completo también cuando lanza.
void RecalcularYResumir(ListaRegistros& lista, Resumen& resumen);

/// Resumen de la acumulación tras importar en ella `previo` y recalcular sin error.
Resumen TrasImportar(const Resumen& acumulado, const Resumen& previo);

}  // namespace remesa
