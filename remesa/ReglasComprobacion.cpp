#include "remesa/ReglasComprobacion.h"

#include <algorithm>
#include <limits>

#include "remesa/ReglasCampos.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;
using namespace std::chrono_literals;

/// Desde noviembre de 2016 el primer adeudo de una serie no tiene que ser FRST.
constexpr Dia kFrstSobra{2016y, std::chrono::November, 1d};

/// Blancos y la marca de fin de fichero de otros sistemas. Si es más corta que un registro, una línea que
/// sobra.
bool EnBlanco(std::string_view bytes) {
  using namespace std::string_view_literals;
  return bytes.find_first_not_of(" \t\x1A\0"sv) == std::string_view::npos;
}

/// Las 20 cifras de un IBAN español, que como cuenta nacional es la misma; las demás cuentas, enteras.
std::string_view CuentaComparable(std::string_view cuenta) {
  constexpr std::size_t kAntes = 4, kIbanEspanol = 24;
  if (cuenta.size() != kIbanEspanol || !cuenta.starts_with("ES")) return cuenta;
  return EsCcc(cuenta.substr(kAntes)) ? cuenta.substr(kAntes) : cuenta;
}

Posiciones Desde(std::uint64_t desde, std::uint64_t hasta) {
  constexpr std::uint64_t kTope = std::numeric_limits<int>::max();
  return {static_cast<int>(std::min(desde, kTope)), static_cast<int>(std::min(hasta, kTope))};
}

}  // namespace

ReglasComprobacion::ReglasComprobacion(Dia hoy, ReceptorHallazgos recibir)
    : anotador_(std::move(recibir)), hoy_(hoy) {}

void ReglasComprobacion::dar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila) {
  if (ajeno_) return;
  anotador_.pasarA(bytes, fila);
  if (!mirarForma(bytes, longitud)) return;
  orden_.dar();
  if (anotador_.clase() == ClaseRegistro::Acreedor) abrirBloque();
  ComprobarCampos(anotador_, repetidoDeCabecera());
  switch (anotador_.clase()) {
    case ClaseRegistro::Acreedor:
      mirarFechaCobro();
      break;
    case ClaseRegistro::Adeudo:
      mirarAdeudo();
      break;
    case ClaseRegistro::Ultimos:
    case ClaseRegistro::Balanza:
    case ClaseRegistro::Mandato:
      mirarOpcional();
      break;
    case ClaseRegistro::TotalesFecha:
      mirarCabecera(kAcreedor04);
      hayAdeudo_ = false;
      break;
    case ClaseRegistro::TotalesAcreedor:
      mirarCabecera(kAcreedor05);
      hayCabecera_ = false;
      break;
    default:
      break;
  }
  mirarTotales();
}

void ReglasComprobacion::terminar() {
  if (ajeno_) return;
  if (anotador_.numero() == 0)
    anotador_.fichero(C::SinRegistros);
  else
    orden_.terminar();
}

/// Longitud, código y número de dato. false si no hay nada más que mirar en el registro.
bool ReglasComprobacion::mirarForma(std::string_view bytes, std::uint64_t longitud) {
  const bool conocido = anotador_.clase() != ClaseRegistro::Desconocido;
  if (anotador_.numero() == 1 && !EnBlanco(bytes) && !conocido &&
      LeerCampo(bytes, kVersion) != kVersion1914) {
    constexpr std::size_t kCabeza = 7;
    anotador_.fichero(C::NoEsRemesa, std::string(bytes.substr(0, kCabeza)), "01" + std::string(kVersion1914));
    ajeno_ = true;
    return false;
  }
  if (longitud != kLongitudRegistro)
    anotador_.posiciones(C::Longitud,
                         Desde(std::min<std::uint64_t>(longitud, kLongitudRegistro) + 1,
                               std::max<std::uint64_t>(longitud, kLongitudRegistro)),
                         std::to_string(longitud), std::to_string(kLongitudRegistro));
  if (conocido) return true;
  if (longitud < kLongitudRegistro && EnBlanco(bytes)) return false;
  if (Codigo(bytes) == CodigoRegistro::Adeudo)
    anotador_.posiciones(C::NumeroDato, kNumeroDato, std::string(LeerCampo(bytes, kNumeroDato)),
                         "003 004 005 006");
  else
    anotador_.posiciones(C::CodigoDesconocido, kCodigo, std::string(LeerCampo(bytes, kCodigo)),
                         "01 02 03 04 05 99");
  return true;
}

