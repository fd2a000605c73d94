#include "iso20022/Traduccion.h"

#include <algorithm>
#include <cassert>

#include "iso20022/Valores.h"
#include "remesa/Calendario.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/CuentaNacional.h"
#include "remesa/PaisesSEPA.h"
#include "remesa/SEPA.h"
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

// Lo que un registro genera (fechas, importes, un IBAN): de sobra, para que no se mueva.
constexpr std::size_t kDeposito = 1024;
constexpr std::size_t kMaxEjemplos = 3;

bool EsCero(std::string_view texto) {
  return texto.find_first_not_of('0') == std::string_view::npos;
}

Alcance AlcanceDe(C clase) {
  return clase == C::Presentador ? Alcance::Remesa : clase == C::Acreedor ? Alcance::Bloque : Alcance::Adeudo;
}

std::string FechaIso(std::string_view fecha) {
  return std::string(LeerCampo(fecha, {1, 4}))
      .append("-")
      .append(LeerCampo(fecha, {5, 6}))
      .append("-")
      .append(LeerCampo(fecha, {7, 8}));
}

constexpr std::string_view kPrefijo = "PRE";

/// "hh:mm:ss" de una identificación de fichero (PRE, AAAAMMDD, HHMMSS…).
std::string Hora(std::string_view identificacion) {
  const std::string_view fecha = LeerCampo(identificacion, {4, 11});
  const std::string_view hora = LeerCampo(identificacion, {12, 17});
  const auto menorQue = [&](Posiciones donde, std::string_view tope) {
    return LeerCampo(hora, donde) < tope;
  };
  if (!identificacion.starts_with(kPrefijo) || !remesa::LeerFecha(fecha) || hora.size() != 6 ||
      !remesa::SonCifras(hora) || !menorQue({1, 2}, "24") || !menorQue({3, 4}, "60") ||
      !menorQue({5, 6}, "60"))
    return "00:00:00";
  return std::string(LeerCampo(hora, {1, 2}))
      .append(":")
      .append(LeerCampo(hora, {3, 4}))
      .append(":")
      .append(LeerCampo(hora, {5, 6}));
}

}  // namespace

Traduccion::Traduccion(const OpcionesExportacion& opciones, ReceptorNotas recibir, std::size_t fuente)
    : opciones_(opciones), recibir_(std::move(recibir)), fuente_(fuente) {
  for (const Grado grado : {Grado::Mensaje, Grado::Bloque, Grado::Adeudo}) {
    Datos& datos = datos_[static_cast<std::size_t>(grado)];
    datos.valores.resize(Tabla::Unica().elementos(grado).size());
    datos.deposito.reserve(kDeposito);
  }
  fijos();
}

/// Lo que todos los bloques dicen igual.
void Traduccion::fijos() {
  for (const Entrada& entrada : Tabla::Unica().entradas(Grado::Bloque))
    if (entrada.de->forma == Forma::Fijo) sitios(Grado::Bloque)[entrada.primero] = entrada.de->fijo;
}

bool Traduccion::presentador(const RegistroLeido& registro) {
  dueno_ = nullptr;
  empezar(Grado::Mensaje);
  mirarVersion(registro);
  pasar(Grado::Mensaje, C::Presentador, registro);
  mirarLibre(registro, C::Presentador);
  return !malo_;
}

bool Traduccion::cabecera(const RegistroLeido& registro) {
  dueno_ = nullptr;
  empezar(Grado::Bloque);
  fijos();
  mirarVersion(registro);
  pasar(Grado::Bloque, C::Acreedor, registro);
  bancoAcreedor(registro);
  mirarLibre(registro, C::Acreedor);
  return !malo_;
}

