#include "remesa/Campos.h"

namespace remesa {

ClaseRegistro Clase(std::string_view registro) {
  const std::string_view codigo = LeerCampo(registro, kCodigo);
  if (codigo == "03") {
    const std::string_view dato = LeerCampo(registro, kNumeroDato);
    if (dato == "003") return ClaseRegistro::Adeudo;
    if (dato == "004") return ClaseRegistro::Ultimos;
    if (dato == "005") return ClaseRegistro::Balanza;
    if (dato == "006") return ClaseRegistro::Mandato;
  } else if (codigo == "01") {
    return ClaseRegistro::Presentador;
  } else if (codigo == "02") {
    return ClaseRegistro::Acreedor;
  } else if (codigo == "04") {
    return ClaseRegistro::TotalesFecha;
  } else if (codigo == "05") {
    return ClaseRegistro::TotalesAcreedor;
  } else if (codigo == "99") {
    return ClaseRegistro::TotalesGenerales;
  }
  return ClaseRegistro::Desconocido;
}

std::span<const Campo> CamposDe(ClaseRegistro clase) {
  switch (clase) {
    case ClaseRegistro::Presentador:
      return tabla::kPresentador;
    case ClaseRegistro::Acreedor:
      return tabla::kAcreedor;
    case ClaseRegistro::Adeudo:
      return tabla::kAdeudo;
    case ClaseRegistro::Ultimos:
      return tabla::kUltimos;
    case ClaseRegistro::Balanza:
      return tabla::kBalanza;
    case ClaseRegistro::Mandato:
      return tabla::kMandato;
    case ClaseRegistro::TotalesFecha:
      return tabla::kTotalesFecha;
    case ClaseRegistro::TotalesAcreedor:
      return tabla::kTotalesAcreedor;
    case ClaseRegistro::TotalesGenerales:
      return tabla::kTotalesGenerales;
    case ClaseRegistro::Desconocido:
      break;
  }
  return {};
}

std::span<const Campo> CamposDe(std::string_view registro) {
  return CamposDe(Clase(registro));
}

std::string_view NombreRegistro(ClaseRegistro clase) {
  switch (clase) {
    case ClaseRegistro::Presentador:
      return "Cabecera del presentador";
    case ClaseRegistro::Acreedor:
      return "Cabecera del acreedor y la fecha de cobro";
    case ClaseRegistro::Adeudo:
      return "Adeudo individual";
    case ClaseRegistro::Ultimos:
      return "Último acreedor y titular de la domiciliación";
    case ClaseRegistro::Balanza:
      return "Balanza de pagos";
    case ClaseRegistro::Mandato:
      return "Modificación del mandato";
    case ClaseRegistro::TotalesFecha:
      return "Totales del acreedor y la fecha de cobro";
    case ClaseRegistro::TotalesAcreedor:
      return "Totales del acreedor";
    case ClaseRegistro::TotalesGenerales:
      return "Totales generales";
    case ClaseRegistro::Desconocido:
      break;
  }
  return {};
}

const Campo* CampoEn(std::string_view registro, int posicion) {
  for (const Campo& campo : CamposDe(registro))
    if (posicion >= campo.donde.desde && posicion <= campo.donde.hasta) return &campo;
  return nullptr;
}

}  // namespace remesa
