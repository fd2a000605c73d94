#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "remesa/ListaRegistros.h"
#include "remesa/RepartoBloques.h"
#include "remesa/TotalesBloques.h"

// Las órdenes de la ventana sobre sus listas, conservando los bloques. Si lanzan, las listas quedan como
// estaban.

namespace remesa {

/// Recibe cada registro que queda, en su orden.
using AlPasar = std::function<void(std::string_view registro)>;
/// De cada registro que queda, el que era: los que se importan, tras los de la acumulación; los de totales,
/// nuevos, desde el número que habría detrás.
using Procedencia = std::vector<std::size_t>;

/// Un "03" sin cabecera delante en su fichero, que impide reunir: en la acumulación o en el primero que lo
/// tiene de los que se importan, y su número desde 1.
struct SinDueno {
  bool enPrevio = false;
  std::size_t registro = 0;
};

struct Reunion {
  std::optional<SinDueno> impide;  ///< Y entonces nada ha cambiado.
  Procedencia procedencia;
};

/// Reúne por bloques lo acumulado y lo que se importa, quizá nada, y hace los totales. Los códigos de otros
/// registros se quedan fuera. Lanza ErrorEjecucion 6 si un total no cabe en su campo.
Reunion ReunirBloques(ListaRegistros& acumulado, const ListaRegistros& previo, const AlPasar& alPasar = {});
/// De una vez lo que varios darían uno tras otro, cada uno con sus cabeceras.
Reunion ReunirVarios(ListaRegistros& acumulado, std::span<const ListaRegistros* const> previos,
                     const AlPasar& alPasar = {});

/// Hace los totales de nuevo donde los bloques acaben, sin mover nada más: quita los bloques sin "03" y los
/// registros de otros códigos. Lanza como ReunirBloques.
Procedencia RehacerTotales(ListaRegistros& acumulado, const AlPasar& alPasar = {});

}  // namespace remesa
