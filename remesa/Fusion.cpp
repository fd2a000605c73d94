#include "remesa/Fusion.h"

#include <cmath>
#include <limits>
#include <utility>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"

namespace remesa {
namespace {

constexpr std::int32_t kMaximo = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMinimo = std::numeric_limits<std::int32_t>::min();

std::int32_t Sumar(std::int32_t contador, std::int32_t cuantos) {
  if (contador > kMaximo - cuantos) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  return contador + cuantos;
}

}  // namespace

bool EntraEnImportacion(std::string_view registro, bool primera) {
  switch (Codigo(registro)) {
    case CodigoRegistro::Presentador:
    case CodigoRegistro::Acreedor:
      return primera;
    case CodigoRegistro::Otro:
      return false;
    default:
      return true;
  }
}

void Aplicar(std::string& registro, std::span<const Cambio> cambios) {
  for (const Cambio& cambio : cambios)
    EscribirCampo(registro, cambio.donde, cambio.texto);
}

std::span<const Cambio> Recuento::contar(std::string_view registro) {
  cambios_.clear();
  const auto cifras = [&](std::int32_t valor, Posiciones donde) {
    cambiar(registro, donde, Ceros(valor, donde.longitud()));
  };
  switch (Codigo(registro)) {
    case CodigoRegistro::Adeudo:
      if (Clase(registro) == ClaseRegistro::Adeudo) sumarImporte(registro);
      sumarRegistro(false);
      break;
    case CodigoRegistro::Acreedor:
      sumarRegistro(false);
      fecha_ = LeerCampo(registro, kFechaCobro);
      break;
    case CodigoRegistro::TotalesFecha:
      cambiar(registro, kFecha04, fecha_);
      cifras(totales_.importe, kImporte04);
      cifras(totales_.adeudos, kAdeudos04);
      sumarRegistro(true);
      cifras(totales_.registros, kRegistros04);
      break;
    case CodigoRegistro::TotalesAcreedor:
      cifras(totales_.importe, kImporte05);
      cifras(totales_.adeudos, kAdeudos05);
      sumarRegistro(true);
      cifras(totales_.registros, kRegistros05);
      break;
    case CodigoRegistro::TotalesGenerales:
      cifras(totales_.importe, kImporte99);
      cifras(totales_.adeudos, kAdeudos99);
      sumarRegistro(true);
      cifras(Sumar(totales_.registros, 1), kRegistros99);  // uno más: el "01"
      break;
    case CodigoRegistro::Presentador:
    case CodigoRegistro::Otro:
      break;
  }
  return cambios_;
}

void Recuento::quitarTotales() {
  totales_.registros -= deTotales_;
  deTotales_ = 0;
}

void Recuento::sumarRegistro(bool deTotales) {
  totales_.registros = Sumar(totales_.registros, 1);
  if (deTotales) ++deTotales_;
}

void Recuento::sumarImporte(std::string_view registro) {
  // nearbyint deja los empates en el par, que es como se guarda una suma en un contador entero.
  const double suma = std::nearbyint(totales_.importe + ValorNumerico(LeerCampo(registro, kImporteAdeudo)));
  if (!(suma >= kMinimo && suma <= kMaximo)) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  totales_.importe = static_cast<std::int32_t>(suma);
  totales_.adeudos = Sumar(totales_.adeudos, 1);
}

void Recuento::cambiar(std::string_view registro, Posiciones donde, std::string texto) {
  if (static_cast<std::size_t>(donde.desde) > registro.size())
    throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido);
  cambios_.push_back({donde, std::move(texto)});
}

void ReglasImportacion::empezarFichero(bool ultimo) {
  primera_ = !quedanRegistros_ && !totalesEnFichero_;
  recuento_.quitarTotales();
  totalesEnFichero_ = false;
  ultimo_ = ultimo;
}

Destino ReglasImportacion::dar(std::string_view registro) {
  cambios_ = {};
  if (!EntraEnImportacion(registro, primera_)) return Destino::Quitar;
  const std::span<const Cambio> cambios = recuento_.contar(registro);
  if (!EsDeTotales(Codigo(registro))) {
    quedanRegistros_ = true;
    return Destino::Conservar;
  }
  totalesEnFichero_ = true;
  if (!ultimo_) return Destino::Quitar;
  cambios_ = cambios;
  return Destino::Reescribir;
}

}  // namespace remesa
