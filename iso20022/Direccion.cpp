#include "iso20022/Direccion.h"

#include <algorithm>

#include "remesa/Registro.h"

namespace iso20022 {
namespace {

constexpr std::string_view kSeparadores = " ,.-";
constexpr std::string_view kCifras = "0123456789";

std::string_view SinSeparadores(std::string_view texto) {
  const std::size_t desde = texto.find_first_not_of(kSeparadores);
  if (desde == std::string_view::npos) return {};
  return texto.substr(desde, texto.find_last_not_of(kSeparadores) - desde + 1);
}

bool EsCP(std::string_view cifras, bool espanola) {
  return espanola ? cifras.size() == 5 : cifras.size() >= 4 && cifras.size() <= 6;
}

std::optional<Poblacion> Con(std::string_view cp, std::string_view nombre) {
  constexpr std::size_t kMaximo = 35;
  const auto esLetra = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  nombre = SinSeparadores(nombre);
  if (nombre.size() > kMaximo || std::ranges::none_of(nombre, esLetra) ||
      std::ranges::any_of(nombre, remesa::EsCifra))
    return std::nullopt;
  return Poblacion{cp, nombre};
}

}  // namespace

std::optional<Poblacion> PartirPoblacion(std::string_view d2, bool espanola) {
  d2 = remesa::Recortar(d2);
  const std::size_t fin = d2.find_first_not_of(kCifras);
  if (fin == std::string_view::npos) return std::nullopt;
  if (fin > 0) {
    const bool separada = kSeparadores.find(d2[fin]) != std::string_view::npos;
    return separada && EsCP(d2.substr(0, fin), espanola) ? Con(d2.substr(0, fin), d2.substr(fin))
                                                         : std::nullopt;
  }
  std::string_view delante = d2;
  if (delante.ends_with(')')) delante.remove_suffix(1);
  const std::size_t cifras = delante.find_last_not_of(kCifras) + 1;
  if (cifras == delante.size()) return Con({}, d2);
  const std::string_view cp = delante.substr(cifras);
  delante = delante.substr(0, cifras);
  const std::size_t nombre = delante.find_last_not_of(" ,.-(") + 1;
  if (nombre == delante.size() || !EsCP(cp, espanola)) return std::nullopt;
  return Con(cp, delante.substr(0, nombre));
}

}  // namespace iso20022
