#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>

#include "remesa/Calendario.h"
#include "remesa/ListaRegistros.h"

namespace remesa {

/// La fecha de cobro (AAAAMMDD) que ha de llevar cada cabecera 02 cuya fecha no vale: de hoy o de antes, o de
/// un día en que no se cobra. Pasa al primer día hábil en que se puede cobrar. `cabeceras`, los índices de
/// las 02. No están las que así serían iguales a otra (mismo acreedor, fecha y cuenta: habría que juntarlas),
/// ni las del acreedor cuyos bloques cambiarían entre sí de orden, del que depende qué adeudo es el primero
/// de su mandato.
std::map<std::size_t, std::string> FechasCorregidas(const ListaRegistros& lista,
                                                    std::span<const std::size_t> cabeceras, Dia hoy);

}  // namespace remesa
