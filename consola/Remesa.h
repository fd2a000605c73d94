#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "iso20022/LecturaMensaje.h"
#include "remesa/ListaRegistros.h"

namespace consola {

/// Una remesa que una orden toma: un fichero de texto, que cada orden lee a su modo, o un mensaje XML ya
/// hecho registros.
struct Remesa {
  std::filesystem::path ruta;
  std::optional<remesa::ListaRegistros> lista;  ///< Los de un XML.
  /// Los de un XML, si no han de estar en memoria.
  std::unique_ptr<ficheros::FicheroProvisional> fichero = {};
};

/// Mira si el fichero es una remesa y, si es XML, lo lee y dice, resumido, lo que sus registros no tienen. Si
/// no es una remesa o no se puede leer, lo dice y da nada.
std::optional<Remesa> TomarRemesa(const std::filesystem::path& ruta);
/// Lo mismo, para quien lee los registros dos veces: los de un XML, en un fichero provisional junto a la
/// salida, donde hará falta sitio para ella.
std::optional<Remesa> TomarRemesaEnFichero(const std::filesystem::path& ruta,
                                           const std::filesystem::path& salida);

/// Quita los que ya estaban, con ese nombre o con otro, diciéndolo. Los que no se pueden mirar se quedan: ya
/// fallarán.
std::vector<std::filesystem::path> SinRepetir(const std::vector<std::string>& argumentos);

void AvisarResumidos(const std::filesystem::path& ruta, const std::vector<iso20022::AvisoLectura>& avisos);

/// Lee un mensaje XML; nada si no se toma, que queda dicho. Lanza ErrorEjecucion.
std::optional<iso20022::MensajeLeido> LeerMensajeXml(const std::filesystem::path& ruta);

/// Los registros de la remesa, leída si es de texto. Lanza ErrorEjecucion.
remesa::ListaRegistros Registros(Remesa remesa);

}  // namespace consola
