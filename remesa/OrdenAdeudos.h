#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace remesa {

/// Un registro por su índice.
using RegistroDe = std::function<std::string_view(std::size_t)>;

/// Los índices [desde, hasta) de los registros de un bloque, sin su 02 ni su 04, con los adeudos por su
/// referencia y luego como estaban; cada uno, con lo que le sigue. Vacío si ya lo están, o si dos adeudos de
/// un mandato cambiarían entre sí de orden y uno dice ser el primero o el último.
std::vector<std::size_t> PorReferencia(std::size_t desde, std::size_t hasta, const RegistroDe& registro);

/// Los índices del adeudo al que pertenece el registro `cual`, dentro de [desde, hasta), con sus opcionales
/// por su número de dato. Vacío si ya lo están, no tiene un 003 delante, lleva dos iguales o hay entre ellos
/// otra cosa.
std::vector<std::size_t> PorDato(std::size_t desde, std::size_t hasta, std::size_t cual,
                                 const RegistroDe& registro);

}  // namespace remesa
