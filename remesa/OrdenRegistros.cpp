#include "remesa/OrdenRegistros.h"

#include "remesa/Validez.h"

namespace remesa {
/// Códigos, separados por blancos, que pueden seguir.
std::string_view OrdenRegistros::Admitidos(Estado estado) {
  switch (estado) {
    case Estado::Inicio:
      return "01";
    case Estado::Presentador:
      return "02";
    case Estado::Cabecera:
      return "03";
    case Estado::Adeudos:
      return "03 04";
    case Estado::Bloque:
      return "02 05";
    case Estado::Acreedor:
      return "02 99";
    case Estado::Final:
      break;
  }
  return {};
}

/// Donde se queda tras un registro con ese código.
OrdenRegistros::Estado OrdenRegistros::Tras(CodigoRegistro codigo) {
  switch (codigo) {
    case CodigoRegistro::Presentador:
      return Estado::Presentador;
    case CodigoRegistro::Acreedor:
      return Estado::Cabecera;
    case CodigoRegistro::Adeudo:
      return Estado::Adeudos;
    case CodigoRegistro::TotalesFecha:
      return Estado::Bloque;
    case CodigoRegistro::TotalesAcreedor:
      return Estado::Acreedor;
    case CodigoRegistro::TotalesGenerales:
    case CodigoRegistro::Otro:
      break;
  }
  return Estado::Final;
}

void OrdenRegistros::dar() {
  if (Codigo(anotador_.registro()) == CodigoRegistro::Otro) return;
  const std::string_view codigo = LeerCampo(anotador_.registro(), kCodigo);
  const Estado siguiente = Tras(Codigo(anotador_.registro()));
  const std::string_view admitidos = Admitidos(estado_);
  if (admitidos.find(codigo) == std::string_view::npos)
    anotador_.posiciones(CodigoHallazgo::FueraDeOrden, kCodigo, std::string(codigo), std::string(admitidos));
  else if (siguiente == Estado::Cabecera && estado_ == Estado::Bloque)
    mirarAcreedor();
  else if (siguiente == Estado::Adeudos)
    mirarDato();
  if (siguiente != Estado::Adeudos)
    dato_.clear();
  else if (anotador_.clase() != ClaseRegistro::Desconocido)
    dato_ = LeerCampo(anotador_.registro(), kNumeroDato);
  if (siguiente == Estado::Cabecera)
    acreedor_ = Recortar(LeerCampo(anotador_.registro(), kIdentificadorAcreedor));
  estado_ = siguiente;
}

void OrdenRegistros::dudoso() {
  dato_ = "003";
  if (estado_ == Estado::Cabecera) estado_ = Estado::Adeudos;
}

/// Un adeudo tiene un 003 y, tras él, como mucho un 004, un 005 y un 006, por ese orden.
void OrdenRegistros::mirarDato() {
  if (anotador_.clase() == ClaseRegistro::Desconocido) return;
  const std::string_view dato = LeerCampo(anotador_.registro(), kNumeroDato);
  if (dato != "003" && (dato_.empty() || dato <= dato_))
    anotador_.campo(CodigoHallazgo::FueraDeOrden, *CampoEn(anotador_.registro(), kNumeroDato.desde), "003");
}

/// Otro acreedor pide antes el 05 del anterior. Si uno de los dos no está bien escrito, quizá es el mismo.
void OrdenRegistros::mirarAcreedor() {
  const std::string_view suyo = Recortar(LeerCampo(anotador_.registro(), kIdentificadorAcreedor));
  if (suyo != acreedor_ && ComprobarIdentificador(suyo).correcto &&
      ComprobarIdentificador(acreedor_).correcto)
    anotador_.posiciones(CodigoHallazgo::FueraDeOrden, kCodigo, "02", "05");
}

void OrdenRegistros::terminar() {
  constexpr std::string_view kCadena[] = {"01", "02", "03", "04", "05", "99"};
  const std::string_view siguiente = Admitidos(estado_);
  if (siguiente.empty()) return;
  // De los que pueden seguir, el que lleva al final.
  const std::string_view ultimo = siguiente.substr(siguiente.size() - 2);
  std::string faltan;
  for (const std::string_view codigo : kCadena)
    if (codigo >= ultimo) faltan.append(faltan.empty() ? "" : " ").append(codigo);
  anotador_.fichero(CodigoHallazgo::FaltaRegistro, {}, std::move(faltan));
}

}  // namespace remesa
