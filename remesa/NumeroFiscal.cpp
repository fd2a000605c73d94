#include "remesa/NumeroFiscal.h"

#include "remesa/Registro.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

constexpr std::size_t kSinControl = 8;

std::string LetraDePersona(int numero) {
  constexpr std::string_view kLetras = "TRWAGMYFPDXBNJZSQVHLCKE";
  return {kLetras[static_cast<std::size_t>(numero) % kLetras.size()]};
}

int Numero(std::string_view cifras) {
  int numero = 0;
  for (const char c : cifras)
    numero = numero * 10 + (c - '0');
  return numero;
}

/// De siete cifras: se suman las pares y las cifras de los dobles de las impares, y se completa la decena.
int ControlDeEntidad(std::string_view cifras) {
  int suma = 0;
  for (std::size_t i = 0; i < cifras.size(); ++i) {
    const int cifra = cifras[i] - '0';
    suma += i % 2 == 1 ? cifra : cifra * 2 / 10 + cifra * 2 % 10;
  }
  return (10 - suma % 10) % 10;
}

}  // namespace

std::string ControlFiscal(std::string_view ocho) {
  if (ocho.size() != kSinControl || !SonCifras(ocho.substr(1))) return {};
  const char letra = ocho[0];
  const std::string_view siete = ocho.substr(1);
  const auto es = [letra](std::string_view letras) { return letras.find(letra) != std::string_view::npos; };
  if (EsCifra(letra)) return LetraDePersona(Numero(ocho));
  if (es("XYZ")) return LetraDePersona((letra - 'X') * 10'000'000 + Numero(siete));
  if (es("KLM")) return LetraDePersona(Numero(siete));
  const int control = ControlDeEntidad(siete);
  const std::string cifra(1, static_cast<char>('0' + control));
  const std::string enLetra(1, "JABCDEFGHI"[control]);
  if (es("ABEH")) return cifra;
  if (es("NPQRSW")) return enLetra;
  return es("CDFGJUV") ? cifra + enLetra : std::string();
}

bool ControlFiscalErrado(std::string_view nif) {
  if (nif.size() != kSinControl + 1) return false;
  const std::string control = ControlFiscal(nif.substr(0, kSinControl));
  return !control.empty() && control.find(nif.back()) == std::string::npos;
}

}  // namespace remesa
