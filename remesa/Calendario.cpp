#include "remesa/Calendario.h"

#include <algorithm>

#include "remesa/Registro.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using namespace std::chrono;

constexpr Posiciones kAno{1, 4}, kMes{5, 6}, kDia{7, 8};

int Numero(std::string_view cifras) {
  int numero = 0;
  for (const char c : cifras)
    numero = numero * 10 + (c - '0');
  return numero;
}

}  // namespace

std::optional<Dia> LeerFecha(std::string_view texto) {
  if (texto.size() != static_cast<std::size_t>(kDia.hasta) || !SonCifras(texto)) return {};
  const Dia fecha{year(Numero(LeerCampo(texto, kAno))),
                  month(static_cast<unsigned>(Numero(LeerCampo(texto, kMes)))),
                  day(static_cast<unsigned>(Numero(LeerCampo(texto, kDia))))};
  return fecha.ok() ? std::optional(fecha) : std::nullopt;
}

bool EsAntigua(Dia fecha) {
  return fecha.year() < year(1900);
}

std::string EscribirFecha(Dia fecha) {
  return Ceros(static_cast<int>(fecha.year()), kAno.longitud()) +
         Ceros(static_cast<std::int32_t>(static_cast<unsigned>(fecha.month())), kMes.longitud()) +
         Ceros(static_cast<std::int32_t>(static_cast<unsigned>(fecha.day())), kDia.longitud());
}

Dia DomingoDePascua(year ano) {
  const int y = static_cast<int>(ano);
  const int a = y % 19, b = y / 100, c = y % 100;
  const int h = (19 * a + b - b / 4 - (b - (b + 8) / 25 + 1) / 3 + 15) % 30;
  const int l = (32 + 2 * (b % 4) + 2 * (c / 4) - h - c % 4) % 7;
  const int m = (a + 11 * h + 22 * l) / 451;
  const int desdeMarzo = h + l - 7 * m + 114;
  return {ano, month(static_cast<unsigned>(desdeMarzo / 31)),
          day(static_cast<unsigned>(desdeMarzo % 31 + 1))};
}

FestivoTarget Festivo(Dia fecha) {
  const auto es = [&](month mes, unsigned dia) { return fecha.month() == mes && fecha.day() == day(dia); };
  if (es(January, 1)) return FestivoTarget::AnoNuevo;
  if (es(May, 1)) return FestivoTarget::Trabajo;
  if (es(December, 25)) return FestivoTarget::Navidad;
  if (es(December, 26)) return FestivoTarget::SanEsteban;
  const sys_days pascua = DomingoDePascua(fecha.year());
  if (sys_days(fecha) == pascua - days(2)) return FestivoTarget::ViernesSanto;
  if (sys_days(fecha) == pascua + days(1)) return FestivoTarget::LunesDePascua;
  return FestivoTarget::Ninguno;
}

bool EsFinDeSemana(Dia fecha) {
  const weekday dia{sys_days(fecha)};
  return dia == Saturday || dia == Sunday;
}

Dia HabilDesde(Dia fecha) {
  while (EsFinDeSemana(fecha) || Festivo(fecha) != FestivoTarget::Ninguno)
    fecha = sys_days(fecha) + days(1);
  return fecha;
}

Dia HabilDeCobro(Dia cobro, Dia hoy) {
  const Dia manana = sys_days(hoy) + days(1);
  return HabilDesde(std::max(cobro, manana));
}

}  // namespace remesa