const Campo& ReglasComprobacion::campoDe(Posiciones donde) const {
  return *CampoEn(anotador_.registro(), donde.desde);
}

void ReglasComprobacion::abrirBloque() {
  const std::string_view registro = anotador_.registro();
  acreedor_ = Recortar(LeerCampo(registro, kIdentificadorAcreedor));
  fechaCobro_ = LeerCampo(registro, kFechaCobro);
  cobro_ = LeerFecha(fechaCobro_);
  hayCabecera_ = true;
  hayAdeudo_ = desordenado_ = false;
}

void ReglasComprobacion::mirarFechaCobro() {
  if (!cobro_) return;
  // Un adeudo se presenta, a más tardar, la víspera.
  const Dia manana = std::chrono::sys_days(hoy_) + std::chrono::days(1);
  const Dia habil = HabilDesde(std::max(*cobro_, manana));
  const auto anotar = [&](CodigoHallazgo codigo) {
    anotador_.campo(codigo, campoDe(kFechaCobro), EscribirFecha(habil));
  };
  if (*cobro_ < hoy_) anotar(C::CobroPasado);
  if (EsFinDeSemana(*cobro_))
    anotar(C::CobroFinDeSemana);
  else if (Festivo(*cobro_) != FestivoTarget::Ninguno)
    anotar(C::CobroFestivo);
}

void ReglasComprobacion::mirarAdeudo() {
  const std::string_view registro = anotador_.registro();
  const std::string_view referencias = LeerCampo(registro, kReferencias);
  const std::string_view referencia = LeerCampo(registro, kReferenciaAdeudo);
  anotador_.ponerAdeudo(registro);
  if (referencias.size() < static_cast<std::size_t>(kReferencias.longitud())) {
    hayAdeudo_ = false;  // cortado: no se sabe qué referencias son
    return;
  }
  // Con decirlo una vez por bloque basta: lo que sigue está desordenado por lo mismo.
  if (hayAdeudo_ && !desordenado_ &&
      referencia < LeerCampo(referencias_, {1, kReferenciaAdeudo.longitud()})) {
    anotador_.campo(C::SinOrdenar, campoDe(kReferenciaAdeudo),
                    std::string(Recortar(LeerCampo(referencias_, {1, kReferenciaAdeudo.longitud()}))));
    desordenado_ = true;
  }
  referencias_ = referencias;
  hayAdeudo_ = true;
  mirarRepetidos(Recortar(referencia));
  const std::optional<Dia> firma = LeerFecha(LeerCampo(registro, kFechaFirma));
  if (firma && cobro_ && *firma > *cobro_)
    anotador_.campo(C::FirmaPosterior, campoDe(kFechaFirma), fechaCobro_);
  if (LeerCampo(registro, kTipoAdeudo) == "FRST" && (!cobro_ || *cobro_ >= kFrstSobra))
    anotador_.campo(C::Frst, campoDe(kTipoAdeudo), "RCUR");
}

