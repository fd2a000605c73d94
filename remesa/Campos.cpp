#include "remesa/Campos.h"

namespace remesa {
namespace {

/// De los rechazos (11 a 15) y las devoluciones (21 a 25).
std::span<const Campo> CamposDeRetorno(std::string_view codigo) {
  if (codigo == "11" || codigo == "21") return tabla::kPresentadorRetorno;
  if (codigo == "12") return tabla::kAcreedorRechazo;
  if (codigo == "13") return tabla::kAdeudoRechazado;
  if (codigo == "14") return tabla::kTotalesFecha;
  if (codigo == "22") return tabla::kAcreedorDevolucion;
  if (codigo == "23") return tabla::kAdeudoDevuelto;
  if (codigo == "24") return tabla::kTotalesFechaDevolucion;
  if (codigo == "15" || codigo == "25") return tabla::kTotalesAcreedor;
  return {};
}

}  // namespace

CodigoRegistro Codigo(std::string_view registro) {
  if (registro.size() < 2) return CodigoRegistro::Otro;
  if (registro[0] == '0') switch (registro[1]) {
      case '1':
        return CodigoRegistro::Presentador;
      case '2':
        return CodigoRegistro::Acreedor;
      case '3':
        return CodigoRegistro::Adeudo;
      case '4':
        return CodigoRegistro::TotalesFecha;
      case '5':
        return CodigoRegistro::TotalesAcreedor;
      default:
        break;
    }
  return registro.starts_with("99") ? CodigoRegistro::TotalesGenerales : CodigoRegistro::Otro;
}

ClaseRegistro Clase(std::string_view registro) {
  switch (Codigo(registro)) {
    case CodigoRegistro::Presentador:
      return ClaseRegistro::Presentador;
    case CodigoRegistro::Acreedor:
      return ClaseRegistro::Acreedor;
    case CodigoRegistro::Adeudo: {
      const std::string_view dato = LeerCampo(registro, kNumeroDato);
      if (dato == "003") return ClaseRegistro::Adeudo;
      if (dato == "004") return ClaseRegistro::Ultimos;
      if (dato == "005") return ClaseRegistro::Balanza;
      if (dato == "006") return ClaseRegistro::Mandato;
      break;
    }
    case CodigoRegistro::TotalesFecha:
      return ClaseRegistro::TotalesFecha;
    case CodigoRegistro::TotalesAcreedor:
      return ClaseRegistro::TotalesAcreedor;
    case CodigoRegistro::TotalesGenerales:
      return ClaseRegistro::TotalesGenerales;
    case CodigoRegistro::Otro:
      break;
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
  const ClaseRegistro clase = Clase(registro);
  return clase == ClaseRegistro::Desconocido ? CamposDeRetorno(LeerCampo(registro, kCodigo))
                                             : CamposDe(clase);
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
