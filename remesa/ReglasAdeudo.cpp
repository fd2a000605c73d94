#include "remesa/ReglasAdeudo.h"

#include <algorithm>

#include "remesa/CuentaNacional.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;
using namespace std::chrono_literals;

/// Desde noviembre de 2016 el primer adeudo de una serie no tiene que ser FRST.
constexpr Dia kFrstSobra{2016y, std::chrono::November, 1d};

bool EsCuenta(std::string_view cuenta) {
  return EsCcc(cuenta) || ComprobarIban(cuenta).correcto;
}

}  // namespace

void ReglasAdeudo::anotar(C codigo, Posiciones donde, std::string esperado, std::uint64_t otro) {
  anotador_.campo(codigo, *CampoEn(anotador_.registro(), donde.desde), std::move(esperado), otro);
}

/// Lo que dice el registro en que se está, recortado; vacío si es tan corto que no tiene el campo entero.
std::string_view ReglasAdeudo::dice(Posiciones donde) const {
  const std::string_view registro = anotador_.registro();
  if (registro.size() < static_cast<std::size_t>(donde.hasta)) return {};
  return Recortar(LeerCampo(registro, donde));
}

std::string_view ReglasAdeudo::elAdeudo(Posiciones donde) const {
  return Recortar(LeerCampo(adeudo_, donde));
}

void ReglasAdeudo::abrirBloque() {
  acreedor_ = Huella(bloque_.acreedor);
  fecha_ = Huella(bloque_.fechaCobro);
  cuenta_ = suya(CuentaComparable(bloque_.cuenta));
  hayAdeudo_ = desordenado_ = false;
}

void ReglasAdeudo::adeudo() {
  const std::string_view registro = anotador_.registro();
  anotador_.ponerAdeudo(registro);
  if (registro.size() < static_cast<std::size_t>(kReferencias.hasta)) {
    hayAdeudo_ = false;  // cortado: no se sabe qué referencias son
    return;
  }
  mirarOrden();
  adeudo_ = registro;
  hayAdeudo_ = true;
  mirarRepetidos();
  mirarFirma();
  if (visto_.tipo == TipoAdeudo::FRST && (!bloque_.cobro || *bloque_.cobro >= kFrstSobra))
    frst_ = anotador_.preparar(C::Frst, *CampoEn(registro, kTipoAdeudo.desde), "RCUR");
  if (visto_.cuenta != 0 && visto_.cuenta == cuenta_) anotar(C::CuentaPropia, kCuentaDeudor);
}

/// Con decirlo una vez por bloque basta: lo que sigue está desordenado por lo mismo.
void ReglasAdeudo::mirarOrden() {
  if (!hayAdeudo_ || desordenado_) return;
  const std::string_view anterior = elAdeudo(kReferenciaAdeudo), referencia = dice(kReferenciaAdeudo);
  if (referencia.empty() || referencia >= anterior) return;
  anotar(C::SinOrdenar, kReferenciaAdeudo, std::string(anterior));
  desordenado_ = true;
}

/// Huella de una clave de este acreedor; 0 si no hay clave.
std::uint64_t ReglasAdeudo::suya(std::string_view clave) const {
  return clave.empty() ? 0 : Huella(acreedor_, clave);
}

void ReglasAdeudo::anticipar() {
  const std::string_view registro = anotador_.registro();
  visto_ = {};
  visto_.tipo = LeerTipoAdeudo(dice(kTipoAdeudo));
  visto_.dia = NumeroDeDia(bloque_.cobro);
  visto_.registro = anotador_.numero();
  visto_.cuenta = suya(CuentaComparable(dice(kCuentaDeudor)));
  visto_.referencia = suya(dice(kReferenciaAdeudo));
  visto_.mandato = suya(dice(kReferenciaMandato));
  const std::uint64_t importe = Huella(LeerCampo(registro, kImporteAdeudo));
  visto_.cobro = Mezclar(Mezclar(visto_.mandato, fecha_), importe);
  if (visto_.cuenta != 0 && registro.size() >= static_cast<std::size_t>(kConcepto.hasta))
    visto_.cargo = Huella(Mezclar(visto_.cuenta, importe), dice(kConcepto));
  referencias_.anticipar(visto_.referencia);
  repetidos_.anticipar(visto_);
}

void ReglasAdeudo::mirarRepetidos() {
  const std::string_view registro = anotador_.registro();
  if (visto_.referencia != 0)
    if (const auto otro = referencias_.poner(visto_.referencia, anotador_.numero()); otro != 0)
      anotar(C::ReferenciaRepetida, kReferenciaAdeudo, {}, otro);
  if (visto_.mandato == 0) return;
  const Choques choques = repetidos_.adeudo(visto_);
  if (choques.cobro != 0) anotar(C::CobroDoble, kReferenciaMandato, {}, choques.cobro);
  if (choques.otroMandato != 0) anotar(C::DosMandatos, kReferenciaMandato, {}, choques.otroMandato);
  if (choques.secuencia != 0) anotar(C::Secuencia, kTipoAdeudo, {}, choques.secuencia);
  if (choques.otraCuenta != 0)
    otraCuenta_ = anotador_.preparar(C::MandatoDosCuentas, *CampoEn(registro, kCuentaDeudor.desde), {},
                                     choques.otraCuenta);
}

