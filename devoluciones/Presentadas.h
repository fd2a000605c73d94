#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "remesa/Fichero.h"

namespace devoluciones {

/// Da los registros de una remesa ya presentada, de texto (con cualquier fin de línea) o en XML (los que
/// serían). Valen hasta que vuelve. Lanza ErrorEjecucion si no se puede leer y FicheroAjeno si no es una
/// remesa.
void RecorrerRemesa(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                    const remesa::AvanceLectura& avance = {});

}  // namespace devoluciones
