#pragma once

#include "anteriores/Indice.h"
#include "remesa/Comprobacion.h"

namespace anteriores {

struct ResultadoCruce {
  std::uint64_t errores = 0, avisos = 0;
  bool completo = true;  ///< false si se pidió detenerlo.
  /// Donde está, entre los de antes, el mismo fichero que se compara; no se compara consigo.
  std::optional<std::filesystem::path> elMismo;
};

// Comparan una remesa con lo que se envió antes. Cada hallazgo lleva en `antes` de dónde sale, y antes de
// darlo se vuelve a leer su registro: que dos huellas sean iguales no basta. Lo que ha cambiado desde que se
// hizo el índice no se dice. Lanzan ErrorEjecucion.

/// De texto.
ResultadoCruce CruzarFichero(const Indice& indice, const std::filesystem::path& ruta,
                             const remesa::ReceptorHallazgos& recibir, const Seguir& seguir);

/// Una lista; `ruta`, el fichero del que viene, si se sabe.
ResultadoCruce CruzarLista(const Indice& indice, const remesa::ListaRegistros& lista,
                           const std::filesystem::path& ruta, const remesa::ReceptorHallazgos& recibir,
                           const Seguir& seguir);

/// Uno de los ficheros de antes que tiene los mismos adeudos que la lista; sin valor si ninguno.
std::optional<std::filesystem::path> GuardadaAntes(const Indice& indice, const remesa::ListaRegistros& lista,
                                                   const Seguir& seguir);

}  // namespace anteriores