bool Traduccion::adeudo(const AdeudoLeido& adeudo) {
  const RegistroLeido& registro = adeudo.de(C::Adeudo);
  dueno_ = &registro;
  empezar(Grado::Adeudo);
  if (examina()) mirarVersion(registro);
  const std::string_view cuenta = Recortar(LeerCampo(registro.bytes, remesa::kCuentaDeudor));
  const std::string_view pais = cuenta.substr(0, 2);
  fueraDelEEE_ =
      LeerCampo(registro.bytes, remesa::kClaseCuenta) != "B" && !remesa::EnEEE(pais) && remesa::EsPais(pais);
  for (const Entrada& entrada : Tabla::Unica().entradas(Grado::Bloque, C::Adeudo))
    sitios(Grado::Bloque)[entrada.primero] = {};
  pasar(Grado::Bloque, C::Adeudo, registro);
  pasar(Grado::Adeudo, C::Adeudo, registro);
  mirarLibre(registro, C::Adeudo);
  for (const C clase : {C::Ultimos, C::Mandato}) {
    if (!adeudo.hay(clase)) continue;
    const RegistroLeido& opcional = adeudo.de(clase);
    pasar(Grado::Adeudo, clase, opcional);
    const std::string_view suyo = LeerCampo(opcional.bytes, {remesa::kReferencias.hasta + 1, 600});
    if (Recortar(suyo).empty()) anotar(N::OpcionalVacio, opcional, {0, 0}, {});
    mirarLibre(opcional, clase);
  }
  const auto algo = [this](const Entrada& entrada) {
    return std::ranges::any_of(valores(Grado::Adeudo).subspan(entrada.primero, entrada.elementos),
                               [](std::string_view valor) { return !valor.empty(); });
  };
  if (adeudo.hay(C::Mandato) && std::ranges::any_of(Tabla::Unica().entradas(Grado::Adeudo, C::Mandato), algo))
    poner(Grado::Adeudo, Forma::CambioMandato, "true");
  if (adeudo.hay(C::Balanza)) anotar(N::Balanza, adeudo.de(C::Balanza), {0, 0}, {});
  return !malo_;
}

void Traduccion::empezar(Grado grado) {
  Datos& datos = datos_[static_cast<std::size_t>(grado)];
  std::ranges::fill(datos.valores, std::string_view());
  datos.deposito.clear();
  malo_ = false;
}

void Traduccion::pasar(Grado grado, C clase, const RegistroLeido& registro) {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado, clase))
    pasar({*entrada.de, entrada, registro});
}

void Traduccion::pasar(const Mirada& m) {
  switch (m.de.forma) {
    case Forma::Texto:
      return texto(m);
    case Forma::Referencia:
    case Forma::ReferenciaAdeudo:
    case Forma::IdMensaje:
      return referencia(m, valorDe(m));
    case Forma::Codigo:
      return codigo(m);
    case Forma::TipoAdeudo:
      return tipo(m);
    case Forma::Fecha:
      return fecha(m);
    case Forma::FechaHora:
      return fechaHora(m);
    case Forma::Importe:
      return importe(m);
    case Forma::Cuenta:
    case Forma::CuentaDeudor:
      return cuenta(m);
    case Forma::EntidadOriginal:
      return entidadOriginal(m);
    case Forma::Presentador:
      return presentador(m);
    case Forma::Acreedor:
      return acreedor(m);
    case Forma::Identificacion:
      return identificacion(m);
    case Forma::Direccion:
      return direccion(m);
    case Forma::Banco:
      return banco(m);
    default:  // lo demás no sale de un campo
      return;
  }
}

void Traduccion::texto(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if (valor.empty()) {
    if (m.de.exigido) anotarCampo(N::Vacio, m, {});
    return;
  }
  mirarCaracteres(m, m.de.donde, valor);
  poner(m, valor);
}

void Traduccion::referencia(const Mirada& m, std::string_view valor) {
  if (valor.empty()) {
    if (m.de.exigido) anotarCampo(N::Vacio, m, {});
    if (m.de.forma == Forma::ReferenciaAdeudo) {
      anotarCampo(N::SinReferencia, m, {}, std::string(kSinDato));
      poner(m, kSinDato);
    }
    return;
  }
  mirarCaracteres(m, m.de.donde, valor);
  // El de una remesa financiada.
  if (m.de.forma == Forma::IdMensaje && valor.starts_with("PREFSDD")) valor.remove_prefix(kPrefijo.size());
  if (examina() && TieneBarrasMalas(valor)) anotarCampo(N::Barras, m, valor);
  poner(m, valor);
}

