#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Número de registros con código "03".
std::size_t ContarDeudores(const ListaRegistros& lista);

/// Un adeudo que puede duplicarse: código "03", posiciones 7-9 "300" y número de dato "003".
bool EsDuplicable(std::string_view registro);

/// Inserta una copia del registro `i` en `i + 1`. Devuelve false, sin cambiar nada, si no es duplicable.
bool InsertarCopia(ListaRegistros& lista, std::size_t i);

/// Inserta una copia del registro `i`, si es duplicable, detrás de los opcionales de su adeudo. Da dónde, o
/// nada, sin cambiar nada, si no lo es.
std::optional<std::size_t> InsertarCopiaTrasAdeudo(ListaRegistros& lista, std::size_t i);

/// ¿Queda algún adeudo fuera de `seleccion` (índices ascendentes)?
bool PuedeEliminar(const ListaRegistros& lista, std::span<const std::size_t> seleccion);

/// Quita los adeudos seleccionados, del último al primero y dejando siempre uno. Devuelve cuántos quitó.
std::size_t EliminarAdeudos(ListaRegistros& lista, std::span<const std::size_t> seleccion);

/// Los "03" de `seleccion` (índices ascendentes) y, por cada 003 de ella, los que le siguen hasta otro 003.
std::vector<std::size_t> ConSusOpcionales(const ListaRegistros& lista,
                                          std::span<const std::size_t> seleccion);

}  // namespace remesa
