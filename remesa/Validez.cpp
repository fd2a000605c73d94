#include "remesa/Validez.h"

#include <algorithm>
#include <iterator>

#include "remesa/PaisesSEPA.h"
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

/// Resto entre 97 de `resto` seguido del texto, las letras A = 10 … Z = 35. Se divide solo cuando ya no cabe.
std::uint64_t Resto97(std::string_view texto, std::uint64_t resto = 0) {
  constexpr std::uint64_t kCabe = 1'000'000'000'000'000;
  for (const char c : texto) {
    resto = EsCifra(c) ? resto * 10 + static_cast<std::uint64_t>(c - '0')
                       : resto * 100 + static_cast<std::uint64_t>(c - 'A' + 10);
    if (resto >= kCabe) resto %= 97;
  }
  return resto % 97;
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

DefectoIban DefectoDeIban(std::string_view texto) {
  const FormaIban forma = FormaIbanDe(LeerCampo(texto, kPais));
  if (forma.longitud == 0) return DefectoIban::Pais;
  if (texto.size() != forma.longitud) return DefectoIban::Longitud;
  if (!SonCifras(LeerCampo(texto, kDigitos)) || !SigueEstructura(texto.substr(kCuerpoIban), forma.estructura))
    return DefectoIban::Forma;
  const std::uint64_t resto = Resto97(texto.substr(0, kCuerpoIban), Resto97(texto.substr(kCuerpoIban)));
  // 00, 01 y 99 dan los mismos restos que 97, 98 y 02, que son los buenos.
  const std::string_view digitos = LeerCampo(texto, kDigitos);
  const bool enUso = digitos >= "02" && digitos <= "98";
  return resto == 1 && enUso ? DefectoIban::Ninguno : DefectoIban::Digitos;
}

Control ComprobarIban(std::string_view texto) {
  const DefectoIban defecto = DefectoDeIban(texto);
  if (defecto == DefectoIban::Ninguno) return {.correcto = true};
  if (defecto != DefectoIban::Digitos) return {};
  return {false, DigitosControl(texto.substr(kCuerpoIban), LeerCampo(texto, kPais))};
}

Control ComprobarIdentificador(std::string_view texto) {
  constexpr std::size_t kMinimo = 8, kMaximo = 35, kEspanol = 16;
  constexpr std::string_view kSignos = "/-?:().,'+ ";
  // Los signos y los blancos solo pueden estar en el número fiscal.
  std::string limpio(texto.substr(0, kCuerpoIdentificador));
  if (texto.size() > kCuerpoIdentificador)
    std::ranges::copy_if(texto.substr(kCuerpoIdentificador), std::back_inserter(limpio),
                         [&](char c) { return kSignos.find(c) == std::string_view::npos; });
  if (limpio.size() < kMinimo || texto.size() > kMaximo || !SonMayusculasOCifras(limpio) ||
      !EsPais(LeerCampo(limpio, kPais)) || !SonCifras(LeerCampo(limpio, kDigitos)))
    return {};
  if (limpio.starts_with(kEspana) && (limpio.size() != kEspanol || !SonCifras(LeerCampo(limpio, kSufijo))))
    return {};
  std::string debidos =
      DigitosControl(std::string_view(limpio).substr(kCuerpoIdentificador), LeerCampo(limpio, kPais));
  return {debidos == LeerCampo(limpio, kDigitos), std::move(debidos)};
}

std::string SinSufijo(std::string_view identificador) {
  constexpr std::size_t kDesde = 4, kLargo = 3;
  std::string quien(identificador);
  if (quien.size() > kDesde + kLargo) quien.erase(kDesde, kLargo);
  return quien;
}

}  // namespace remesa
