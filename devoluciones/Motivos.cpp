#include "devoluciones/Motivos.h"

#include <algorithm>
#include <array>

namespace devoluciones {
namespace {

using enum Intento;

constexpr std::array kMotivos{
    Motivo{"AC01", "El número de cuenta no es correcto",
           "Pida la cuenta al deudor y corríjala antes de presentarlo otra vez.", TrasArreglo},
    Motivo{"AC04", "La cuenta está cancelada",
           "Pida al deudor su cuenta nueva y póngala antes de presentarlo otra vez.", TrasArreglo},
    Motivo{"AC06", "La cuenta está bloqueada, o cerrada a adeudos",
           "Hable con el deudor: que dé otra cuenta o arregle esta con su banco.", ConElDeudor},
    Motivo{"AC13", "La cuenta es de un consumidor (solo B2B)",
           "A un consumidor se le cobra con el adeudo básico, no con el de empresas: preséntelo así.",
           TrasArreglo},
    Motivo{"AG01", "La cuenta no admite adeudos", "Hable con el deudor: pídale otra cuenta.", ConElDeudor},
    Motivo{"AG02", "El código de la operación no es correcto",
           "Corrija el tipo de adeudo (FRST, RCUR, OOFF o FNAL) y preséntelo otra vez.", TrasArreglo},
    Motivo{"AM04", "No había saldo", "Puede presentarse otra vez. Avise antes al deudor.", OtraVez},
    Motivo{"AM05", "El adeudo está repetido",
           "No lo presente otra vez: el banco ya tiene uno igual. Compruebe que ese se ha cobrado.", Nunca},
    Motivo{"BE01", "El titular de la cuenta no es el deudor",
           "Aclare con el deudor de quién es la cuenta y corrija el nombre o la cuenta.", TrasArreglo},
    Motivo{"BE05", "El identificador del acreedor no es correcto",
           "Corrija el identificador, que es el del contrato con su banco, y preséntelo otra vez.",
           TrasArreglo},
    Motivo{"CNOR", "El banco del acreedor no está en el esquema",
           "Pregunte a su banco: sin él en el esquema no se puede cobrar.", TrasArreglo},
    Motivo{"DNOR", "El banco del deudor no está en el esquema",
           "Pida al deudor una cuenta en un banco que admita adeudos SEPA.", TrasArreglo},
    Motivo{"ED05", "No se pudo liquidar", "Puede presentarse otra vez.", OtraVez},
    Motivo{"FF01", "El fichero no tiene buen formato",
           "Compruebe la remesa, corrija lo que se señale y preséntelo otra vez.", TrasArreglo},
    Motivo{"FF05", "El tipo de adeudo no es correcto",
           "Compruebe si el adeudo es básico (CORE) o de empresas (B2B) y preséntelo como lo que es.",
           TrasArreglo},
    Motivo{"MD01", "No hay mandato válido",
           "No lo presente otra vez sin un mandato firmado: el deudor puede reclamarlo durante trece meses.",
           TrasArreglo},
    Motivo{"MD02", "Faltan datos del mandato o están mal",
           "No lo presente otra vez sin corregir la referencia y la fecha de firma del mandato.",
           TrasArreglo},
    Motivo{"MD06", "El deudor pidió la devolución de un adeudo autorizado",
           "Hable con el deudor y preséntelo solo si está de acuerdo.", ConElDeudor},
    Motivo{"MD07", "El deudor ha fallecido", "No lo presente otra vez: trate con sus herederos.", Nunca},
    Motivo{"MS02", "El deudor lo rechazó sin decir por qué",
           "Hable con el deudor y preséntelo solo si está de acuerdo.", ConElDeudor},
    Motivo{"MS03", "El banco del deudor no dice por qué",
           "Puede presentarse otra vez. Si vuelve a fallar, pregunte al deudor.", OtraVez},
    Motivo{"RC01", "El BIC no es correcto",
           "Corrija el BIC, o déjelo en blanco si la cuenta es del Espacio Económico Europeo.", TrasArreglo},
    Motivo{"RR01", "Falta la cuenta o la identificación del deudor (norma legal)",
           "Complete la cuenta y la identificación del deudor y preséntelo otra vez.", TrasArreglo},
    Motivo{"RR02", "Falta el nombre o la dirección del deudor (norma legal)",
           "Complete el nombre y la dirección del deudor y preséntelo otra vez.", TrasArreglo},
    Motivo{"RR03", "Falta el nombre o la dirección del acreedor (norma legal)",
           "Complete el nombre y la dirección del acreedor y preséntelo otra vez.", TrasArreglo},
    Motivo{"RR04", "Motivo legal", "Pregunte a su banco y al deudor antes de presentarlo otra vez.",
           ConElDeudor},
    Motivo{"SL01", "El deudor tiene un servicio que lo impide (lista de acreedores, límite)",
           "Hable con el deudor: ha de autorizarlo en su banco antes de presentarlo otra vez.", ConElDeudor},
    Motivo{"TM01", "Llegó fuera de plazo",
           "Puede presentarse otra vez, a más tardar el día hábil anterior al cobro.", OtraVez},
};

static_assert(std::ranges::is_sorted(kMotivos, {}, &Motivo::codigo), "se busca por mitades");

}  // namespace

std::span<const Motivo> Motivos() {
  return kMotivos;
}

const Motivo* BuscarMotivo(std::string_view codigo) {
  const auto* hallado = std::ranges::lower_bound(kMotivos, codigo, {}, &Motivo::codigo);
  return hallado != kMotivos.end() && hallado->codigo == codigo ? hallado : nullptr;
}

}  // namespace devoluciones