void ReglasComprobacion::mirarRepetidos(std::string_view referencia) {
  const std::string_view registro = anotador_.registro();
  const std::uint64_t numero = anotador_.numero();
  if (!referencia.empty())
    if (const auto otro = repetidos_.referencia(referencia, numero); otro != 0)
      anotador_.campo(C::ReferenciaRepetida, campoDe(kReferenciaAdeudo), {}, otro);
  const std::string_view mandato = Recortar(LeerCampo(registro, kReferenciaMandato));
  if (mandato.empty()) return;
  // Dos acreedores pueden llamar igual a sus mandatos.
  const std::uint64_t huella = Mezclar(Huella(acreedor_), Huella(mandato));
  if (const auto otro = repetidos_.cobro(huella, LeerCampo(registro, kImporteAdeudo), fechaCobro_, numero);
      otro != 0)
    anotador_.campo(C::CobroDoble, campoDe(kReferenciaMandato), {}, otro);
  const std::string_view cuenta = CuentaComparable(Recortar(LeerCampo(registro, kCuentaDeudor)));
  if (cuenta.empty() || registro.size() < static_cast<std::size_t>(kCuentaDeudor.hasta)) return;
  if (const auto otro = repetidos_.otraCuenta(huella, cuenta, numero); otro != 0)
    anotador_.campo(C::MandatoDosCuentas, campoDe(kCuentaDeudor), {}, otro);
}

void ReglasComprobacion::mirarOpcional() {
  const std::string_view registro = anotador_.registro();
  if (anotador_.clase() == ClaseRegistro::Balanza) anotador_.campo(C::RegistroSinUso, campoDe(kNumeroDato));
  const std::string_view suyas = LeerCampo(registro, kReferencias);
  if (!hayAdeudo_ || suyas.size() < referencias_.size() || suyas == referencias_) return;
  for (const Posiciones donde : {kReferenciaAdeudo, kReferenciaMandato}) {
    const Posiciones suya{donde.desde - kReferencias.desde + 1, donde.hasta - kReferencias.desde + 1};
    const std::string_view debida = LeerCampo(referencias_, suya);
    const std::string_view esperada = Recortar(debida);
    // Si al adeudo le falta, lo que está mal es el adeudo.
    if (!esperada.empty() && LeerCampo(registro, donde) != debida)
      anotador_.campo(C::ReferenciasDistintas, campoDe(donde), std::string(esperada));
  }
}

DatosCabecera ReglasComprobacion::repetidoDeCabecera() const {
  const ClaseRegistro clase = anotador_.clase();
  const bool repite = clase == ClaseRegistro::TotalesFecha || clase == ClaseRegistro::TotalesAcreedor;
  if (!repite || !hayCabecera_) return {};
  return {acreedor_, Recortar(fechaCobro_)};
}

/// Un 04 y un 05 repiten el acreedor de su cabecera; el 04, además, la fecha de cobro. Si los de ella no son
/// correctos, la que está mal es ella.
void ReglasComprobacion::mirarCabecera(Posiciones acreedor) {
  if (!hayCabecera_) return;
  const std::size_t largo = anotador_.registro().size();
  const auto comparar = [&](Posiciones donde, std::string_view deCabecera) {
    const std::string_view dicho = Recortar(LeerCampo(anotador_.registro(), donde));
    const bool entero = largo >= static_cast<std::size_t>(donde.hasta);
    if (entero && !dicho.empty() && dicho != deCabecera)
      anotador_.campo(C::OtraCabecera, campoDe(donde), std::string(deCabecera));
  };
  if (ComprobarIdentificador(acreedor_).correcto) comparar(acreedor, acreedor_);
  if (cobro_ && anotador_.clase() == ClaseRegistro::TotalesFecha) comparar(kFecha04, fechaCobro_);
}

/// Lo que un registro de totales debe decir. Un campo que no es un número ya se ha anotado.
void ReglasComprobacion::mirarTotales() {
  constexpr C kCodigos[] = {C::TotalImportes, C::TotalAdeudos, C::TotalRegistros};
  const std::string_view registro = anotador_.registro();
  const C* codigo = kCodigos;
  for (const TotalDebido& debido : totales_.dar(registro, anotador_.clase())) {
    const C este = *codigo++;
    const std::string_view dicho = LeerCampo(registro, debido.donde);
    if (dicho.size() != static_cast<std::size_t>(debido.donde.longitud()) || !SonCifras(dicho)) continue;
    const std::string escrito = CifrasDe(debido.valor, debido.donde.longitud());
    if (dicho != escrito) anotador_.campo(este, campoDe(debido.donde), escrito);
  }
}

}  // namespace remesa
