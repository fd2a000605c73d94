#include "remesa/VersionesFichero.h"

#include <algorithm>

namespace remesa {
namespace {

using C = CodigoHallazgo;

constexpr std::array kVersiones{kVersion1914, kVersion1944, kVersion1915};
constexpr std::size_t kBasica = 0, kEmpresas = 1;

}  // namespace

void VersionesFichero::dar() {
  const ClaseRegistro clase = anotador_.clase();
  if (clase == ClaseRegistro::Desconocido || EsDeTotales(Codigo(anotador_.registro()))) return;
  const std::string_view version = LeerCampo(anotador_.registro(), kVersion);
  const auto cual = static_cast<std::size_t>(std::ranges::find(kVersiones, version) - kVersiones.begin());
  if (cual == kVersiones.size()) return;
  Cuenta& cuenta = cuentas_[cual];
  if (cuenta.registros++ == 0)
    cuenta.primero =
        anotador_.preparar(C::VersionesMezcladas, *CampoEn(anotador_.registro(), kVersion.desde));
}

/// Con tantos de una como de otra, la del primero.
std::size_t VersionesFichero::dominante() const {
  const auto orden = [](const Cuenta& cuenta) {
    return std::pair(cuenta.registros, ~cuenta.primero.registro);
  };
  return static_cast<std::size_t>(std::ranges::max_element(cuentas_, {}, orden) - cuentas_.begin());
}

std::string_view VersionesFichero::actual() const noexcept {
  return kVersiones[dominante()];
}

void VersionesFichero::terminar() {
  const std::size_t suya = dominante();
  for (std::size_t i = 0; i < cuentas_.size(); ++i) {
    Cuenta& cuenta = cuentas_[i];
    if (cuenta.registros == 0 || (i == suya && i == kBasica)) continue;
    if (i == suya && i == kEmpresas) {
      anotador_.fichero(C::EntreEmpresas, std::string(kVersion1944));
      continue;
    }
    cuenta.primero.codigo = i == suya ? C::Version : C::VersionesMezcladas;
    cuenta.primero.esperado = i == suya ? kVersion1914 : actual();
    cuenta.primero.otro = cuenta.registros;
    anotador_.dar(std::move(cuenta.primero));
  }
}

}  // namespace remesa
