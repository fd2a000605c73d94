#include "comunes/herramientas/Sumadora.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace herramientas {
namespace {

using Fallo = Sumadora::Fallo;

// Un valor no llega a 10^18: el producto de dos y un dividendo con seis decimales más caben en 128 bits.
__extension__ typedef __int128 Ancho;  // NOLINT(modernize-use-using): -Wpedantic solo lo admite así
constexpr Millonesimas kLimite = 1'000'000'000'000'000'000;
constexpr Millonesimas kUno = 1'000'000;

constexpr Millonesimas potencia10(int exponente) {
  Millonesimas valor = 1;
  for (; exponente > 0; --exponente)
    valor *= 10;
  return valor;
}

/// La mitad, hacia fuera del cero.
Ancho dividir(Ancho a, Ancho b) {
  const bool negativo = (a < 0) != (b < 0);
  if (a < 0) a = -a;
  if (b < 0) b = -b;
  const Ancho cociente = (2 * a + b) / (2 * b);
  return negativo ? -cociente : cociente;
}

std::optional<Millonesimas> siCabe(Ancho valor) {
  if (valor <= -kLimite || valor >= kLimite) return std::nullopt;
  return static_cast<Millonesimas>(valor);
}

/// numerador / denominador, en unidades, con `decimales`.
std::optional<Millonesimas> cociente(Ancho numerador, Ancho denominador, int decimales) {
  return siCabe(dividir(numerador * potencia10(decimales), denominador) *
                potencia10(kMaxDecimales - decimales));
}

std::optional<Millonesimas> redondear(Millonesimas valor, int decimales) {
  return cociente(valor, kUno, decimales);
}

std::optional<Millonesimas> operar(Sumadora::Orden orden, Millonesimas a, Millonesimas b, int decimales,
                                   bool porcentaje) {
  const int cien = porcentaje ? 100 : 1;
  if (orden == Sumadora::Orden::Entre) return cociente(static_cast<Ancho>(a) * cien, b, decimales);
  // El producto tiene doce decimales y hasta 36 cifras: se divide sin multiplicarlo antes.
  const Ancho divisor = static_cast<Ancho>(potencia10(2 * kMaxDecimales - decimales)) * cien;
  return siCabe(dividir(static_cast<Ancho>(a) * b, divisor) * potencia10(kMaxDecimales - decimales));
}

char16_t signoDe(Sumadora::Orden orden) {
  return orden == Sumadora::Orden::Por ? u'×' : u'÷';
}

}  // namespace

Millonesimas Sumadora::valor() const {
  if (tecleado_.empty()) return valor_;
  const bool negativo = tecleado_.front() == '-';
  std::string cifras = tecleado_.substr(negativo ? 1 : 0);
  const auto punto = std::min(cifras.find('.'), cifras.size());
  std::string decimales = punto < cifras.size() ? cifras.substr(punto + 1) : std::string();
  decimales.resize(kMaxDecimales, '0');
  const Millonesimas absoluto = std::strtoll((cifras.substr(0, punto) + decimales).c_str(), nullptr, 10);
  return negativo ? -absoluto : absoluto;
}

Fallo Sumadora::teclear(char tecla) {
  if (tecleado_.empty()) tecleado_ = "0";
  const auto punto = tecleado_.find('.');
  if (tecla == '.') {
    if (punto != std::string::npos) return Fallo::NoCabe;
  } else {
    const auto inicio = std::size_t{tecleado_.front() == '-'};
    const bool cabe = punto == std::string::npos ? tecleado_.size() - inicio < kMaxEnteras
                                                 : tecleado_.size() - punto - 1 < kMaxDecimales;
    if (!cabe) return Fallo::NoCabe;
    if (tecleado_.substr(inicio) == "0") tecleado_.resize(inicio);
  }
  tecleado_ += tecla;
  operando_ = true;
  trasSubtotal_ = false;
  return Fallo::Ninguno;
}

void Sumadora::retroceder() {
  if (tecleado_.empty()) return;
  tecleado_.pop_back();
  if (tecleado_.empty() || tecleado_ == "-") mostrar(0, false);
}

Fallo Sumadora::poner(Millonesimas valor) {
  if (!siCabe(valor)) return Fallo::Desbordamiento;
  tecleado_ = std::to_string(std::abs(valor));
  if (tecleado_.size() <= kMaxDecimales) tecleado_.insert(0, kMaxDecimales + 1 - tecleado_.size(), '0');
  tecleado_.insert(tecleado_.size() - kMaxDecimales, ".");
  tecleado_.erase(tecleado_.find_last_not_of('0') + 1);
  if (tecleado_.back() == '.') tecleado_.pop_back();
  if (valor < 0) tecleado_.insert(0, "-");
  operando_ = true;
  trasSubtotal_ = false;
  return Fallo::Ninguno;
}

void Sumadora::mostrar(Millonesimas valor, bool operando) {
  tecleado_.clear();
  valor_ = valor;
  operando_ = operando;
}

void Sumadora::apuntarFactor(Millonesimas valor, char16_t signo) {
  int decimales = kMaxDecimales;
  while (decimales > decimales_ && valor % potencia10(kMaxDecimales - decimales + 1) == 0)
    --decimales;
  cinta_.push_back({valor, decimales, signo});
}