void Traduccion::codigo(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if (valor.empty()) return;
  if (!EsCodigo(valor)) return anotarCampo(N::CodigoProposito, m, valor);
  // De la categoría depende el grupo: sigue valiendo cuando el registro ya no está.
  poner(m, guardar(Grado::Adeudo, valor));
}

void Traduccion::tipo(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if (!EsTipoAdeudo(valor)) return anotarCampo(N::TipoAdeudo, m, valor);
  poner(m, valor);
}

void Traduccion::fecha(const Mirada& m) {
  const std::string_view valor = LeerCampo(m.registro.bytes, m.de.donde);
  if (examina() && !remesa::LeerFecha(valor)) return anotarCampo(N::Fecha, m, Recortar(valor));
  poner(m, guardar(m.de.grado, FechaIso(valor)));
}

void Traduccion::fechaHora(const Mirada& m) {
  const std::string_view valor = LeerCampo(m.registro.bytes, m.de.donde);
  if (!remesa::LeerFecha(valor)) return anotarCampo(N::Fecha, m, Recortar(valor));
  constexpr Posiciones kIdentificacion =
      remesa::PosicionesDe(remesa::tabla::kPresentador, "Identificación del fichero");
  poner(m, guardar(m.de.grado, FechaIso(valor) + "T" + Hora(LeerCampo(m.registro.bytes, kIdentificacion))));
}

void Traduccion::importe(const Mirada& m) {
  const std::string_view valor = LeerCampo(m.registro.bytes, m.de.donde);
  if (examina() &&
      (static_cast<int>(valor.size()) != m.de.donde.longitud() || !remesa::SonCifras(valor) || EsCero(valor)))
    return anotarCampo(N::Importe, m, Recortar(valor));
  poner(m, guardar(m.de.grado, EscribirImporte(ImporteDe(m.registro.bytes))));
}

void Traduccion::cuenta(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  const bool deDeudor = m.de.forma == Forma::CuentaDeudor;
  if (valor.empty()) {
    if (m.de.exigido) anotarCampo(N::Iban, m, valor);
    return;
  }
  const std::string_view letra = deDeudor ? LeerCampo(m.registro.bytes, remesa::kClaseCuenta) : "A";
  // La de antes de cambiar el mandato no dice de qué clase es.
  if (letra == "B" || (m.de.clase == C::Mandato && remesa::EsCcc(valor))) return cuentaNacional(m, valor);
  if (examina())
    if (const remesa::Control control = remesa::ComprobarIban(valor); !control.correcto)
      return anotarCampo(N::Iban, m, valor, control.digitos);
  if (letra != "A") anotar(N::ClaseCuenta, m.registro, remesa::kClaseCuenta, Recortar(letra));
  poner(m, valor);
}

void Traduccion::cuentaNacional(const Mirada& m, std::string_view ccc) {
  if (examina() && !remesa::ControlCcc(ccc)) return anotarCampo(N::Ccc, m, ccc);
  std::string iban = remesa::IbanDeCcc(ccc);
  poner(m, guardar(m.de.grado, iban));
  anotarCampo(N::CccConvertido, m, ccc, std::move(iban));
}

// Va detrás de la cuenta original, a la que quita de en medio: cambiar de banco ya dice que cambia la cuenta.
void Traduccion::entidadOriginal(const Mirada& m) {
  const std::string_view valor = valorDe(m);
  if (valor.empty()) return;
  if (valor != kCambioDeCuenta) return anotarCampo(N::EntidadOriginal, m, valor);
  std::string_view& cuenta = sitios(m.de.grado)[m.entrada.primero - 1];
  constexpr Posiciones kCuentaOriginal =
      remesa::PosicionesDe(remesa::tabla::kMandato, "Cuenta del deudor original");
  if (!cuenta.empty()) anotar(N::CuentaConCambio, m.registro, kCuentaOriginal, cuenta);
  cuenta = {};
  poner(m, kCambioDeCuenta);
}

