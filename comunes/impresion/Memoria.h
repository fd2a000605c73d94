#pragma once

namespace comunes {

/// Deja que la memoria que una página suelta la aproveche la siguiente. El PDF pide y suelta dos tramos de 10
/// MB por página, y devolverlos cada vez al sistema cuesta un tercio del tiempo de un listado.
void ConservarMemoriaDePagina();

}  // namespace comunes
