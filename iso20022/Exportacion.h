#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "iso20022/Fuente.h"
#include "iso20022/Nota.h"
#include "iso20022/Traduccion.h"

namespace iso20022 {

/// Lo que se escribiría. Importes en céntimos.
struct ResumenExportacion {
  std::uint64_t mensajes = 0;
  std::uint64_t bloques = 0;  ///< PmtInf, en todos los mensajes.
  std::uint64_t adeudos = 0;
  std::uint64_t importe = 0;
  std::uint64_t omitidos = 0;        ///< Los que tienen un error, o lo tiene su 02.
  std::uint64_t importeOmitido = 0;  ///< De los omitidos que dicen alguno.
  std::uint64_t errores = 0;
  std::uint64_t avisos = 0;
  bool salvable = false;  ///< Los errores son todos de adeudos o de su 02, y quedan otros que escribir.
  /// No hay ningún error, o solo los que se salvan dejando adeudos fuera y se pidió hacerlo.
  bool posible = false;
};

/// Una remesa del Cuaderno 19.14 que se pasa a uno o varios pain.008. Primero se examina, que la recorre
/// entera; luego, si es posible, se escribe. De cada adeudo guarda 16 bytes.
class Exportacion {
 public:
  /// Los mensajes, a lo más: todos sus ficheros están abiertos hasta el final.
  static constexpr std::uint64_t kMaxMensajes = 500;

  /// Varias fuentes son una remesa con el 01 de la primera y los bloques de todas.
  Exportacion(std::vector<std::unique_ptr<Fuente>> fuentes, OpcionesExportacion opciones);
  ~Exportacion();

  /// Da a `recibir` todo lo que hay que saber, de la primera a la última línea y luego los resúmenes. nullopt
  /// si `avance` lo detuvo. Una sola vez. Lanza ErrorEjecucion si no se puede leer.
  std::optional<ResumenExportacion> examinar(const ReceptorNotas& recibir, const Avance& avance = {});

  /// Los ficheros que escribiría.
  std::vector<std::filesystem::path> rutas(const std::filesystem::path& destino) const;
  /// Uno que ya hay y que por su número seguiría a los que escribiría: de otra vez, y no de estos. Vacía si
  /// no lo hay.
  std::filesystem::path sobrante(const std::filesystem::path& destino) const;

  /// Escribe los mensajes: en `destino` o, si son varios, en destino-1, destino-2…, con su extensión. Todos o
  /// ninguno. Da las rutas; ninguna si `avance`, que recibe adeudos, lo detuvo. Lanza ErrorEjecucion si no se
  /// puede leer o escribir, y 5 si no se examinó o no es posible.
  std::vector<std::filesystem::path> escribir(const std::filesystem::path& destino,
                                              const Avance& avance = {});

 private:
  static constexpr int kBitsSitio = 48;
  // Un adeudo: dónde está y cuál le sigue en su grupo.
  struct Apunte {
    std::uint64_t sitio = 0;  // la fuente, en los bits altos
    std::uint32_t siguiente = 0;
    std::uint32_t lineas = 0;
  };
  static_assert(sizeof(Apunte) == 16);
  // Un 02, o varios que se escriben igual.
  struct Bloque {
    RegistroLeido cabecera;
    bool entreEmpresas;
  };
  // Lo que va en un PmtInf.
  struct Grupo {
    std::size_t bloque = 0;
    std::string tipo, categoria;
    std::uint64_t adeudos = 0;
    std::uint64_t importe = 0;
    std::uint32_t primero = 0, ultimo = 0;
  };
  // Los adeudos de un grupo que van en un mensaje.
  struct Tramo {
    const Grupo* grupo;
    std::uint32_t primero;
    std::uint64_t adeudos = 0;
    std::uint64_t importe = 0;
  };
  struct Mensaje {
    std::vector<Tramo> tramos;
    std::uint64_t adeudos = 0;
    std::uint64_t importe = 0;
  };
  class Examen;
  class Redaccion;

  std::vector<Mensaje> repartir();
  std::uint64_t importeDe(std::uint32_t apunte);
  void leer(std::uint32_t apunte, AdeudoLeido& adeudo);

  std::vector<std::unique_ptr<Fuente>> fuentes_;
  OpcionesExportacion opciones_;
  ResumenExportacion resumen_;
  RegistroLeido presentador_;
  std::vector<Bloque> bloques_;
  std::vector<Grupo> grupos_;
  std::deque<Apunte> apuntes_;  // crece sin copiarse
};

}  // namespace iso20022
