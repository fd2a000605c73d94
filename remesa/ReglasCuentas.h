#pragma once

#include "remesa/Anotador.h"
#include "remesa/PaisesSEPA.h"

namespace remesa {

/// Las cuentas, y lo que en un adeudo depende de la del deudor.

/// Las 20 cifras de un IBAN español, que como cuenta nacional es la misma; las demás cuentas, enteras.
std::string_view CuentaComparable(std::string_view cuenta);

/// La entidad, con su país: "ES2100" en un IBAN español y en la cuenta nacional que es la misma. Del país
/// solo, si su IBAN no la lleva en letras detrás.
std::string EntidadDeCuenta(std::string_view cuenta);

/// El país de la cuenta del adeudo: "ES" si es nacional; vacío si no empieza por dos letras.
std::string_view PaisDeCuenta(std::string_view adeudo);

/// Si la cuenta del adeudo es de la zona SEPA y está fuera del Espacio Económico Europeo: hacen falta el
/// banco y la dirección del deudor.
bool CuentaForanea(std::string_view adeudo);

/// `valor`, no vacío, es el del campo del registro en que está el anotador.
void ComprobarCuenta(Anotador& anotador, const Campo& campo, std::string_view valor);
void ComprobarBic(Anotador& anotador, const Campo& campo, std::string_view valor);

}  // namespace remesa
