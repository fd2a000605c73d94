#include "remesa/ReglasCuentas.h"

#include <algorithm>
#include <array>

#include "remesa/CuentaNacional.h"
#include "remesa/EntidadesEspanolas.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

constexpr std::string_view kEspana = "ES";
constexpr std::size_t kPais = 2, kAntesDeCuenta = 4, kEntidad = 4;

std::string_view PaisDe(std::string_view cuenta) {
  const std::string_view pais = cuenta.substr(0, kPais);
  const bool letras = std::ranges::all_of(pais, [](char c) { return c >= 'A' && c <= 'Z'; });
  return letras && pais.size() == kPais ? pais : std::string_view();
}

/// Los territorios cuyos bancos pueden tener el BIC con un país y las cuentas con otro.
bool MismoPais(std::string_view uno, std::string_view otro) {
  constexpr std::array<std::string_view, 3> kFamilias{"FR GF GP MQ RE YT PM BL MF NC PF WF TF MC",
                                                      "GB GG IM JE", "FI AX"};
  const auto esta = [](std::string_view familia, std::string_view pais) {
    return familia.find(pais) != std::string_view::npos;
  };
  return uno == otro || std::ranges::any_of(kFamilias, [&](std::string_view familia) {
           return esta(familia, uno) && esta(familia, otro);
         });
}

bool EsNacional(std::string_view adeudo) {
  return LeerCampo(adeudo, kClaseCuenta) == "B";
}

}  // namespace

std::string_view CuentaComparable(std::string_view cuenta) {
  constexpr std::size_t kIbanEspanol = 24;
  if (cuenta.size() != kIbanEspanol || !cuenta.starts_with(kEspana)) return cuenta;
  return EsCcc(cuenta.substr(kAntesDeCuenta)) ? cuenta.substr(kAntesDeCuenta) : cuenta;
}

std::string EntidadDeCuenta(std::string_view cuenta) {
  if (const std::string_view ccc = CuentaComparable(cuenta); EsCcc(ccc))
    return std::string(kEspana).append(ccc.substr(0, kEntidad));
  std::string entidad(PaisDe(cuenta));
  const std::string_view estructura = FormaIbanDe(entidad).estructura;
  if (estructura.starts_with("4a") || estructura.starts_with("4c"))
    entidad += cuenta.substr(std::min(kAntesDeCuenta, cuenta.size())).substr(0, kEntidad);
  return entidad;
}

std::string_view PaisDeCuenta(std::string_view adeudo) {
  return EsNacional(adeudo) ? kEspana : PaisDe(Recortar(LeerCampo(adeudo, kCuentaDeudor)));
}

bool CuentaForanea(std::string_view adeudo) {
  const std::string_view pais = PaisDeCuenta(adeudo);
  if (pais == kEspana) return false;
  const Zona zona = ZonaDe(pais);
  return zona == Zona::FueraDelEEE || zona == Zona::Incorporados;
}

void ComprobarCuenta(Anotador& anotador, const Campo& campo, std::string_view valor) {
  const auto mirarDigitos = [&](std::string_view ccc) {
    if (!ControlCcc(ccc)) anotador.campo(C::DigitosCcc, campo);
  };
  if (anotador.clase() == ClaseRegistro::Adeudo && EsNacional(anotador.registro())) {
    if (!EsCcc(valor)) return anotador.campo(C::Ccc, campo);
    anotador.campo(C::CuentaNacional, campo);
    return mirarDigitos(valor);
  }
  // La de antes de cambiar el mandato no dice de qué clase es.
  if (anotador.clase() == ClaseRegistro::Mandato && EsCcc(valor)) return mirarDigitos(valor);
  if (const Control control = ComprobarIban(valor); !control.correcto)
    return anotador.campo(C::Iban, campo, control.digitos);
  if (valor.starts_with(kEspana)) return mirarDigitos(valor.substr(kAntesDeCuenta));
  if (anotador.clase() == ClaseRegistro::Mandato) return;  // en ella ya no se cobra
  const Zona zona = ZonaDe(valor.substr(0, kPais));
  if (zona == Zona::Fuera) anotador.campo(C::FueraDeSEPA, campo);
  if (zona == Zona::Incorporados) anotador.campo(C::PaisIncorporado, campo);
}

void ComprobarBic(Anotador& anotador, const Campo& campo, std::string_view valor) {
  if (!EsBic(valor)) return anotador.campo(C::Bic, campo);
  constexpr std::size_t kDonde = 4;
  const std::string_view suyo = valor.substr(kDonde, kPais);
  const std::string_view pais = PaisDeCuenta(anotador.registro());
  if (!EsPaisConIban(pais) || (pais != kEspana && MismoPais(pais, suyo))) return;
  if (pais != kEspana) return anotador.campo(C::BicDeOtroPais, campo, std::string(pais));
  if (suyo != kEspana) return anotador.campo(C::BicNoEspanol, campo, std::string(kEspana));
  const std::string_view cuenta = CuentaComparable(Recortar(LeerCampo(anotador.registro(), kCuentaDeudor)));
  if (EsCcc(cuenta) && EsDeOtraEntidad(valor, cuenta.substr(0, kEntidad)))
    anotador.campo(C::OtroBanco, campo, std::string(cuenta.substr(0, kEntidad)));
}

}  // namespace remesa
