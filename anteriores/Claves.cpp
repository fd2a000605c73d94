#include "anteriores/Claves.h"

#include <algorithm>

#include "devoluciones/Cotejo.h"
#include "devoluciones/Devolucion.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Validez.h"

namespace anteriores {

using remesa::Mezclar;

namespace {

constexpr auto kEnSEPA = [](char c) { return remesa::EquivalenteSEPA(c); };

std::uint64_t Huella(std::string_view texto) {
  return std::ranges::all_of(texto, [](char c) { return remesa::EsDelJuegoSEPA(c); })
             ? remesa::Huella(texto)
             : remesa::Huella(remesa::EquivalenteSEPA(texto));
}

}  // namespace

std::string_view Valor(std::string_view registro, remesa::Posiciones donde) {
  return remesa::Recortar(remesa::LeerCampo(registro, donde));
}

bool MismoTexto(std::string_view uno, std::string_view otro) {
  return std::ranges::equal(uno, otro, {}, kEnSEPA, kEnSEPA);
}

std::uint64_t HuellaAcreedor(std::string_view identificador) {
  return identificador.empty() ? 0 : Huella(remesa::SinSufijo(identificador));
}

std::uint64_t HuellaReferencia(std::string_view referencia) {
  return referencia.empty() || referencia == devoluciones::kSinReferencia ? 0 : Huella(referencia);
}

std::uint64_t HuellaIdentificacion(std::string_view identificacion) {
  return HuellaReferencia(devoluciones::IdentificacionComparable(identificacion));
}

std::uint32_t HuellaCuenta(std::string_view cuenta) {
  const std::string_view comparable = remesa::CuentaComparable(cuenta);
  return comparable.empty() ? 0 : static_cast<std::uint32_t>(Huella(comparable)) | 1;
}

remesa::Dia DiaDeNumero(std::uint16_t numero) {
  return std::chrono::sys_days(std::chrono::days(numero));
}

void BloqueActual::dar(std::string_view registro, std::uint64_t suNumero) {
  const remesa::CodigoRegistro codigo = remesa::Codigo(registro);
  if (codigo == remesa::CodigoRegistro::Acreedor) {
    cabecera = registro;
    numero = suNumero;
    acreedor = HuellaAcreedor(Valor(registro, remesa::kIdentificadorAcreedor));
    dia = remesa::NumeroDeDia(remesa::LeerFecha(remesa::LeerCampo(registro, remesa::kFechaCobro)));
  } else if (remesa::EsDeTotales(codigo) || codigo == remesa::CodigoRegistro::Presentador) {
    cabecera.clear();
  }
}

ClavesAdeudo Claves(std::string_view adeudo, const BloqueActual& bloque) {
  ClavesAdeudo claves;
  claves.acreedor = bloque.acreedor;
  claves.dia = bloque.dia;
  claves.mandato = HuellaReferencia(Valor(adeudo, remesa::kReferenciaMandato));
  claves.referencia = HuellaReferencia(Valor(adeudo, remesa::kReferenciaAdeudo));
  claves.importe = static_cast<std::uint64_t>(std::max<std::int64_t>(remesa::ImporteDe(adeudo), 0));
  claves.cuenta = HuellaCuenta(Valor(adeudo, remesa::kCuentaDeudor));
  claves.concepto = static_cast<std::uint32_t>(Huella(Valor(adeudo, remesa::kConcepto)));
  claves.tipo = remesa::LeerTipoAdeudo(Valor(adeudo, remesa::kTipoAdeudo));
  return claves;
}

void ResumenRemesa::dar(std::string_view registro, std::uint64_t numero) {
  contenido = Mezclar(contenido, remesa::Huella(registro));
  ++registros;
  if (presentador != 0 || remesa::Codigo(registro) != remesa::CodigoRegistro::Presentador) return;
  presentador = numero;
  identificacion = HuellaIdentificacion(Valor(registro, remesa::kIdentificacionFichero));
  if (identificacion != 0)
    presentada = Mezclar(identificacion, Huella(Valor(registro, remesa::kIdentificadorPresentador)));
}

void ResumenRemesa::darAdeudo(const ClavesAdeudo& c) {
  const std::uint64_t quien = Mezclar(Mezclar(c.acreedor, c.mandato), c.referencia);
  const std::uint64_t que = std::uint64_t{c.dia} << 40 ^ c.importe << 3 ^ static_cast<std::uint64_t>(c.tipo);
  suma += Mezclar(Mezclar(quien, que), c.cuenta);  // sin el concepto, que en un XML va sin acentos
  importe += c.importe;
  ++adeudos;
}

bool ResumenRemesa::mismoContenido(const ResumenRemesa& otra) const {
  return contenido == otra.contenido && registros == otra.registros && importe == otra.importe;
}

bool ResumenRemesa::mismosAdeudos(const ResumenRemesa& otra) const {
  return adeudos > 0 && suma == otra.suma && adeudos == otra.adeudos && importe == otra.importe;
}

void Resumidor::dar(std::string_view registro, std::uint64_t numero) {
  resumen_.dar(registro, numero);
  bloque_.dar(registro, numero);
  if (resumen_.presentador == numero) presentador_ = registro;
  if (remesa::Clase(registro) == remesa::ClaseRegistro::Adeudo && !bloque_.cabecera.empty())
    resumen_.darAdeudo(Claves(registro, bloque_));
}

}  // namespace anteriores
