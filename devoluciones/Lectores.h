#pragma once

#include "devoluciones/Lote.h"

// Uno por forma; todos añaden al lote, cuyo fichero en curso ya está puesto. Lanzan ErrorEjecucion.

namespace devoluciones {

/// Rechazos y devoluciones del Cuaderno 19.14.
void LeerPlano(Lote& lote, const std::filesystem::path& ruta, const remesa::AvanceLectura& avance);

/// pain.002 y camt.054. Lanza FicheroAjeno si es un XML de otra cosa.
void LeerXml(Lote& lote, const std::filesystem::path& ruta, const remesa::AvanceLectura& avance);

/// De un XML: un pain.002 o un camt.054. Uno mal formado no lo es.
bool EsMensajeDeDevoluciones(const std::filesystem::path& ruta);

/// La de un registro 13 o 23. `cabecera`, nula si no la tiene.
Devolucion DesdeRegistro(std::string_view registro, const Cabecera* cabecera);

}  // namespace devoluciones
