#include "iso20022/Composicion.h"

#include <algorithm>

#include "iso20022/Valores.h"
#include "remesa/Registro.h"
#include "remesa/Validez.h"

namespace iso20022 {
namespace {

using C = remesa::ClaseRegistro;
using remesa::EscribirCampo;
using remesa::kLongitudRegistro;
using remesa::LeerCampo;
using remesa::Posiciones;

constexpr std::string_view kVersionBasica = "19143";
constexpr Posiciones kTitular =
    remesa::PosicionesDe(remesa::tabla::kUltimos, "Nombre del titular de la domiciliación");
constexpr std::string_view kFinanciada = "FSDD";

std::string_view Comienzo(C clase) {
  switch (clase) {
    case C::Presentador:
      return "01";
    case C::Acreedor:
      return "02";
    default:
      return "03";
  }
}

std::string_view NumeroDato(C clase) {
  switch (clase) {
    case C::Presentador:
      return "001";
    case C::Acreedor:
      return "002";
    case C::Adeudo:
      return "003";
    case C::Ultimos:
      return "004";
    default:
      return "006";
  }
}

constexpr std::array kHechos{C::Presentador, C::Acreedor, C::Adeudo, C::Ultimos, C::Mandato};

std::string Vacio(C clase) {
  std::string registro(Comienzo(clase));
  registro.append(kVersionBasica).append(NumeroDato(clase)).resize(kLongitudRegistro, ' ');
  return registro;
}

constexpr int kFin = static_cast<int>(kLongitudRegistro) + 1;

/// ¿Se ha leído algo de los campos de una clase que están antes de una posición?
bool HayAlgo(Grado grado, C clase, const Leidos& leidos, int antesDe = kFin) {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado)) {
    if (entrada.de->clase != clase || entrada.de->donde.desde >= antesDe) continue;
    for (std::size_t i = 0; i < entrada.elementos; ++i)
      if (leidos.hay(entrada.primero + i)) return true;
  }
  return false;
}

}  // namespace

void Composicion::empezarBloque(const Leidos& bloque) {
  for (const C clase : kHechos)
    registro(clase) = {Vacio(clase)};
  pasar(Grado::Bloque, bloque);
  deBloque_ = registros_;
  bloqueHecho_ = false;
}

void Composicion::adeudo(const Leidos& adeudo, RemesaLeida& remesa) {
  const bool otroAcreedor = HayAlgo(Grado::Adeudo, C::Acreedor, adeudo);
  registro(C::Adeudo) = deBloque_[static_cast<std::size_t>(C::Adeudo)];
  registro(C::Mandato) = deBloque_[static_cast<std::size_t>(C::Mandato)];
  if (otroAcreedor) registro(C::Acreedor) = deBloque_[static_cast<std::size_t>(C::Acreedor)];
  // El último acreedor del adeudo quita de en medio al del bloque, entero.
  registro(C::Ultimos) = deBloque_[static_cast<std::size_t>(C::Ultimos)];
  if (registro(C::Ultimos).lleno && HayAlgo(Grado::Adeudo, C::Ultimos, adeudo, kTitular.desde))
    registro(C::Ultimos) = {Vacio(C::Ultimos)};
  EscribirCampo(registro(C::Adeudo).bytes, remesa::kImporteAdeudo, "00000000000");
  pasar(Grado::Adeudo, adeudo, otroAcreedor);

  if (!otroAcreedor && !bloqueHecho_) {
    bloque_ = remesa.bloque(deBloque_[static_cast<std::size_t>(C::Acreedor)].bytes);
    bloqueHecho_ = true;
  }
  const std::size_t bloque = otroAcreedor ? remesa.bloque(registro(C::Acreedor).bytes) : bloque_;
  const std::string& r003 = registro(C::Adeudo).bytes;
  remesa.anadirAdeudo(bloque, r003, ImporteDe(r003));
  for (const C clase : {C::Ultimos, C::Mandato}) {
    Registro& opcional = registro(clase);
    if (!opcional.lleno) continue;
    EscribirCampo(opcional.bytes, remesa::kReferencias, LeerCampo(r003, remesa::kReferencias));
    remesa.anadirOpcional(bloque, opcional.bytes);
  }
}

std::string Composicion::presentador(const Leidos& mensaje, std::string_view cabecera) {
  constexpr Posiciones kBancoReceptor{159, 166};
  constexpr Posiciones kBancoOficina{5, 12};
  registro(C::Presentador) = {Vacio(C::Presentador)};
  pasar(Grado::Mensaje, mensaje);
  const std::string_view cuenta = LeerCampo(cabecera, remesa::kCuentaAcreedor);
  const std::string_view banco = LeerCampo(cuenta, kBancoOficina);
  const bool espanola = cuenta.starts_with("ES") && remesa::SonCifras(banco);
  EscribirCampo(registro(C::Presentador).bytes, kBancoReceptor, espanola ? banco : "00000000");
  return registro(C::Presentador).bytes;
}

