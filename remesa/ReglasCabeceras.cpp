#include "remesa/ReglasCabeceras.h"

#include <utility>

#include "remesa/Identificacion.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

}  // namespace

void ReglasCabeceras::anotar(C codigo, Posiciones donde, std::string esperado, std::uint64_t otro) {
  anotador_.campo(codigo, *CampoEn(anotador_.registro(), donde.desde), std::move(esperado), otro);
}

void ReglasCabeceras::presentador() {
  mirarCreacion();
  const std::string_view registro = anotador_.registro();
  const std::string_view entidad = LeerCampo(registro, kEntidadReceptora);
  const bool entera = entidad.size() == static_cast<std::size_t>(kEntidadReceptora.longitud());
  if (entera && SonCifras(entidad) && !receptora_)
    receptora_ = anotador_.preparar(C::EntidadReceptora, *CampoEn(registro, kEntidadReceptora.desde));
}

/// La identificación lleva la fecha de creación. Si es esta la que está mal, lo de aquella se dice con ella.
void ReglasCabeceras::mirarCreacion() {
  const std::string_view registro = anotador_.registro();
  const std::string_view escrita = LeerCampo(registro, kFechaCreacion);
  const std::optional<Dia> creacion = LeerFecha(escrita);
  if (!creacion || EsAntigua(*creacion)) return;
  if (*creacion > hoy_) return anotar(C::CreacionFutura, kFechaCreacion, EscribirFecha(hoy_));
  const std::string_view identificacion = Recortar(LeerCampo(registro, kIdentificacionFichero));
  const std::string_view fecha = FechaDeIdentificacion(identificacion);
  if (!EsDeFinanciada(identificacion) && !fecha.empty() && fecha != escrita)
    anotar(C::FechaIdentificacion, kIdentificacionFichero, std::string(escrita));
}

void ReglasCabeceras::abrirBloque() {
  const std::string_view registro = anotador_.registro();
  bloque_.abierto = conCabecera_ = true;
  bloque_.acreedor = Recortar(LeerCampo(registro, kIdentificadorAcreedor));
  bloque_.fechaCobro = LeerCampo(registro, kFechaCobro);
  bloque_.nombre = Recortar(LeerCampo(registro, kNombreAcreedor));
  bloque_.cuenta = Recortar(LeerCampo(registro, kCuentaAcreedor));
  bloque_.cobro = LeerFecha(bloque_.fechaCobro);
  if (bloque_.cobro && EsAntigua(*bloque_.cobro)) bloque_.cobro.reset();
}

void ReglasCabeceras::acreedor() {
  mirarFechaCobro();
  mirarRepetido();
  mirarBanco();
}

void ReglasCabeceras::mirarFechaCobro() {
  if (!bloque_.cobro) return;
  const Dia cobro = *bloque_.cobro;
  // Con el año mal, el día de la semana no dice nada.
  if (cobro > hoy_ + kCobroLejano) return anotar(C::CobroLejano, kFechaCobro);
  const std::string habil = EscribirFecha(HabilDeCobro(cobro, hoy_));
  if (cobro < hoy_) anotar(C::CobroPasado, kFechaCobro, habil);
  if (cobro == hoy_) anotar(C::CobroHoy, kFechaCobro, habil);
  if (EsFinDeSemana(cobro))
    anotar(C::CobroFinDeSemana, kFechaCobro, habil);
  else if (Festivo(cobro) != FestivoTarget::Ninguno)
    anotar(C::CobroFestivo, kFechaCobro, habil);
}

/// Otro acreedor, otra fecha u otra cuenta piden otro bloque; los mismos, uno solo.
void ReglasCabeceras::mirarRepetido() {
  if (bloque_.acreedor.empty() || !bloque_.cobro || bloque_.cuenta.empty()) return;
  const std::uint64_t huella = Mezclar(Mezclar(Huella(bloque_.acreedor), Huella(bloque_.fechaCobro)),
                                       Huella(CuentaComparable(bloque_.cuenta)));
  if (const auto otro = bloques_.poner(huella, anotador_.numero()); otro != 0)
    anotar(C::BloqueRepetido, kIdentificadorAcreedor, {}, otro);
}

void ReglasCabeceras::mirarBanco() {
  const std::string_view cuenta = CuentaComparable(bloque_.cuenta);
  if (!receptora_ || !EsCcc(cuenta) || !ComprobarIban(bloque_.cuenta).correcto) return;
  const std::string_view entidad = cuenta.substr(0, static_cast<std::size_t>(kEntidadReceptora.longitud()));
  if (receptora_->esperado.empty()) receptora_->esperado = entidad;
  esDeAlguna_ = esDeAlguna_ || entidad == receptora_->valor;
}

void ReglasCabeceras::terminar() {
  if (receptora_ && !receptora_->esperado.empty() && !esDeAlguna_) anotador_.dar(std::move(*receptora_));
}

/// Un 04 y un 05 repiten el acreedor de su cabecera; el 04, además, la fecha de cobro. Los que no están bien
/// hechos, los de ella o los suyos, ya se han anotado.
void ReglasCabeceras::totalesFecha() {
  // Si falta su 02, o no se entiende, la que hay es la de otro bloque.
  if (!std::exchange(conCabecera_, false) || !bloque_.abierto) return;
  compararAcreedor(kAcreedor04);
  const std::optional<Dia> cobro = LeerFecha(LeerCampo(anotador_.registro(), kFecha04));
  if (bloque_.cobro && cobro && !EsAntigua(*cobro)) comparar(kFecha04, bloque_.fechaCobro);
}

void ReglasCabeceras::totalesAcreedor() {
  if (bloque_.abierto) compararAcreedor(kAcreedor05);
  bloque_.abierto = false;
}

void ReglasCabeceras::compararAcreedor(Posiciones donde) {
  const std::string_view dicho = Recortar(LeerCampo(anotador_.registro(), donde));
  if (dicho != bloque_.acreedor && ComprobarIdentificador(bloque_.acreedor).correcto &&
      ComprobarIdentificador(dicho).correcto)
    comparar(donde, bloque_.acreedor);
}

void ReglasCabeceras::comparar(Posiciones donde, std::string_view deCabecera) {
  const std::string_view registro = anotador_.registro();
  const bool entero = registro.size() >= static_cast<std::size_t>(donde.hasta);
  if (entero && Recortar(LeerCampo(registro, donde)) != deCabecera)
    anotar(C::OtraCabecera, donde, std::string(deCabecera));
}

}  // namespace remesa
