#include "remesa/Repetidos.h"

namespace remesa {
namespace {

constexpr std::uint32_t kMarcaCuenta = (std::uint32_t{1} << 29) - 1;

}  // namespace

TipoAdeudo LeerTipoAdeudo(std::string_view tipo) {
  if (tipo == "RCUR") return TipoAdeudo::RCUR;
  if (tipo == "FRST") return TipoAdeudo::FRST;
  if (tipo == "FNAL") return TipoAdeudo::FNAL;
  return tipo == "OOFF" ? TipoAdeudo::OOFF : TipoAdeudo::Otro;
}

std::uint16_t NumeroDeDia(const std::optional<Dia>& dia) {
  if (!dia) return 0;
  const auto desde1970 = std::chrono::sys_days(*dia).time_since_epoch().count();
  return static_cast<std::uint16_t>(std::clamp<decltype(desde1970)>(desde1970, 1, UINT16_MAX));
}

Choques Repetidos::adeudo(const AdeudoVisto& adeudo) {
  Choques choques;
  const auto [mandato, nuevo] = mandatos_.poner(adeudo.mandato, adeudo.registro);
  if (nuevo) {
    mandato.cobro = adeudo.cobro;
  } else {
    cobros_.poner(mandato.cobro, mandato.registro);
    choques.cobro = cobros_.poner(adeudo.cobro, adeudo.registro);
  }
  choques.secuencia = secuencia(mandato, nuevo, adeudo);
  if (adeudo.cuenta == 0) return choques;
  const std::uint32_t cuenta = static_cast<std::uint32_t>(adeudo.cuenta) & kMarcaCuenta;
  if (mandato.cuenta == 0)
    mandato.cuenta = cuenta & kMarcaCuenta;
  else if (mandato.cuenta != cuenta)
    choques.otraCuenta = mandato.registro;

  if (adeudo.cargo == 0) return choques;
  const auto [entrada, nueva] = cargos_.poner(adeudo.cargo, adeudo.registro);
  const auto marca = static_cast<std::uint32_t>(adeudo.mandato);
  if (nueva)
    entrada.marca = marca;
  else if (entrada.marca != marca)
    choques.otroMandato = entrada.registro;
  return choques;
}

void Repetidos::anticipar(const AdeudoVisto& adeudo) const noexcept {
  mandatos_.anticipar(adeudo.mandato);
  cargos_.anticipar(adeudo.cargo);
}

/// OOFF es el único de su mandato; FRST, el primero; FNAL, el último. El orden es el de las fechas de cobro
/// y, en la misma, el del fichero.
std::uint64_t Repetidos::secuencia(Mandato& mandato, bool nuevo, const AdeudoVisto& adeudo) {
  using T = TipoAdeudo;
  const std::uint64_t otro = mandato.senalado != 0 ? mandato.senalado : mandato.registro;
  bool choca = false;
  if (!nuevo) {
    const bool seSabe = adeudo.dia != 0 && mandato.primero != 0;
    const bool tras = !seSabe || adeudo.dia >= mandato.primero;  // hay alguno antes que él
    const bool antes = seSabe && adeudo.dia < mandato.ultimo;    // hay alguno después
    choca = adeudo.tipo == T::OOFF || mandato.conOoff != 0 ||
            (adeudo.tipo == T::FRST && (tras || mandato.conFrst != 0)) ||
            (adeudo.tipo == T::FNAL && (antes || mandato.conFnal != 0)) || (mandato.conFnal != 0 && !antes) ||
            (mandato.conFrst != 0 && !tras);
  }
  if (adeudo.dia != 0) {
    if (mandato.primero == 0 || adeudo.dia < mandato.primero) mandato.primero = adeudo.dia;
    if (adeudo.dia > mandato.ultimo) mandato.ultimo = adeudo.dia;
  }
  if (adeudo.tipo == T::FRST || adeudo.tipo == T::FNAL || adeudo.tipo == T::OOFF) {
    if (mandato.senalado == 0) mandato.senalado = static_cast<std::uint32_t>(adeudo.registro);
    if (adeudo.tipo == T::FRST) mandato.conFrst = 1;
    if (adeudo.tipo == T::FNAL) mandato.conFnal = 1;
    if (adeudo.tipo == T::OOFF) mandato.conOoff = 1;
  }
  return choca ? otro : 0;
}

}  // namespace remesa
