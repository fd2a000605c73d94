// Lo que de un registro ocupa varios elementos: identificadores, identificaciones, direcciones y bancos.

#include <algorithm>

#include "iso20022/Direccion.h"
#include "iso20022/Traduccion.h"
#include "iso20022/Valores.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/Validez.h"

namespace iso20022 {
namespace {

using C = remesa::ClaseRegistro;
using N = CodigoNota;
using remesa::Campo;
using remesa::EsCifra;
using remesa::LeerCampo;
using remesa::Posiciones;
using remesa::Recortar;

/// Un tipo de identificación que no dice ninguno.
bool SinTipo(std::string_view tipo) {
  return tipo.empty() || tipo == "0";
}

/// Las líneas de una dirección, en una.
std::string Entera(const RegistroLeido& registro, std::span<const Campo> campos) {
  std::string entera;
  for (const Campo& campo : campos) {
    const std::string_view linea = RecortarEscrito(LeerCampo(registro.bytes, campo.donde));
    if (!linea.empty()) entera.append(entera.empty() ? "" : ", ").append(linea);
  }
  return entera;
}

/// Un presentador español que es una persona: su NIF empieza por cifra o por X, Y, Z, K, L o M.
bool EsPersona(std::string_view identificador) {
  constexpr std::size_t kNif = 7;
  return identificador.starts_with("ES") && identificador.size() > kNif &&
         (EsCifra(identificador[kNif]) ||
          std::string_view("XYZKLM").find(identificador[kNif]) != std::string_view::npos);
}

}  // namespace

bool Traduccion::identificador(const Mirada& m, std::string_view valor) {
  const remesa::Control control = remesa::ComprobarIdentificador(valor);
  if (!control.correcto)
    anotarCampo(N::Identificador, m, valor, control.digitos);
  else if (TieneBarrasMalas(valor))
    anotarCampo(N::Barras, m, valor);
  else
    return true;
  return false;
}

void Traduccion::presentador(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if (!identificador(m, valor)) return;
  using P = PartePresentador;
  const bool persona = EsPersona(valor);
  poner(m, persona ? P::Persona : P::Organizacion, valor);
  poner(m, persona ? P::EsquemaPersona : P::EsquemaOrganizacion, kEsquema);
}

void Traduccion::acreedor(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if ((valor.empty() && !m.de.exigido) || !identificador(m, valor)) return;
  poner(m, ParteAcreedor::Identificador, valor);
  poner(m, ParteAcreedor::Esquema, kEsquema);
}

void Traduccion::identificacion(const Mirada& m) {
  using P = ParteIdentificacion;
  const auto& campos = m.entrada.campos;
  const auto leer = [&](std::size_t i) {
    return RecortarEscrito(LeerCampo(m.registro.bytes, campos[i].donde));
  };
  const std::string_view tipo = leer(0);
  const std::string_view entero = leer(1);
  const std::string_view emisor = leer(2);
  const auto anotarEn = [&](N codigo, std::size_t i, std::string_view valor, std::string cambio = {}) {
    anotar(codigo, m.registro, campos[i].donde, valor, std::move(cambio));
  };
  if (entero.empty() && emisor.empty() && SinTipo(tipo)) return;
  const char letra = entero.empty() ? ' ' : entero.front();
  const std::string_view valor = entero.empty() ? entero : RecortarEscrito(entero.substr(1));
  if (valor.empty() || std::string_view("AIJ").find(letra) == std::string_view::npos)
    return anotarEn(N::IdentificacionSinCodigo, 1, entero);
  const std::string_view debido = letra == 'J' ? "2" : "1";
  if (!SinTipo(tipo) && tipo != debido) anotarEn(N::IdentificacionTipo, 0, tipo, std::string(debido));
  if (letra == 'A') {
    if (!emisor.empty()) anotarEn(N::IdentificacionEmisor, 2, emisor);
    if (!EsBicDe(opciones_.version, valor)) return anotarEn(N::IdentificacionBic, 1, valor);
    return poner(m, P::Bic, valor);
  }
  mirarCaracteres(m, campos[1].donde, valor);
  poner(m, letra == 'I' ? P::Organizacion : P::Persona, valor);
  if (emisor.empty()) return;
  mirarCaracteres(m, campos[2].donde, emisor);
  poner(m, letra == 'I' ? P::EmisorOrganizacion : P::EmisorPersona, emisor);
}

void Traduccion::direccion(const Mirada& m) {
  const bool deDeudor = m.de.clase == C::Adeudo;
  const auto& campos = m.entrada.campos;
  const bool hay =
      !RecortarEscrito(LeerCampo(m.registro.bytes, {campos[0].donde.desde, campos[3].donde.hasta})).empty();
  const bool hace = deDeudor && fueraDelEEE_;
  const bool seQuiere = opciones_.direcciones == Direcciones::Todas ||
                        (opciones_.direcciones == Direcciones::Necesarias && hace);
  if (hay && seQuiere) return partirDireccion(m);
  if (hay && examina()) {
    ++resumidas_.direcciones;
    if (opciones_.detalle) anotarCampo(N::DireccionNoEscrita, m, Entera(m.registro, campos.first(4)));
  }
  if (hace) anotarCampo(N::SinDireccion, m, {});
}

void Traduccion::partirDireccion(const Mirada& m) {
  using P = ParteDireccion;
  constexpr std::size_t kMaxProvincia = 35;
  const auto& campos = m.entrada.campos;
  const auto leer = [&](std::size_t i) {
    return RecortarEscrito(LeerCampo(m.registro.bytes, campos[i].donde));
  };
  const std::string_view pais = leer(3);
  const std::string_view escrita = guardar(m.de.grado, remesa::EquivalenteSEPA(leer(1)));
  const auto poblacion = remesa::EsPais(pais) ? PartirPoblacion(escrita, pais == "ES") : std::nullopt;
  if (!poblacion) return anotarCampo(N::DireccionSinPartir, m, Entera(m.registro, campos.first(4)));
  for (std::size_t i = 0; i < 3; ++i)
    mirarCaracteres(m, campos[i].donde, leer(i));
  poner(m, P::CP, poblacion->cp);
  poner(m, P::Poblacion, poblacion->nombre);
  if (leer(2).size() > kMaxProvincia)
    anotar(N::Provincia, m.registro, campos[2].donde, leer(2));
  else
    poner(m, P::Provincia, leer(2));
  poner(m, P::Pais, pais);
  poner(m, P::Linea, leer(0));
}

void Traduccion::banco(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  const bool vale = EsBicDe(opciones_.version, valor);
  if (!vale && !valor.empty()) anotarCampo(N::BicNoValido, m, valor, std::string(kSinDato));
  if (!vale && fueraDelEEE_) anotarCampo(N::SinBic, m, valor);
  poner(m, vale ? ParteBanco::Bic : ParteBanco::Otro, vale ? valor : kSinDato);
}

void Traduccion::bancoAcreedor(const RegistroLeido& cabecera) {
  constexpr Posiciones kEntidad{5, 8};
  const std::string_view cuenta = Recortar(LeerCampo(cabecera.bytes, remesa::kCuentaAcreedor));
  const std::string_view entidad = LeerCampo(cuenta, kEntidad);
  std::string bic;
  if (cuenta.starts_with("ES") && opciones_.bicDe && remesa::SonCifras(entidad))
    bic = opciones_.bicDe(entidad);
  const bool vale = EsBicDe(opciones_.version, bic);
  if (!vale && !bic.empty()) anotar(N::BicAcreedor, cabecera, remesa::kCuentaAcreedor, entidad, bic);
  for (const Entrada& entrada : Tabla::Unica().entradas(Grado::Bloque)) {
    if (entrada.de->forma != Forma::BancoAcreedor) continue;
    const Mirada m{*entrada.de, entrada, cabecera};
    poner(m, vale ? ParteBanco::Bic : ParteBanco::Otro, vale ? guardar(Grado::Bloque, bic) : kSinDato);
  }
}

}  // namespace iso20022
