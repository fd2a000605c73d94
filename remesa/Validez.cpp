#include "remesa/Validez.h"

#include <algorithm>
#include <iterator>

#include "remesa/Registro.h"
#include "remesa/SEPA.h"

namespace remesa {
namespace {

constexpr std::string_view kPaises =
    "ADAEAFAGAIALAMAOAQARASATAUAWAXAZBABBBDBEBFBGBHBIBJBLBMBNBOBQBRBSBTBVBWBYBZCACCCDCFCGCHCICKCLCMCNCOCRCUCV"
    "CWCXCYCZDEDJDKDMDODZECEEEGEHERESETFIFJFKFMFOFRGAGBGDGEGFGGGHGIGLGMGNGPGQGRGSGTGUGWGYHKHMHNHRHTHUIDIEILIM"
    "INIOIQIRISITJEJMJOJPKEKGKHKIKMKNKPKRKWKYKZLALBLCLILKLRLSLTLULVLYMAMCMDMEMFMGMHMKMLMMMNMOMPMQMRMSMTMUMVMW"
    "MXMYMZNANCNENFNGNINLNONPNRNUNZOMPAPEPFPGPHPKPLPMPNPRPSPTPWPYQARERORSRURWSASBSCSDSESGSHSISJSKSLSMSNSOSRSS"
    "STSVSXSYSZTCTDTFTGTHTJTKTLTMTNTOTRTTTVTWTZUAUGUMUSUYUZVAVCVEVGVIVNVUWFWSXKYEYTZAZMZW";

constexpr std::string_view kEspana = "ES";

bool EsMayuscula(char c) {
  return c >= 'A' && c <= 'Z';
}

bool SonMayusculasOCifras(std::string_view texto) {
  return std::ranges::all_of(texto, [](char c) { return EsMayuscula(c) || EsCifra(c); });
}

// Dónde está cada parte de las dos claves con dígitos de control.
constexpr Posiciones kPais{1, 2}, kDigitos{3, 4}, kSufijo{5, 7};
constexpr std::size_t kCuerpoIban = 4, kCuerpoIdentificador = 7;

/// Lo que tienen en común: empiezan por país y dígitos, y siguen con letras y cifras.
bool TieneForma(std::string_view texto, std::size_t minimo, std::size_t maximo) {
  return texto.size() >= minimo && texto.size() <= maximo && SonMayusculasOCifras(texto) &&
         std::ranges::all_of(LeerCampo(texto, kPais), EsMayuscula) && SonCifras(LeerCampo(texto, kDigitos));
}

Control Comparar(std::string_view texto, std::size_t cuerpo) {
  std::string debidos = DigitosControl(texto.substr(cuerpo), LeerCampo(texto, kPais));
  return {debidos == LeerCampo(texto, kDigitos), std::move(debidos)};
}

}  // namespace

bool SonCifras(std::string_view texto) {
  return !texto.empty() && std::ranges::all_of(texto, EsCifra);
}

bool EsPais(std::string_view texto) {
  if (texto.size() != 2) return false;
  for (std::size_t i = 0; i < kPaises.size(); i += 2)
    if (kPaises.substr(i, 2) == texto) return true;
  return false;
}

bool EsBic(std::string_view texto) {
  return (texto.size() == 8 || texto.size() == 11) && SonMayusculasOCifras(texto) &&
         EsPais(texto.substr(4, 2));
}

bool EsCcc(std::string_view texto) {
  return texto.size() == 20 && SonCifras(texto);
}

Control ComprobarIban(std::string_view texto) {
  constexpr std::size_t kMinimo = 9, kMaximo = 34, kEspanol = 24;
  if (!TieneForma(texto, kMinimo, kMaximo)) return {};
  const bool espanol = texto.starts_with(kEspana);
  if (espanol && (texto.size() != kEspanol || !SonCifras(texto.substr(kCuerpoIban)))) return {};
  return Comparar(texto, kCuerpoIban);
}

Control ComprobarIdentificador(std::string_view texto) {
  constexpr std::size_t kMinimo = 8, kMaximo = 35, kEspanol = 16;
  constexpr std::string_view kSignos = "/-?:().,'+ ";
  std::string limpio;
  std::ranges::copy_if(texto, std::back_inserter(limpio),
                       [&](char c) { return kSignos.find(c) == std::string_view::npos; });
  if (!TieneForma(limpio, kMinimo, kMaximo)) return {};
  if (limpio.starts_with(kEspana) && (limpio.size() != kEspanol || !SonCifras(LeerCampo(limpio, kSufijo))))
    return {};
  return Comparar(limpio, kCuerpoIdentificador);
}

}  // namespace remesa
