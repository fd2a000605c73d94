#include "remesa/ReglasIdentificacion.h"

#include "remesa/NumeroFiscal.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

/// Las letras con que puede empezar el código, separadas por un blanco.
std::string_view Letras(std::string_view tipo) {
  return tipo == "1" ? "A I" : tipo == "2" ? "J" : "A I J";
}

}  // namespace

void ReglasIdentificacion::tipo(const Campo& campo, std::string_view valor, bool admitido) {
  campoTipo_ = &campo;
  tipo_ = admitido ? valor : std::string_view();
  codigo_ = {};
  admitido_ = admitido;
}

void ReglasIdentificacion::codigo(const Campo& campo, std::string_view valor) {
  codigo_ = valor;
  if (valor.empty()) {
    if (!tipo_.empty()) anotador_.campo(C::ObligatorioVacio, campo, std::string(Letras(tipo_)));
  } else {
    mirarCodigo(campo);
  }
}

void ReglasIdentificacion::mirarCodigo(const Campo& campo) {
  const std::string_view letras = Letras(tipo_);
  const std::string_view letra = codigo_.substr(0, 1), resto = Recortar(codigo_.substr(1));
  if (tipo_.empty() && admitido_ && campoTipo_ != nullptr)
    anotador_.campo(C::ObligatorioVacio, *campoTipo_,
                    letra == "J"                   ? "2"
                    : letra == "A" || letra == "I" ? "1"
                                                   : "1 2");
  if (letra == " " || letras.find(letra) == std::string_view::npos)
    anotador_.campo(C::Identificacion, campo, std::string(letras));
  else if (resto.empty())
    anotador_.campo(C::Identificacion, campo, std::string(letra));
  else if (letra == "A" && !EsBic(resto))
    anotador_.campo(C::Identificacion, campo, "A+BIC I");
  // De los deudores, que se identifican con su NIF; el último acreedor puede hacerlo con lo que quiera.
  else if (campo.donde != kCodigoUltimoAcreedor && ControlFiscalErrado(resto))
    anotador_.campo(C::NumeroFiscal, campo, ControlFiscal(resto.substr(0, resto.size() - 1)));
}

void ReglasIdentificacion::emisor(const Campo& campo, std::string_view valor) {
  if (valor.empty()) return;
  // Solo lo tiene un código que no sea un BIC. Si falta el código y hay tipo, ya se ha dicho del código.
  const bool suelto = codigo_.empty() && tipo_.empty();
  if (suelto || codigo_.starts_with('A')) anotador_.campo(C::Identificacion, campo);
}

}  // namespace remesa