void Composicion::pasar(Grado grado, const Leidos& leidos, bool conAcreedor) {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado)) {
    if (entrada.de->clase == C::Desconocido || (entrada.de->clase == C::Acreedor && !conAcreedor)) continue;
    pasar({entrada, grado, leidos});
  }
}

void Composicion::pasar(const Paso& p) {
  const Posiciones donde = p.entrada.de->donde;
  const std::string_view valor = de(p);
  switch (p.entrada.de->forma) {
    case Forma::Direccion:
      return direccion(p);
    case Forma::Identificacion:
      return identificacion(p);
    case Forma::Presentador: {
      using P = PartePresentador;
      const auto persona = static_cast<std::size_t>(P::Persona);
      if (valor.empty()) return poner(p, persona, donde, p[persona]);
      sinSitio(p, persona);
      return poner(p, 0, donde, valor);
    }
    case Forma::IdMensaje:
      return poner(p, 0, donde,
                   valor.starts_with(kFinanciada) ? std::string("PRE").append(valor) : std::string(valor));
    case Forma::CuentaDeudor:
      if (!valor.empty()) EscribirCampo(registro(C::Adeudo).bytes, remesa::kClaseCuenta, "A");
      return poner(p, 0, donde, valor);
    case Forma::ReferenciaAdeudo:
      return poner(p, 0, donde, valor == kSinDato ? std::string_view() : valor);
    default:
      return poner(p, 0, donde, valor);
  }
}

void Composicion::direccion(const Paso& p) {
  using P = ParteDireccion;
  const auto parte = [](P cual) { return static_cast<std::size_t>(cual); };
  const auto juntar = [&](P una, P otra) {
    std::string junto(p[parte(una)]);
    if (!junto.empty() && !p[parte(otra)].empty()) junto += ' ';
    return junto.append(p[parte(otra)]);
  };
  const auto& campos = p.entrada.campos;
  const std::string via = juntar(P::Via, P::Numero);
  const std::string poblacion = juntar(P::CP, P::Poblacion);
  const bool conLinea = via.empty();
  // Sin vía ni población aparte, las líneas son las del Cuaderno; con ellas, las repiten o no caben.
  poner(p, parte(conLinea ? P::Linea : P::Via), campos[0].donde, conLinea ? p[parte(P::Linea)] : via);
  if (!conLinea) sinSitio(p, parte(P::Linea));
  poner(p, parte(poblacion.empty() ? P::Linea2 : P::Poblacion), campos[1].donde,
        poblacion.empty() ? p[parte(P::Linea2)] : poblacion);
  if (!poblacion.empty()) sinSitio(p, parte(P::Linea2));
  poner(p, parte(P::Provincia), campos[2].donde, p[parte(P::Provincia)]);
  poner(p, parte(P::Pais), campos[3].donde, p[parte(P::Pais)]);
}

void Composicion::identificacion(const Paso& p) {
  using P = ParteIdentificacion;
  struct Modo {
    P parte;
    char tipo, letra;
  };
  constexpr std::array kModos{Modo{P::Bic, '1', 'A'}, Modo{P::Organizacion, '1', 'I'},
                              Modo{P::Persona, '2', 'J'}};
  const auto& campos = p.entrada.campos;
  const auto emisorDe = [](const Modo& modo) { return static_cast<std::size_t>(modo.parte) + 1; };
  bool hecho = false;
  for (const Modo& modo : kModos) {
    const auto parte = static_cast<std::size_t>(modo.parte);
    const bool conEmisor = modo.parte != P::Bic;
    if (p[parte].empty() || hecho) {
      sinSitio(p, parte);
      if (conEmisor) sinSitio(p, emisorDe(modo));
      continue;
    }
    hecho = true;
    poner(p, parte, campos[0].donde, std::string_view(&modo.tipo, 1));
    poner(p, parte, campos[1].donde, std::string(1, modo.letra).append(p[parte]));
    if (conEmisor) poner(p, emisorDe(modo), campos[2].donde, p[emisorDe(modo)]);
  }
}

void Composicion::poner(const Paso& p, std::size_t parte, Posiciones donde, std::string_view valor) {
  if (valor.empty()) return;
  const auto ancho = static_cast<std::size_t>(donde.longitud());
  if (valor.size() > ancho)
    avisar_(CodigoAviso::Cortado, p.grado, p.entrada.primero + parte, valor, valor.substr(0, ancho));
  Registro& r = registro(p.entrada.de->clase);
  std::string campo(valor.substr(0, ancho));
  campo.resize(ancho, ' ');  // lo del bloque, donde el adeudo dice otra cosa
  EscribirCampo(r.bytes, donde, campo);
  r.lleno = true;
}

void Composicion::sinSitio(const Paso& p, std::size_t parte) {
  if (!p[parte].empty()) avisar_(CodigoAviso::SinSitio, p.grado, p.entrada.primero + parte, p[parte], {});
}

}  // namespace iso20022
