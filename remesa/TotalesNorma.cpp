#include "remesa/TotalesNorma.h"

#include <charconv>

#include "remesa/Validez.h"

namespace remesa {
namespace {

/// 0 si no es un número: el campo se anota aparte.
std::uint64_t Numero(std::string_view cifras) {
  std::uint64_t numero = 0;
  if (SonCifras(cifras)) std::from_chars(cifras.data(), cifras.data() + cifras.size(), numero);
  return numero;
}

std::string Completo(std::uint64_t numero, int ancho) {
  std::string cifras = std::to_string(numero);
  const auto largo = static_cast<std::size_t>(ancho);
  return cifras.size() < largo ? cifras.insert(0, largo - cifras.size(), '0') : cifras;
}

}  // namespace

void TotalesNorma::Suma::sumar(const Suma& otra) {
  importe += otra.importe;
  adeudos += otra.adeudos;
  registros += otra.registros;
}

void TotalesNorma::dar() {
  const std::string_view registro = anotador_.registro();
  switch (anotador_.clase()) {
    case ClaseRegistro::Presentador:
      ++fichero_.registros;
      break;
    case ClaseRegistro::Acreedor:
      acreedor_.sumar(bloque_);  // si al anterior le faltó su 04
      bloque_ = {0, 0, 1};
      break;
    case ClaseRegistro::Adeudo:
      bloque_.sumar({Numero(LeerCampo(registro, kImporteAdeudo)), 1, 1});
      break;
    case ClaseRegistro::TotalesFecha:
      ++bloque_.registros;
      comparar(bloque_, kImporte04, kAdeudos04, kRegistros04);
      acreedor_.sumar(bloque_);
      bloque_ = {};
      break;
    case ClaseRegistro::TotalesAcreedor:
      // Los adeudos de un bloque sin su 04 cuentan igual: es el 04 lo que falta.
      acreedor_.sumar(bloque_);
      bloque_ = {};
      ++acreedor_.registros;
      comparar(acreedor_, kImporte05, kAdeudos05, kRegistros05);
      fichero_.sumar(acreedor_);
      acreedor_ = {};
      break;
    case ClaseRegistro::TotalesGenerales:
      fichero_.sumar(bloque_);
      fichero_.sumar(acreedor_);
      bloque_ = acreedor_ = {};
      ++fichero_.registros;
      comparar(fichero_, kImporte99, kAdeudos99, kRegistros99);
      break;
    default: {
      // El que no es de nadie cuenta donde cae: fuera de los bloques, en el fichero.
      Suma& suya = bloque_.registros > 0 ? bloque_ : acreedor_.registros > 0 ? acreedor_ : fichero_;
      ++suya.registros;
      break;
    }
  }
}

void TotalesNorma::comparar(const Suma& suma, Posiciones importe, Posiciones adeudos, Posiciones registros) {
  compararUno(CodigoHallazgo::TotalImportes, importe, suma.importe);
  compararUno(CodigoHallazgo::TotalAdeudos, adeudos, suma.adeudos);
  compararUno(CodigoHallazgo::TotalRegistros, registros, suma.registros);
}

void TotalesNorma::compararUno(CodigoHallazgo codigo, Posiciones donde, std::uint64_t debido) {
  const std::string_view dicho = LeerCampo(anotador_.registro(), donde);
  if (dicho.size() != static_cast<std::size_t>(donde.longitud()) || !SonCifras(dicho)) return;
  if (Numero(dicho) == debido) return;
  anotador_.campo(codigo, *CampoEn(anotador_.registro(), donde.desde), Completo(debido, donde.longitud()));
}

}  // namespace remesa
