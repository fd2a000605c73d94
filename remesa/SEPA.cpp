#include "remesa/SEPA.h"

#include <algorithm>
#include <cstring>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/Registro.h"

namespace remesa {
namespace {

// Casi todo un registro son blancos: se saltan de ocho en ocho.
constexpr std::size_t kAncho = 8;

bool SonBlancos(std::string_view ocho) {
  return ocho.size() == kAncho && std::memcmp(ocho.data(), "        ", kAncho) == 0;
}

char CaracterSEPA(char c) {
  switch (c) {  // Windows-1252
    case '\xF1':
      return 'n';
    case '\xD1':
      return 'N';
    case '\xE7':
      return 'c';
    case '\xC7':
      return 'C';
    default:
      return EsDelJuegoSEPA(c) ? c : '0';
  }
}

}  // namespace

std::string FormatoIBAN(std::string_view iban, bool sinPrefijo) {
  if (Recortar(iban).empty()) return {};
  std::string grupos;
  for (std::size_t i = 0; i < iban.size(); i += 4) {
    grupos += ' ';
    grupos += iban.substr(i, 4);
  }
  return std::string(sinPrefijo ? "" : "IBAN ").append(Recortar(grupos));
}

bool IBANValido(std::string_view iban) {
  const std::string_view cabeza = iban.substr(0, 4);
  const std::string girado = std::string(iban.substr(cabeza.size())).append(cabeza);
  std::string cifras;
  for (const char& c : girado)
    cifras += ValorIBAN({&c, 1});
  return Modulo97(cifras) == 1;
}

std::string ValorIBAN(std::string_view caracter) {
  if (caracter.size() == 1 && EsCifra(caracter[0])) return std::string(caracter);
  if (caracter.size() == 1 && caracter[0] >= 'A' && caracter[0] <= 'Z')
    return std::to_string(caracter[0] - 'A' + 10);
  return "9";
}

int Modulo97(std::string_view cifras) {
  int resto = 0;
  for (const char c : cifras) {
    if (!EsCifra(c)) throw ficheros::ErrorEjecucion(ficheros::kTiposNoCoinciden);
    resto = (resto * 10 + (c - '0')) % 97;
  }
  return resto;
}

std::string DigitosControl(std::string_view cuerpo, std::string_view pais) {
  int resto = 0;
  const auto anadir = [&resto](std::string_view parte) {
    for (const char c : parte)
      resto = EsCifra(c) ? (resto * 10 + (c - '0')) % 97 : (resto * 100 + (c - 'A' + 10)) % 97;
  };
  anadir(cuerpo);
  anadir(pais);
  anadir("00");
  return Ceros(98 - resto, 2);
}

std::size_t BuscarCaracter(std::string_view texto, std::size_t desde, bool fuera) {
  std::size_t i = desde;
  while (i < texto.size() && EsDelJuegoSEPA(texto[i]) == fuera)
    i = fuera && SonBlancos(texto.substr(i, kAncho)) ? i + kAncho : i + 1;
  return std::min(i, texto.size());
}

std::string TextoSEPA(std::string_view texto) {
  std::string resultado(texto);
  std::ranges::transform(resultado, resultado.begin(), CaracterSEPA);
  return resultado;
}

}  // namespace remesa
