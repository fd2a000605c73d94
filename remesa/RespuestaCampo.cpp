#include "remesa/RespuestaCampo.h"

#include "remesa/Anotador.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/Correccion.h"
#include "remesa/ReglasCampos.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

std::string Mayusculas(std::string_view texto) {
  std::string resultado(texto);
  for (char& c : resultado)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return resultado;
}

std::string SinBlancos(std::string texto) {
  std::erase(texto, ' ');
  return texto;
}

/// En mayúsculas y, si hace falta, sin blancos; nada si así tampoco vale.
template <class Vale>
std::optional<std::string> Limpio(std::string_view valor, const Vale& vale) {
  const std::string mayusculas = Mayusculas(valor);
  if (vale(mayusculas)) return mayusculas;
  std::string junto = SinBlancos(mayusculas);
  if (vale(junto)) return junto;
  return std::nullopt;
}

std::optional<std::string> Cuenta(const Hallazgo& h, std::string_view valor) {
  if (h.codigo == C::Ccc) return Limpio(valor, EsCcc);
  // La de antes de cambiar el mandato puede ser nacional, y no dice de qué clase es.
  return Limpio(valor, [&](std::string_view cuenta) {
    return ComprobarIban(cuenta).correcto || (h.clase == ClaseRegistro::Mandato && EsCcc(cuenta));
  });
}

std::optional<std::string> Admitidos(const Campo& campo, std::string_view bytes) {
  const std::string cambiado = EquivalenteSEPA(bytes);
  const std::string_view valor = Recortar(cambiado);
  if (valor.empty()) return std::nullopt;  // no decía nada: falta el dato
  const bool conLetra = campo.valor == ValorCampo::CodigoIdentificacion;
  if (conLetra && Recortar(valor.substr(1)).empty()) return std::nullopt;  // quedaría solo la letra
  return std::string(valor);
}

}  // namespace

bool PuedeCorregirse(C codigo) {
  switch (codigo) {
    case C::Longitud:
    case C::NumeroDato:
    case C::FueraDeOrden:
    case C::ObligatorioVacio:  // los que se sacan de otro registro, y los totales
    case C::NoNumerico:
    case C::FechaInexistente:
    case C::Iban:
    case C::Ccc:
    case C::IdentificadorAcreedor:
    case C::SinAlinear:
    case C::ReferenciasDistintas:
    case C::OtraCabecera:
    case C::TotalImportes:
    case C::TotalAdeudos:
    case C::TotalRegistros:
    case C::RegistroSinUso:
    case C::Caracteres:
    case C::Direccion:
    case C::LibreConDatos:
    case C::SinOrdenar:
    case C::Frst:
    case C::CobroPasado:
    case C::CobroFinDeSemana:
    case C::CobroFestivo:
    case C::CobroHoy:
      return true;
    default:
      return false;
  }
}

std::string EnSuSitio(std::string_view valor, Posiciones donde) {
  std::string campo(valor);
  campo.resize(static_cast<std::size_t>(donde.longitud()), ' ');
  return campo;
}

std::optional<std::string> RespuestaCampo(const Hallazgo& h, const Campo& campo, std::string_view bytes) {
  const std::string_view valor = Recortar(bytes);
  const auto entero = [&](std::optional<std::string> debido) {
    if (debido) *debido = EnSuSitio(*debido, campo.donde);
    return debido;
  };
  switch (h.codigo) {
    case C::NumeroDato:
    case C::Frst:
      return h.esperado;
    case C::TotalImportes:
    case C::TotalAdeudos:
    case C::TotalRegistros:
      // Lo que no cabe no se puede escribir.
      if (h.esperado.size() == bytes.size()) return h.esperado;
      return std::nullopt;
    case C::SinAlinear:
      return entero(h.esperado.empty() ? std::string(valor) : h.esperado);
    case C::Iban:
    case C::Ccc:
      return entero(Cuenta(h, valor));
    case C::IdentificadorAcreedor:
      return entero(
          Limpio(valor, [](std::string_view suyo) { return ComprobarIdentificador(suyo).correcto; }));
    case C::Caracteres:
      return entero(Admitidos(campo, bytes));
    case C::LibreConDatos:
      return EnSuSitio({}, campo.donde);
    default:
      return std::nullopt;
  }
}

std::optional<std::string> RegistroCompleto(std::string_view registro) {
  const bool demas = registro.size() > kLongitudRegistro;
  if (demas && registro.find_first_not_of(' ', kLongitudRegistro) != std::string_view::npos)
    return std::nullopt;
  if (!demas && EnBlanco(registro)) return std::nullopt;  // una línea que sobra
  std::string completo(registro);
  AjustarLongitud(completo);
  if (demas) return completo;
  bool bueno = true;
  Anotador anotador([&](Hallazgo&& h) {
    const bool faltaba = static_cast<std::size_t>(h.donde.hasta) > registro.size();
    if (!faltaba || !EsError(h.codigo) || h.campo == nullptr) return;
    bueno = bueno && RespuestaCampo(h, *h.campo, LeerCampo(completo, h.campo->donde)).has_value();
  });
  anotador.pasarA(completo, 1);
  ComprobarCampos(anotador, {});
  if (!bueno) return std::nullopt;
  return completo;
}

}  // namespace remesa
