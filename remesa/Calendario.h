#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace remesa {

using Dia = std::chrono::year_month_day;

/// AAAAMMDD: ocho cifras que sean un día que existe.
std::optional<Dia> LeerFecha(std::string_view texto);

/// De antes de 1900: un siglo mal escrito.
bool EsAntigua(Dia fecha);

/// AAAAMMDD.
std::string EscribirFecha(Dia fecha);

/// Domingo de Pascua del calendario gregoriano (cálculo anónimo de Meeus, Jones y Butcher).
Dia DomingoDePascua(std::chrono::year ano);

enum class FestivoTarget { Ninguno, AnoNuevo, ViernesSanto, LunesDePascua, Trabajo, Navidad, SanEsteban };

/// Días en que el sistema TARGET cierra, aparte de sábados y domingos.
FestivoTarget Festivo(Dia fecha);

bool EsFinDeSemana(Dia fecha);

/// El primer día, desde `fecha` incluida, en que se puede cobrar.
Dia HabilDesde(Dia fecha);

/// Un cobro de más allá tiene mal el año.
inline constexpr std::chrono::months kCobroLejano{14};

/// El primer día en que se puede cobrar lo que se presenta `hoy`, que no sea antes de `cobro`: un adeudo se
/// presenta, a más tardar, la víspera.
Dia HabilDeCobro(Dia cobro, Dia hoy);

}  // namespace remesa
