#include "iso20022/Valores.h"

#include <algorithm>

#include "remesa/CaracteresSEPA.h"
#include "remesa/Validez.h"

namespace iso20022 {
namespace {

bool EsMayuscula(char c) {
  return c >= 'A' && c <= 'Z';
}

bool EsMayusculaOCifra(char c) {
  return EsMayuscula(c) || remesa::EsCifra(c);
}

}  // namespace

std::string EscribirImporte(std::uint64_t centimos) {
  std::string texto = std::to_string(centimos);
  if (texto.size() < 3) texto.insert(0, 3 - texto.size(), '0');
  return texto.insert(texto.size() - 2, ".");
}

std::optional<std::uint64_t> Centimos(std::string_view importe) {
  constexpr std::size_t kMaxCifras = 15;
  const std::size_t punto = std::min(importe.find('.'), importe.size());
  const std::string_view enteras = importe.substr(0, punto);
  std::string decimales(importe.substr(std::min(punto + 1, importe.size())));
  while (decimales.size() > 2 && decimales.ends_with('0'))
    decimales.pop_back();
  decimales.append(2 - std::min<std::size_t>(decimales.size(), 2), '0');
  const std::string cifras = std::string(enteras).append(decimales);
  if (decimales.size() > 2 || cifras.size() > kMaxCifras || !remesa::SonCifras(cifras) || importe.empty())
    return std::nullopt;
  std::uint64_t centimos = 0;
  for (const char c : cifras)
    centimos = centimos * 10 + static_cast<std::uint64_t>(c - '0');
  return centimos;
}

std::uint64_t ImporteDe(std::string_view adeudo) {
  std::uint64_t centimos = 0;
  for (const char c : remesa::LeerCampo(adeudo, remesa::kImporteAdeudo))
    centimos = centimos * 10 + static_cast<std::uint64_t>(c - '0');
  return centimos;
}

bool EsTipoAdeudo(std::string_view texto) {
  return texto == "RCUR" || texto == "FRST" || texto == "FNAL" || texto == "OOFF";
}

bool EsCodigo(std::string_view texto) {
  return texto.size() == 4 && std::ranges::all_of(texto, EsMayusculaOCifra);
}

bool EsBicDe(Version version, std::string_view bic) {
  if (bic.size() != 8 && bic.size() != 11) return false;
  const auto todos = [](std::string_view parte, auto&& es) { return std::ranges::all_of(parte, es); };
  if (version == Version::V08)
    return todos(bic.substr(0, 4), EsMayusculaOCifra) && todos(bic.substr(4, 2), EsMayuscula) &&
           todos(bic.substr(6), EsMayusculaOCifra);
  return todos(bic.substr(0, 6), EsMayuscula) && EsMayusculaOCifra(bic[6]) && bic[6] != '0' &&
         bic[6] != '1' && EsMayusculaOCifra(bic[7]) && bic[7] != 'O' &&
         todos(bic.substr(8), EsMayusculaOCifra);
}

std::string_view RecortarEscrito(std::string_view texto) {
  texto = remesa::Recortar(texto);
  while (!texto.empty() && remesa::EquivalenteSEPA(texto.back()) == ' ')
    texto.remove_suffix(1);
  while (!texto.empty() && remesa::EquivalenteSEPA(texto.front()) == ' ')
    texto.remove_prefix(1);
  return texto;
}

bool TieneBarrasMalas(std::string_view valor) {
  bool previa = true;
  for (const char c : valor) {
    const bool barra = remesa::EquivalenteSEPA(c) == '/';
    if (barra && previa) return true;
    previa = barra;
  }
  return previa;
}

}  // namespace iso20022
