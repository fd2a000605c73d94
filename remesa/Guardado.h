#pragma once

#include <filesystem>
#include <functional>

#include "remesa/ListaRegistros.h"

namespace remesa {

/// Recibe registros escritos y registros en total. Escritos todos, se le llama también mientras llegan al
/// disco, y ya no puede lanzar.
using AvanceGuardado = std::function<void(std::size_t escritos, std::size_t total)>;

/// Escribe cada registro cortado o completado con blancos a 600 bytes, seguido de CR LF.
void GuardarRemesa(const std::filesystem::path& destino, const ListaRegistros& lista,
                   const AvanceGuardado& avance = {});

}  // namespace remesa
