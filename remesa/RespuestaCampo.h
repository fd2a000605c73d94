#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "remesa/Hallazgo.h"

namespace remesa {

/// Lo que un campo ha de decir, entero, si el hallazgo basta para saberlo; nada si no. `bytes`, los del
/// campo. No mira lo que depende de otros registros.
std::optional<std::string> RespuestaCampo(const Hallazgo& hallazgo, const Campo& campo,
                                          std::string_view bytes);

/// `valor` a la izquierda y blancos detrás, hasta el ancho del campo.
std::string EnSuSitio(std::string_view valor, Posiciones donde);

/// El registro completado con blancos o sin los que le sobran; nada si no mide lo que debe por otra cosa:
/// está cortado (le faltan datos que son obligatorios, o quedaría con un campo a medias que no vale) o lleva
/// datos de más.
std::optional<std::string> RegistroCompleto(std::string_view registro);

}  // namespace remesa
