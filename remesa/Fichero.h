#pragma once

#include <filesystem>
#include <functional>

#include "remesa/ListaRegistros.h"

namespace remesa {

enum class Cabeza { Q19, VersionAnterior, Desconocida };

/// Mira solo los 7 primeros bytes: posiciones 3-7 "19143" es Q19; "5180" al principio, la versión anterior.
/// Lanza ErrorEjecucion si el fichero no se puede abrir o leer.
Cabeza ComprobarCabeza(const std::filesystem::path& ruta);

/// Recibe bytes leídos y bytes totales (0 si no se conocen).
using AvanceLectura = std::function<void(std::uintmax_t leidos, std::uintmax_t total)>;

/// Lee el fichero entero en una lista. Una línea acaba en CR y el LF que le siga se salta; un LF suelto es
/// parte de la línea; la última línea cuenta aunque no acabe en CR. Lanza ErrorEjecucion.
ListaRegistros LeerFichero(const std::filesystem::path& ruta, const AvanceLectura& avance = {});

}  // namespace remesa
