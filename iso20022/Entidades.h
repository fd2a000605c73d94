#pragma once

#include <QString>
#include <functional>
#include <string>
#include <string_view>

namespace iso20022 {

/// El BIC de un banco por las cuatro cifras que lo dicen en una cuenta, según la sección "Entidades" del
/// fichero de ajustes; "" si no está. Cada uno se lee una vez.
std::function<std::string(std::string_view entidad)> BicsDe(const QString& ajustes);

}  // namespace iso20022
