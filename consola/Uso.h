#pragma once

#include <CLI/CLI.hpp>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace consola {

/// La ayuda de la biblioteca de argumentos, en español.
std::shared_ptr<CLI::FormatterBase> FormatoAyuda();

/// Qué falla en la línea de órdenes, en español y sin punto final. `sobrantes`: lo que no se supo leer de
/// ella.
QString ErrorDeUso(const CLI::ParseError& error, const std::vector<std::string>& sobrantes);

}  // namespace consola
