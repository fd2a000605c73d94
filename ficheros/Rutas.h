#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace ficheros {

/// La ruta absoluta y sin rodeos con que el sistema llega al mismo sitio: detrás de un enlace, ".." es la
/// carpeta que contiene aquella a la que lleva. Con lo que no existe no se puede saber y se queda como está.
std::filesystem::path RutaAbsoluta(const std::filesystem::path& ruta);

/// Lo que distingue un fichero de todos los demás, se llegue a él con el nombre que se llegue.
struct Identidad {
  std::uint64_t unidad = 0;
  std::array<std::uint64_t, 2> numero{};
  auto operator<=>(const Identidad&) const = default;  // NOLINT: ve un 0 en lo que genera el compilador
};

/// La de aquello a lo que lleva `ruta`; sin valor solo si no existe. Lanza ErrorEjecucion si no se puede
/// saber.
std::optional<Identidad> IdentidadDe(const std::filesystem::path& ruta);

/// Si `ruta` es, ella misma, un enlace a otro sitio; una que no se puede mirar no lo es. En Windows también
/// las uniones de carpetas, que la biblioteca estándar no distingue.
bool EsEnlace(const std::filesystem::path& ruta);

/// Cuándo se escribió por última vez, con toda la finura del sistema y en su unidad: solo sirve para
/// compararlo. La biblioteca estándar de mingw-w64 cuenta por segundos, y dos escrituras seguidas parecerían
/// una.
std::int64_t UltimaEscritura(const std::filesystem::path& ruta, std::error_code& error);

/// true si existen y son el mismo fichero.
bool EsElMismo(const std::filesystem::path& uno, const std::filesystem::path& otro);

}  // namespace ficheros
