#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "remesa/Calendario.h"
#include "remesa/Hallazgo.h"
#include "remesa/ListaRegistros.h"

namespace remesa {

struct ResultadoComprobacion {
  std::uint64_t registros = 0;
  std::uint64_t errores = 0;
  std::uint64_t avisos = 0;
  bool completa = true;  ///< false si se pidió detenerla.
};

/// Recibe bytes o registros mirados y los que hay en total; con false, la comprobación se detiene.
using AvanceComprobacion = std::function<bool(std::uintmax_t mirados, std::uintmax_t total)>;

/// Comprueba un fichero leyéndolo por trozos, fines de línea incluidos. Lanza ErrorEjecucion si no se puede
/// leer.
ResultadoComprobacion ComprobarFichero(const std::filesystem::path& ruta, Dia hoy,
                                       const ReceptorHallazgos& recibir,
                                       const AvanceComprobacion& avance = {});

/// Comprueba una lista; un registro que lleve LF, línea a línea, como en un fichero. Con `comoGuardada`, cada
/// registro como quedará en el fichero: cortado o completado a 600.
ResultadoComprobacion ComprobarLista(const ListaRegistros& lista, Dia hoy, const ReceptorHallazgos& recibir,
                                     bool comoGuardada = false, const AvanceComprobacion& avance = {});

}  // namespace remesa
