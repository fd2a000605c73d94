#pragma once

#include <QString>
#include <optional>

#include "remesa/Busqueda.h"

namespace principal {

/// El importe que dice un texto, en céntimos: "52,10", "52,1", "1.234,50", "1234,5 €", "52.10". Sin valor si
/// no es un importe.
std::optional<qint64> ImporteEscrito(const QString& texto);

/// Lo que se busca al escribir `texto`: él y, si es un importe, ese importe. De un carácter que los registros
/// no pueden tener cuenta la letra sin su signo.
remesa::Busqueda BusquedaDe(const QString& texto);

}  // namespace principal
