#include "ventanas/principal/TextosCorreccion.h"

#include "comunes/plataforma/Texto.h"
#include "remesa/Calendario.h"
#include "remesa/Validez.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using C = remesa::CodigoHallazgo;
using remesa::CambioRegistro;
using remesa::ValorCampo;

QString TextoDe(const remesa::Correccion& c, const std::string& bytes) {
  const ValorCampo valor = c.campo != nullptr ? c.campo->valor : ValorCampo::Texto;
  if (c.codigo == C::Longitud) return u"%1 posiciones"_s.arg(comunes::DesdeWindows1252(bytes));
  if (valor == ValorCampo::Fecha && remesa::LeerFecha(bytes))
    return comunes::DesdeWindows1252(remesa::FechaQ19(bytes));
  if (valor == ValorCampo::Importe && c.clase != remesa::ClaseRegistro::Adeudo && remesa::SonCifras(bytes))
    return TextoEuros(comunes::DesdeWindows1252(bytes).toLongLong());
  return comunes::DesdeWindows1252(bytes);
}

}  // namespace

QString TextoAntes(const remesa::Correccion& c) {
  if (c.cambio == CambioRegistro::Campo) return TextoDe(c, c.antes);
  return c.cambio == CambioRegistro::Quita ? u"un registro 005"_s : TextoDe(c, c.antes) + u" delante"_s;
}

QString TextoDespues(const remesa::Correccion& c) {
  if (c.cambio == CambioRegistro::Quita) return u"(se elimina el registro)"_s;
  if (c.cambio == CambioRegistro::Orden)
    return TextoDe(c, c.despues) +
           u" delante (cambian de sitio %1)"_s.arg(TextoCuenta(c.movidos, u"registro"_s, u"registros"_s));
  return c.despues.empty() ? u"(en blanco)"_s : TextoDe(c, c.despues);
}

QString TextoCorreccion(const remesa::Correccion& c) {
  if (c.codigo == C::RegistroSinUso) return u"Registro 005 sin uso"_s;
  switch (c.codigo) {
    case C::Longitud:
      return u"Longitud del registro"_s;
    case C::NumeroDato:
      return u"Número de dato equivocado"_s;
    case C::FueraDeOrden:
      return u"Registros de un adeudo sin orden"_s;
    case C::ObligatorioVacio:
      return u"Dato que se saca de otro registro, vacío"_s;
    case C::NoNumerico:
    case C::FechaInexistente:
      return u"Dato que se saca de otro registro, mal escrito"_s;
    case C::Iban:
    case C::Ccc:
      return u"Cuenta con blancos o minúsculas"_s;
    case C::IdentificadorAcreedor:
      return u"Identificador con blancos o minúsculas, o distinto del de su cabecera"_s;
    case C::SinAlinear:
      return u"Dato que no está en su sitio"_s;
    case C::ReferenciasDistintas:
      return u"Referencia que no es la de su adeudo"_s;
    case C::OtraCabecera:
      return u"Dato que no es el de su cabecera"_s;
    case C::TotalImportes:
    case C::TotalAdeudos:
    case C::TotalRegistros:
      return u"Total que no cuadra"_s;
    case C::Caracteres:
      return u"Caracteres que no se admiten"_s;
    case C::Direccion:
      return u"Dirección sin estructurar"_s;
    case C::LibreConDatos:
      return u"Datos en un espacio sin uso"_s;
    case C::SinOrdenar:
      return u"Adeudos sin orden"_s;
    case C::Frst:
      return u"FRST, que ya no hace falta"_s;
    case C::CobroPasado:
      return u"Fecha de cobro pasada"_s;
    case C::CobroHoy:
      return u"Fecha de cobro de hoy"_s;
    case C::CobroFinDeSemana:
      return u"Fecha de cobro en fin de semana"_s;
    case C::CobroFestivo:
      return u"Fecha de cobro en fiesta"_s;
    default:
      return {};
  }
}

}  // namespace principal