void Traduccion::mirarVersion(const RegistroLeido& registro) {
  const std::string_view version = LeerCampo(registro.bytes, remesa::kVersion);
  for (const std::string_view admitida : {"19143", "19154", "19445"})
    if (version == admitida) return;
  anotar(N::Version, registro, remesa::kVersion, Recortar(version));
}

void Traduccion::mirarLibre(const RegistroLeido& registro, C clase) {
  if (!examina()) return;
  const Campo& libre = remesa::CamposDe(clase).back();
  const std::string_view valor = Recortar(LeerCampo(registro.bytes, libre.donde));
  if (!valor.empty()) anotar(N::Libre, registro, libre.donde, valor);
}

void Traduccion::mirarCaracteres(const Mirada& m, Posiciones donde, std::string_view valor) {
  if (!examina() || remesa::BuscarCaracter(valor, 0) == valor.size()) return;
  ++resumidas_.caracteres;
  auto& ejemplos = resumidas_.ejemplos;
  const bool ejemplo = ejemplos.size() < kMaxEjemplos &&
                       std::ranges::none_of(ejemplos, [&](const auto& otro) { return otro.first == valor; });
  if (!ejemplo && !opciones_.detalle) return;
  std::string escrito = remesa::EquivalenteSEPA(valor);
  if (ejemplo) ejemplos.emplace_back(valor, escrito);
  if (opciones_.detalle) anotar(N::Caracteres, m.registro, donde, valor, std::move(escrito));
}

std::string_view Traduccion::valorDe(const Mirada& m) const {
  return RecortarEscrito(LeerCampo(m.registro.bytes, m.de.donde));
}

std::string_view Traduccion::valor(Grado grado, Forma forma) const {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado))
    if (entrada.de->forma == forma) return valores(grado)[entrada.primero];
  return {};
}

void Traduccion::poner(Grado grado, Forma forma, std::string_view valor) {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado))
    if (entrada.de->forma == forma) {
      sitios(grado)[entrada.primero] = guardar(grado, valor);
      return;
    }
}

std::string_view Traduccion::guardar(Grado grado, std::string_view texto) {
  std::string& deposito = datos_[static_cast<std::size_t>(grado)].deposito;
  assert(deposito.size() + texto.size() <= kDeposito);
  const std::size_t desde = deposito.size();
  deposito += texto;
  return std::string_view(deposito).substr(desde);
}

void Traduccion::anotarCampo(N codigo, const Mirada& m, std::string_view valor, std::string cambio) {
  anotar(codigo, m.registro, m.de.donde, valor, std::move(cambio));
}

void Traduccion::anotar(N codigo, const RegistroLeido& registro, Posiciones donde, std::string_view valor,
                        std::string cambio, std::uint64_t cuenta) {
  malo_ = malo_ || EsError(codigo);
  if (!examina()) return;
  Nota nota{codigo};
  nota.clase = remesa::Clase(registro.bytes);
  nota.alcance = AlcanceDe(nota.clase);
  nota.fuente = fuente_;
  nota.registro = registro.numero;
  nota.fila = registro.fila;
  nota.donde = donde;
  for (const Campo& campo : remesa::CamposDe(nota.clase))
    if (campo.donde == donde) nota.campo = &campo;
  nota.valor = valor;
  nota.cambio = std::move(cambio);
  nota.cuenta = cuenta;
  if (dueno_ != nullptr) {
    nota.deudor = Recortar(LeerCampo(dueno_->bytes, remesa::kNombreDeudor));
    nota.referencia = Recortar(LeerCampo(dueno_->bytes, remesa::kReferenciaAdeudo));
  }
  recibir_(std::move(nota));
}

}  // namespace iso20022
