#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "remesa/EscrituraBloques.h"

namespace remesa {

enum class SepararPor : std::uint8_t { Bloque, Acreedor, Fecha, Cada };

struct Separacion {
  SepararPor por = SepararPor::Bloque;
  std::size_t cada = 0;    ///< Con Cada, adeudos de cada fichero, a lo más.
  bool sustituir = false;  ///< Los ficheros que ya haya con sus nombres.
};

/// Una de las remesas en que se separa otra.
struct Parte {
  std::string nombre;  ///< IDENTIFICADOR_AAAAMMDD_N.Q19, con los de su primer bloque y el número de la parte.
  std::vector<Rebanada> rebanadas;
};

/// Cómo queda separado un reparto ya ordenado. Por fecha, de la primera a la última; lo demás, en el orden de
/// los bloques. En los nombres, lo que no sea letra, cifra o guion pasa a "_", y lo que esté en blanco es
/// "_".
std::vector<Parte> Separar(const RepartoBloques& reparto, const Separacion& como);

/// Recibe los bytes escritos y, más o menos, los que serán; con false, se detiene y no se escribe ninguna.
using AvanceSeparacion = std::function<bool(std::size_t escritos, std::size_t total)>;

/// Escribe las partes en la carpeta, que se hace si no la hay, cada una con una identificación de fichero
/// nueva y distinta: todas o ninguna. Da false si `avance` lo detuvo. Lanza ErrorEjecucion: 58 si ya hay un
/// fichero con uno de los nombres y no se han de sustituir. `comprobar` se llama con todo leído, antes de
/// poner ninguna en su sitio.
bool EscribirPartes(const RepartoBloques& reparto, const std::vector<Parte>& partes, FuenteRegistros& fuente,
                    const std::filesystem::path& carpeta, const Separacion& como, Momento ahora,
                    const std::function<void()>& comprobar = {}, const AvanceSeparacion& avance = {});

}  // namespace remesa