Fallo Sumadora::orden(Orden orden) {
  Fallo fallo = Fallo::Ninguno;
  switch (orden) {
    case Orden::Mas:
    case Orden::Menos:
      fallo = sumar(orden == Orden::Menos);
      break;
    case Orden::Por:
    case Orden::Entre:
      fallo = encadenar(orden);
      break;
    case Orden::Igual:
    case Orden::Porcentaje:
      fallo = cerrar(orden == Orden::Porcentaje);
      break;
    case Orden::Subtotal:
    case Orden::Total:
      fallo = recoger(orden == Orden::Total);
      break;
    case Orden::Signo:
      if (tecleado_.empty())
        mostrar(-valor_, true);
      else if (tecleado_.front() == '-')
        tecleado_.erase(0, 1);
      else
        tecleado_.insert(0, "-");
      break;
    case Orden::Borrar:
      borrar();
      break;
  }
  if (fallo == Fallo::Ninguno) trasSubtotal_ = orden == Orden::Subtotal;
  return fallo;
}

Fallo Sumadora::intro() {
  if (pendiente_ != Orden::Igual || !tecleado_.empty()) return orden(Orden::Igual);
  if (partidas_ == 0) return Fallo::Ninguno;
  return orden(trasSubtotal_ ? Orden::Total : Orden::Subtotal);
}

Fallo Sumadora::dividirPorCero() {
  mostrar(primero_, false);
  return Fallo::DivisionPorCero;
}

Fallo Sumadora::sumar(bool resta) {
  const Millonesimas numero = valor();
  std::optional<Millonesimas> sumando;
  if (pendiente_ == Orden::Igual) {
    sumando = redondear(numero, decimales_);
  } else {
    if (!operando_) return Fallo::FaltaNumero;
    if (pendiente_ == Orden::Entre && numero == 0) return dividirPorCero();
    sumando = operar(pendiente_, primero_, numero, decimales_, false);
  }
  if (!sumando) return Fallo::Desbordamiento;
  const auto suma = siCabe(static_cast<Ancho>(suma_) + (resta ? -*sumando : *sumando));
  if (!suma) return Fallo::Desbordamiento;
  if (pendiente_ != Orden::Igual) apuntarFactor(numero, u'=');
  apuntar(*sumando, resta ? u'−' : u'+');
  suma_ = *suma;
  ++partidas_;
  pendiente_ = Orden::Igual;
  mostrar(*sumando, false);
  return Fallo::Ninguno;
}

Fallo Sumadora::encadenar(Orden orden) {
  // Sin segundo número solo se cambia de operación.
  const bool cambia = pendiente_ != Orden::Igual && !operando_;
  const Millonesimas numero = cambia ? primero_ : valor();
  Millonesimas primero = numero;
  if (pendiente_ != Orden::Igual && !cambia) {
    if (pendiente_ == Orden::Entre && numero == 0) return dividirPorCero();
    const auto parcial = operar(pendiente_, primero_, numero, kMaxDecimales, false);
    if (!parcial) return Fallo::Desbordamiento;
    primero = *parcial;
  }
  apuntarFactor(numero, signoDe(orden));
  primero_ = primero;
  pendiente_ = orden;
  mostrar(primero, false);
  return Fallo::Ninguno;
}

Fallo Sumadora::cerrar(bool porcentaje) {
  const Millonesimas numero = valor();
  std::optional<Millonesimas> resultado;
  if (pendiente_ != Orden::Igual) {
    if (!operando_) return Fallo::FaltaNumero;
    if (pendiente_ == Orden::Entre && numero == 0) return dividirPorCero();
    resultado = operar(pendiente_, primero_, numero, decimales_, porcentaje);
  } else if (!porcentaje) {
    return tecleado_.empty() ? Fallo::Ninguno : Fallo::NumeroSuelto;
  } else if (partidas_ == 0) {
    return Fallo::SinBase;
  } else {
    resultado = operar(Orden::Por, suma_, numero, decimales_, true);
  }
  if (!resultado) return Fallo::Desbordamiento;
  apuntarFactor(numero, porcentaje ? u'%' : u'=');
  apuntar(*resultado, kResultado);
  pendiente_ = Orden::Igual;
  mostrar(*resultado, false);
  return Fallo::Ninguno;
}

Fallo Sumadora::recoger(bool total) {
  if (!tecleado_.empty()) return Fallo::NumeroSuelto;
  apuntar(suma_, total ? kTotal : kSubtotal);
  mostrar(suma_, true);
  if (total) {
    suma_ = 0;
    partidas_ = 0;
  }
  return Fallo::Ninguno;
}

void Sumadora::borrar() {
  if (!tecleado_.empty()) return mostrar(0, false);
  if (pendiente_ != Orden::Igual) {
    apuntarFactor(primero_, kBorrado);
    pendiente_ = Orden::Igual;
  } else if (partidas_ != 0) {
    apuntar(suma_, kBorrado);
    suma_ = 0;
    partidas_ = 0;
  }
  mostrar(0, false);
}

Fallo Sumadora::ponerDecimales(int decimales) {
  decimales = std::clamp(decimales, 2, kMaxDecimales);
  const auto suma = redondear(suma_, decimales);
  const auto valor = redondear(valor_, decimales);
  if (!suma || !valor) return Fallo::Desbordamiento;
  if (*suma != suma_) apuntar(*suma - suma_, kRedondeo);
  suma_ = *suma;
  valor_ = *valor;
  decimales_ = decimales;
  return Fallo::Ninguno;
}

void Sumadora::cintaNueva() {
  const int decimales = decimales_;
  *this = Sumadora();
  decimales_ = decimales;
}

}  // namespace herramientas
