#include "remesa/SEPA.h"

#include <algorithm>

#include "remesa/ErrorEjecucion.h"

namespace remesa {
namespace {

std::string_view Recortar(std::string_view texto) {
  const std::size_t desde = texto.find_first_not_of(' ');
  if (desde == texto.npos) return {};
  return texto.substr(desde, texto.find_last_not_of(' ') - desde + 1);
}

bool EsCifra(char c) {
  return c >= '0' && c <= '9';
}

char CaracterSEPA(char c) {
  constexpr std::string_view kPermitidos =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-?:().,'+ ";
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
      return kPermitidos.find(c) == kPermitidos.npos ? '0' : c;
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
    if (!EsCifra(c)) throw ErrorEjecucion(13);
    resto = (resto * 10 + (c - '0')) % 97;
  }
  return resto;
}

std::string TextoSEPA(std::string_view texto) {
  std::string resultado(texto);
  std::ranges::transform(resultado, resultado.begin(), CaracterSEPA);
  return resultado;
}

}  // namespace remesa
