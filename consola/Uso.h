#pragma once

#include <CLI/CLI.hpp>
#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "remesa/Calendario.h"

namespace consola {

/// La ayuda de la biblioteca de argumentos, en español.
std::shared_ptr<CLI::FormatterBase> FormatoAyuda();

/// Qué falla en la línea de órdenes, en español y sin punto final. `sobrantes`: lo que no se supo leer de
/// ella.
QString ErrorDeUso(const CLI::ParseError& error, const std::vector<std::string>& sobrantes);

/// Para un número de una opción: que lo sea, desde 1, y que con ceros delante la biblioteca no lo lea en
/// octal; esto último, antes.
std::function<std::string(const std::string&)> NumeroDesdeUno();
std::function<std::string(const std::string&)> SinCerosDelante();

/// La opción --fecha: el día que la orden toma por hoy, AAAAMMDD.
void OpcionFecha(CLI::App& orden, std::string& fecha);
/// Ese día o, si no se dio, hoy.
remesa::Dia HoyDe(const std::string& fecha);

/// La opción --salida de un fichero .Q19 y lo que se escribe con ella: absoluta, con la extensión forzada
/// como al guardar. Lanza ErrorEjecucion si es una carpeta.
CLI::Option* OpcionSalida(CLI::App& orden, std::string& salida);
std::filesystem::path SalidaQ19(const std::filesystem::path& salida);

}  // namespace consola
