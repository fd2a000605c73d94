#include "remesa/Identificacion.h"

#include "remesa/Calendario.h"
#include "remesa/Campos.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using namespace std::chrono;

constexpr std::string_view kCorriente = "PRE";
constexpr std::string_view kFinanciada = "PREFSDD";
constexpr int kMilesimasQueCaben = 100'000;
constexpr std::size_t kFechaYHora = 8 + 6 + 5;

std::string DosCifras(auto tiempo) {
  return Ceros(static_cast<std::int32_t>(tiempo.count()), 2);
}

/// AAAAMMDDHHMMSSmmmmm. Lo que no cabe en las milésimas pasa a los segundos.
std::string FechaYHora(Momento momento, int parte) {
  const auto dado = floor<seconds>(momento);
  const auto cuenta = (momento - dado).count() + parte;
  const auto segundo = dado + seconds{cuenta / kMilesimasQueCaben};
  const auto dia = floor<days>(segundo);
  const hh_mm_ss hora{segundo - dia};
  return EscribirFecha(Dia(dia)) + DosCifras(hora.hours()) + DosCifras(hora.minutes()) +
         DosCifras(hora.seconds()) + Ceros(static_cast<std::int32_t>(cuenta % kMilesimasQueCaben), 5);
}

}  // namespace

std::string IdentificacionRenovada(std::string_view actual, Momento ahora, int parte) {
  std::string nueva(EsDeFinanciada(actual) ? kFinanciada : kCorriente);
  const std::size_t delPresentador = nueva.size() + kFechaYHora;
  nueva += FechaYHora(ahora, parte);
  if (actual.size() > delPresentador) nueva += actual.substr(delPresentador);
  nueva.resize(static_cast<std::size_t>(kIdentificacionFichero.longitud()), ' ');
  return nueva;
}

bool EsDeFinanciada(std::string_view identificacion) {
  return identificacion.starts_with(kFinanciada);
}

std::string_view FechaDeIdentificacion(std::string_view identificacion) {
  if (!identificacion.starts_with(kCorriente)) return {};
  const std::string_view cifras = identificacion.substr(kCorriente.size(), kFechaYHora);
  constexpr std::size_t kFecha = 8, kDosCifras = 2;
  const bool completa =
      cifras.size() == kFechaYHora && SonCifras(cifras) && LeerFecha(cifras.substr(0, kFecha));
  const auto hora = [&](std::size_t donde) { return cifras.substr(kFecha + donde, kDosCifras); };
  if (!completa || hora(0) > "23" || hora(2) > "59" || hora(4) > "59") return {};
  return cifras.substr(0, kFecha);
}

void RenovarIdentificacion(std::string& presentador, Momento ahora, int parte) {
  const std::string nueva =
      IdentificacionRenovada(LeerCampo(presentador, kIdentificacionFichero), ahora, parte);
  EscribirCampo(presentador, kFechaCreacion, EscribirFecha(Dia(floor<days>(ahora))));
  EscribirCampo(presentador, kIdentificacionFichero, nueva);
}

}  // namespace remesa
