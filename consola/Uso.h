#pragma once

#include <CLI/CLI.hpp>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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

}  // namespace consola
