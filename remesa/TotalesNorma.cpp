#include "remesa/TotalesNorma.h"

#include <cmath>

namespace remesa {
namespace {

// Un fichero sin fin daría la vuelta, no un comportamiento indefinido.
std::int64_t Mas(std::int64_t uno, std::int64_t otro) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(uno) + static_cast<std::uint64_t>(otro));
}

}  // namespace

void SumaNorma::sumar(const SumaNorma& otra) {
  importe = Mas(importe, otra.importe);
  adeudos = Mas(adeudos, otra.adeudos);
  registros = Mas(registros, otra.registros);
}

std::int64_t ImporteDe(std::string_view adeudo) {
  const std::string_view escrito = LeerCampo(adeudo, kImporteAdeudo);
  std::int64_t importe = 0;
  for (const char c : escrito) {
    // Lo que no son once cifras se lee despacio.
    if (!EsCifra(c)) return static_cast<std::int64_t>(std::nearbyint(ValorNumerico(escrito)));
    importe = importe * 10 + (c - '0');
  }
  return importe;
}

std::span<const TotalDebido> TotalesNorma::dar(std::string_view registro, ClaseRegistro clase) {
  switch (clase) {
    case ClaseRegistro::Presentador:
      fichero_.sumar({0, 0, 1});
      break;
    case ClaseRegistro::Acreedor:
      acreedor_.sumar(bloque_);  // si al anterior le faltó su 04
      bloque_ = {0, 0, 1};
      break;
    case ClaseRegistro::Adeudo:
      bloque_.sumar({ImporteDe(registro), 1, 1});
      break;
    case ClaseRegistro::TotalesFecha: {
      bloque_.sumar({0, 0, 1});
      const auto debidos = deber(bloque_, kImporte04, kAdeudos04, kRegistros04);
      acreedor_.sumar(bloque_);
      bloque_ = {};
      return debidos;
    }
    case ClaseRegistro::TotalesAcreedor: {
      // Los adeudos de un bloque sin su 04 cuentan igual: es el 04 lo que falta.
      acreedor_.sumar(bloque_);
      bloque_ = {};
      acreedor_.sumar({0, 0, 1});
      const auto debidos = deber(acreedor_, kImporte05, kAdeudos05, kRegistros05);
      fichero_.sumar(acreedor_);
      acreedor_ = {};
      return debidos;
    }
    case ClaseRegistro::TotalesGenerales:
      fichero_.sumar(bloque_);
      fichero_.sumar(acreedor_);
      bloque_ = acreedor_ = {};
      fichero_.sumar({0, 0, 1});
      return deber(fichero_, kImporte99, kAdeudos99, kRegistros99);
    default: {
      // El que no es de nadie cuenta donde cae: fuera de los bloques, en el fichero.
      SumaNorma& suya = bloque_.registros > 0 ? bloque_ : acreedor_.registros > 0 ? acreedor_ : fichero_;
      suya.sumar({0, 0, 1});
      break;
    }
  }
  return {};
}

std::span<const TotalDebido> TotalesNorma::deber(const SumaNorma& suma, Posiciones importe,
                                                 Posiciones adeudos, Posiciones registros) {
  debidos_ = {{{importe, suma.importe}, {adeudos, suma.adeudos}, {registros, suma.registros}}};
  return debidos_;
}

}  // namespace remesa
