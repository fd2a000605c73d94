#include "remesa/CuentaNacional.h"

#include <array>

#include "remesa/SEPA.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

char DigitoControl(std::string_view diez) {
  constexpr std::array kPesos{1, 2, 4, 8, 5, 10, 9, 7, 3, 6};
  int suma = 0;
  for (std::size_t i = 0; i < kPesos.size(); ++i)
    suma += kPesos[i] * (diez[i] - '0');
  const int digito = 11 - suma % 11;
  return static_cast<char>('0' + (digito == 11 ? 0 : digito == 10 ? 1 : digito));
}

}  // namespace

bool ControlCcc(std::string_view ccc) {
  return EsCcc(ccc) && ccc[8] == DigitoControl("00" + std::string(ccc.substr(0, 8))) &&
         ccc[9] == DigitoControl(ccc.substr(10));
}

std::string IbanDeCcc(std::string_view ccc) {
  return "ES" + DigitosControl(ccc, "ES") + std::string(ccc);
}

}  // namespace remesa
