#pragma once

#include <functional>
#include <string_view>

#include "anteriores/Carpetas.h"
#include "remesa/ListaRegistros.h"

namespace anteriores {

enum class ClaseFichero : std::uint8_t { Texto, Xml, Devoluciones };

/// El fichero no se toma; `causa`, como la de Omitido.
struct NoSeToma {
  std::string causa;
};
/// Se pidió dejarlo.
struct Detenido {};

/// Qué es, por su principio y no por su nombre. Lanza NoSeToma si no es de adeudos o pasa del tamaño que se
/// lee, y ErrorEjecucion si no se puede leer.
ClaseFichero Reconocer(const FicheroHallado& fichero);

/// Los registros de una remesa, con 600 bytes, y su número en ella, desde 1. Las líneas en blanco cuentan y
/// no se dan. Valen hasta que vuelve.
using ReceptorRegistros = std::function<void(std::string_view registro, std::uint64_t numero)>;

/// Bytes del fin de cada línea, si todos los registros miden 600 y acaban igual; si no, 0.
using FinUniforme = std::size_t;

/// Lee una remesa de texto, con cualquier fin de línea, o en XML, los registros que serían. Lanza NoSeToma si
/// está dañada (cortada, sin cabeceras, otra cosa por dentro), Detenido y ErrorEjecucion.
FinUniforme LeerRemesa(const std::filesystem::path& ruta, ClaseFichero clase,
                       const ReceptorRegistros& recibir, const Seguir& seguir);

/// Como está en el fichero, aunque esté en UTF-8 o sea corto: un registro de 600 bytes. `bufer`, donde se
/// rehace; `longitud`, la de la línea entera.
std::string_view ComoRegistro(std::string_view linea, std::uint64_t longitud, std::string& bufer);

/// Los registros de una lista; uno que lleve LF, línea a línea, como al comprobarla. `fila`, su índice
/// desde 1.
void RecorrerLista(
    const remesa::ListaRegistros& lista,
    const std::function<void(std::string_view registro, std::uint64_t numero, std::uint64_t fila)>& recibir,
    const Seguir& seguir);

/// Los de un fichero de texto. Lanza ErrorEjecucion.
void RecorrerFichero(
    const std::filesystem::path& ruta,
    const std::function<void(std::string_view registro, std::uint64_t numero, std::uint64_t fila)>& recibir,
    const Seguir& seguir);

}  // namespace anteriores