void ReglasAdeudo::mirarFirma() {
  const std::optional<Dia> firma = LeerFecha(dice(kFechaFirma));
  if (!firma || EsAntigua(*firma)) return;
  const Dia cobro = bloque_.cobro.value_or(hoy_);
  if (bloque_.cobro && *firma > cobro)
    anotar(C::FirmaPosterior, kFechaFirma, bloque_.fechaCobro);
  else if (*firma > hoy_)
    anotar(C::FirmaFutura, kFechaFirma, EscribirFecha(hoy_));
  else if (visto_.tipo == TipoAdeudo::OOFF && *firma + kVidaMandato < cobro)
    anotar(C::FirmaCaducada, kFechaFirma);
}

void ReglasAdeudo::cerrar() {
  if (frst_ && !conSmnda_) anotador_.dar(std::move(*frst_));
  if (otraCuenta_ && !conSmnda_ && !conOriginal_) anotador_.dar(std::move(*otraCuenta_));
  frst_.reset();
  otraCuenta_.reset();
  conSmnda_ = conOriginal_ = false;
}

void ReglasAdeudo::dudoso() {
  hayAdeudo_ = false;
  conSmnda_ = true;
}

void ReglasAdeudo::opcional() {
  const std::string_view registro = anotador_.registro();
  const ClaseRegistro clase = anotador_.clase();
  if (clase == ClaseRegistro::Balanza) anotar(C::RegistroSinUso, kNumeroDato);
  if (hayAdeudo_) mirarReferencias();
  const Posiciones suyo{kReferencias.hasta + 1, CamposDe(clase).back().donde.desde - 1};
  const bool nada = LeerCampo(registro, suyo).find_first_not_of(" 0") == std::string_view::npos;
  if (clase == ClaseRegistro::Ultimos) nada ? anotar(C::OpcionalVacio, kNumeroDato) : mirarUltimos();
  if (clase == ClaseRegistro::Mandato) nada ? anotar(C::NadaCambia, kNumeroDato) : mirarMandato();
}

/// Un opcional repite las referencias de su adeudo. Si al adeudo le falta una, lo que está mal es el adeudo.
void ReglasAdeudo::mirarReferencias() {
  for (const Posiciones donde : {kReferenciaAdeudo, kReferenciaMandato}) {
    const std::string_view debida = elAdeudo(donde), dicha = dice(donde);
    if (!debida.empty() && !dicha.empty() && dicha != debida)
      anotar(C::ReferenciasDistintas, donde, std::string(debida));
  }
}

/// Se dan solo si no son el acreedor y el deudor. El mismo nombre con otra identificación es otra persona.
void ReglasAdeudo::mirarUltimos() {
  const auto comparar = [&](Posiciones nombre, Posiciones codigo, std::string_view otroNombre,
                            std::string_view otroCodigo) {
    const std::string_view suNombre = dice(nombre), suCodigo = dice(codigo);
    const bool mismoCodigo = !suCodigo.empty() && suCodigo == otroCodigo;
    const bool otra = !suCodigo.empty() && !otroCodigo.empty() && !mismoCodigo;
    if (!suNombre.empty() && suNombre == otroNombre && !otra)
      anotar(C::MismoTitular, nombre);
    else if (mismoCodigo)
      anotar(C::MismoTitular, codigo);
  };
  if (hayAdeudo_) comparar(kNombreTitular, kCodigoTitular, elAdeudo(kNombreDeudor), elAdeudo(kCodigoDeudor));
  if (!bloque_.abierto) return;
  // El acreedor se identifica por su identificador o por el número fiscal que lleva dentro.
  constexpr std::size_t kNumeroFiscal = 7;
  const std::string_view codigo = dice(kCodigoUltimoAcreedor);
  const std::string_view resto = codigo.empty() ? codigo : codigo.substr(1);
  const std::string_view acreedor = bloque_.acreedor;
  const bool mismo =
      !resto.empty() &&
      (resto == acreedor || (acreedor.size() > kNumeroFiscal && resto == acreedor.substr(kNumeroFiscal)));
  comparar(kNombreUltimoAcreedor, kCodigoUltimoAcreedor, bloque_.nombre, mismo ? codigo : std::string_view());
}

/// Un 006 dice lo de antes de lo que cambia, y solo de lo que cambia.
void ReglasAdeudo::mirarMandato() {
  const auto comparar = [&](Posiciones donde, std::string_view ahora) {
    if (const std::string_view antes = dice(donde); !antes.empty() && antes == ahora)
      anotar(C::NadaCambia, donde);
  };
  if (hayAdeudo_) comparar(kMandatoOriginal, elAdeudo(kReferenciaMandato));
  if (bloque_.abierto) {
    comparar(kNombreAcreedorOriginal, bloque_.nombre);
    comparar(kAcreedorOriginal, bloque_.acreedor);
  }
  mirarCuentaOriginal();
}

/// Solo se da si la de ahora es del mismo banco; si no, SMNDA.
void ReglasAdeudo::mirarCuentaOriginal() {
  const std::string_view original = dice(kCuentaOriginal);
  const bool smnda = !dice(kEntidadOriginal).empty();
  conSmnda_ = conSmnda_ || smnda;
  conOriginal_ = conOriginal_ || !original.empty();
  if (original.empty()) return;
  if (smnda) return anotar(C::SmndaConCuenta, kCuentaOriginal);
  if (!hayAdeudo_) return;
  const std::string_view ahora = elAdeudo(kCuentaDeudor);
  if (CuentaComparable(original) == CuentaComparable(ahora))
    anotar(C::NadaCambia, kCuentaOriginal);
  else if (EsCuenta(original) && EsCuenta(ahora) && EntidadDeCuenta(original) != EntidadDeCuenta(ahora))
    anotar(C::OtraEntidad, kCuentaOriginal);
}

}  // namespace remesa
