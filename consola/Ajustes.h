#pragma once

namespace consola {

/// Pone comunes::RutaAjustes donde está Tarvo.INI, junto al programa; false si no hay ninguno.
bool BuscarAjustes();

}  // namespace consola
