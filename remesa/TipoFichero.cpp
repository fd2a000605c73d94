#include "remesa/TipoFichero.h"

#include "remesa/Campos.h"

namespace remesa {
namespace {

constexpr std::string_view kTransferencias = "01ORD34";

TipoFichero TipoPorCodigo(std::string_view codigo) {
  if (codigo >= "01" && codigo <= "05") return TipoFichero::Presentacion;
  if (codigo >= "11" && codigo <= "15") return TipoFichero::Rechazos;
  if (codigo >= "21" && codigo <= "25") return TipoFichero::Devoluciones;
  if (codigo >= "31" && codigo <= "35") return TipoFichero::SolicitudesCancelacion;
  return TipoFichero::Ajeno;
}

}  // namespace

TipoFichero TipoDe(std::string_view primerRegistro) {
  const std::string_view version = LeerCampo(primerRegistro, kVersion);
  if (version == kVersion1914) return TipoPorCodigo(LeerCampo(primerRegistro, kCodigo));
  if (version == "19154") return TipoFichero::PlazoCorto;
  if (version == "19445") return TipoFichero::Empresas;
  if (primerRegistro.starts_with(kTransferencias)) return TipoFichero::Transferencias;
  if (LeerCampo(primerRegistro, kCabezaAnterior) == "5180") return TipoFichero::Anterior;
  return TipoFichero::Ajeno;
}

std::string_view NombreTipo(TipoFichero tipo) {
  switch (tipo) {
    case TipoFichero::Presentacion:
      return "una remesa de adeudos";
    case TipoFichero::Rechazos:
      return "un fichero de adeudos rechazados";
    case TipoFichero::Devoluciones:
      return "un fichero de adeudos devueltos";
    case TipoFichero::SolicitudesCancelacion:
      return "un fichero de solicitudes de cancelación de adeudos";
    case TipoFichero::PlazoCorto:
      return "una remesa de adeudos de plazo corto (19154)";
    case TipoFichero::Empresas:
      return "un fichero de adeudos entre empresas (19445)";
    case TipoFichero::Transferencias:
      return "una orden de transferencias (Cuaderno 34)";
    case TipoFichero::Anterior:
      return "un fichero del Cuaderno 19 anterior a SEPA";
    case TipoFichero::Ajeno:
      break;
  }
  return "un fichero que no es de adeudos";
}

}  // namespace remesa
