#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/Fichero.h"

namespace devoluciones {

/// Da los registros de una remesa ya presentada, de texto (con cualquier fin de línea) o en XML (los que
/// serían). Valen hasta que vuelve. Lanza ErrorEjecucion si no se puede leer y FicheroAjeno si no es una
/// remesa.
void RecorrerRemesa(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                    const remesa::AvanceLectura& avance = {});

/// En qué bloque (PmtInfId) va cada adeudo de un pain.008, que en los registros no está.
struct AdeudoDeBloque {
  std::string bloque, referencia, mandato;  ///< Bytes de registro.
  std::int64_t importe = 0;
};
/// En el orden del mensaje; ninguno si el fichero no es un XML.
std::vector<AdeudoDeBloque> BloquesXml(const std::filesystem::path& ruta);

}  // namespace devoluciones
