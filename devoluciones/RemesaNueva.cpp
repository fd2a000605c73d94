#include "devoluciones/RemesaNueva.h"

#include <algorithm>

#include "remesa/BloquesListas.h"
#include "remesa/Campos.h"
#include "remesa/TotalesNorma.h"

namespace devoluciones {
namespace {

using remesa::LeerCampo;

std::string_view Campo(std::string_view registro, remesa::Posiciones donde) {
  return remesa::Recortar(LeerCampo(registro, donde));
}

/// Los debe, con lo que le falte, en su sitio: un texto más corto no deja nada de lo que hubiera.
void PonerTexto(std::string& registro, remesa::Posiciones donde, std::string_view texto) {
  std::string campo(texto);
  campo.resize(static_cast<std::size_t>(donde.longitud()), ' ');
  remesa::EscribirCampo(registro, donde, campo);
}

class Constructor {
 public:
  Constructor(const Lote& lote, const Cotejo& cotejo, const PeticionNueva& peticion)
      : lote_(lote), cotejo_(cotejo), peticion_(peticion) {}

  RemesaNueva hacer() {
    for (const std::size_t devolucion : peticion_.elegidas)
      elegir(devolucion);
    if (nueva_.adeudos > 0) escribir();
    return std::move(nueva_);
  }

 private:
  using Adeudo = std::vector<std::string>;
  void elegir(std::size_t devolucion);
  enum class Entrada : std::uint8_t { Nueva, YaEstaba, MismaDeuda };
  Entrada incluir(std::size_t presentado);
  /// Los que en el lote tienen su propia línea, que es la que dice si van.
  const std::set<std::size_t>& conLinea();
  void mirarPresentador(const std::string& suyo);
  void darReferencia(Adeudo& adeudo);
  std::string conSufijo(const std::string& referencia);
  void anadirCabecera(std::string cabecera);
  void anadir(std::string registro);
  void escribir();

  const Lote& lote_;
  const Cotejo& cotejo_;
  const PeticionNueva& peticion_;
  RemesaNueva nueva_;
  std::string presentador_;
  std::string cabecera_;  // la última puesta
  std::string bytes_;     // cabeceras y adeudos, registros de 600
  std::set<std::size_t> incluidos_;
  std::set<std::string> deudas_;  // acreedor, referencias e importe
  std::set<std::string> referencias_;
  std::map<std::string, int> sufijos_;  // el que toca a cada referencia
  std::optional<std::set<std::size_t>> conLinea_;
};

void Constructor::elegir(std::size_t devolucion) {
  const Devolucion d = lote_[devolucion];
  const auto dejarFuera = [&](CausaFuera causa, std::size_t adeudos = 1) {
    nueva_.fuera.push_back({devolucion, causa, adeudos});
  };
  if (IntentoDe(d) == Intento::Nunca) return dejarFuera(CausaFuera::Nunca);
  const Cotejo::Hallazgo hallazgo = cotejo_.hallazgo(devolucion);
  if (hallazgo.estado == EstadoCotejo::NoHallada) return dejarFuera(CausaFuera::NoHallada);
  if (hallazgo.estado == EstadoCotejo::Ambigua) return dejarFuera(CausaFuera::Ambigua);
  const bool entero = d.alcance != Alcance::Adeudo;
  std::size_t repetidos = 0;
  for (const std::size_t presentado : hallazgo.adeudos) {
    if (cotejo_.remesas()[cotejo_.presentado(presentado).remesa].presentador.empty())
      return dejarFuera(CausaFuera::SinPresentador);
    if (entero && conLinea().contains(presentado)) continue;
    const Entrada entrada = incluir(presentado);
    if (entrada == Entrada::MismaDeuda || (entrada == Entrada::YaEstaba && !entero)) ++repetidos;
  }
  if (repetidos > 0) dejarFuera(CausaFuera::YaIncluida, repetidos);
}

const std::set<std::size_t>& Constructor::conLinea() {
  if (conLinea_) return *conLinea_;
  conLinea_.emplace();
  for (std::size_t i = 0; i < lote_.size(); ++i) {
    if (lote_[i].alcance != Alcance::Adeudo) continue;
    for (const std::size_t presentado : cotejo_.hallazgo(i).adeudos)
      conLinea_->insert(presentado);
  }
  return *conLinea_;
}

Constructor::Entrada Constructor::incluir(std::size_t presentado) {
  const Presentado& original = cotejo_.presentado(presentado);
  if (!incluidos_.insert(presentado).second) return Entrada::YaEstaba;
  const std::string& cabecera = cotejo_.cabecera(original.cabecera);
  const std::string_view debe = original.registros.front();
  // Con la misma referencia es la misma deuda, aunque haya vuelto de dos remesas. Sin ella no se sabe.
  if (!Campo(debe, remesa::kReferenciaAdeudo).empty()) {
    std::string deuda(Campo(cabecera, remesa::kIdentificadorAcreedor));
    deuda.append(LeerCampo(debe, remesa::kReferencias)).append(LeerCampo(debe, remesa::kImporteAdeudo));
    if (!deudas_.insert(std::move(deuda)).second) return Entrada::MismaDeuda;
  }
  mirarPresentador(cotejo_.remesas()[original.remesa].presentador);
  Adeudo adeudo = original.registros;
  darReferencia(adeudo);
  ++nueva_.adeudos;
  nueva_.importe += remesa::ImporteDe(adeudo.front());
  if (cabecera != cabecera_) anadirCabecera(cabecera);
  for (const std::string& registro : adeudo)
    anadir(registro);
  return Entrada::Nueva;
}

void Constructor::mirarPresentador(const std::string& suyo) {
  if (presentador_.empty()) presentador_ = suyo;
  const auto quien = [](std::string_view registro) {
    return Campo(registro, remesa::kIdentificadorPresentador);
  };
  if (quien(suyo) == quien(presentador_)) return;
  const std::string nombre(Campo(suyo, remesa::kNombrePresentador));
  auto& otros = nueva_.otrosPresentadores;
  if (std::ranges::find(otros, nombre) == otros.end()) otros.push_back(nombre);
}

void Constructor::darReferencia(Adeudo& adeudo) {
  const std::string actual(Campo(adeudo.front(), remesa::kReferenciaAdeudo));
  if (actual.empty()) return;
  const bool repetida = referencias_.contains(actual);
  const std::string nueva = peticion_.conSufijo || repetida ? conSufijo(actual) : actual;
  referencias_.insert(nueva);
  if (nueva == actual) return;
  ++nueva_.conSufijo;
  for (std::string& registro : adeudo)
    PonerTexto(registro, remesa::kReferenciaAdeudo, nueva);
}

std::string Constructor::conSufijo(const std::string& referencia) {
  const auto cabe = static_cast<std::size_t>(remesa::kReferenciaAdeudo.longitud());
  int& siguiente = sufijos_.try_emplace(referencia, 2).first->second;
  for (;;) {
    const std::string sufijo = "-" + std::to_string(siguiente++);
    const std::string nueva = referencia.substr(0, cabe - sufijo.size()) + sufijo;
    if (!referencias_.contains(nueva)) return nueva;
  }
}

void Constructor::anadirCabecera(std::string cabecera) {
  cabecera_ = cabecera;
  remesa::AjustarLongitud(cabecera);
  remesa::EscribirCampo(cabecera, remesa::kFechaCobro, remesa::EscribirFecha(peticion_.fechaCobro));
  anadir(std::move(cabecera));
}

void Constructor::anadir(std::string registro) {
  remesa::AjustarLongitud(registro);
  bytes_ += registro;
}

void Constructor::escribir() {
  remesa::AjustarLongitud(presentador_);
  remesa::RenovarIdentificacion(presentador_, peticion_.ahora);
  bytes_.insert(0, presentador_);
  auto bytes = std::make_shared_for_overwrite<char[]>(bytes_.size());
  std::ranges::copy(bytes_, bytes.get());
  std::vector<std::string_view> registros;
  for (std::size_t i = 0; i < bytes_.size(); i += remesa::kLongitudRegistro)
    registros.emplace_back(bytes.get() + i, remesa::kLongitudRegistro);
  nueva_.registros.anadirBloque({std::move(bytes), bytes_.size()}, std::move(registros));
  remesa::ReunirBloques(nueva_.registros, {});
  nueva_.bloques = static_cast<std::size_t>(
      std::ranges::count(nueva_.registros, remesa::CodigoRegistro::Acreedor, remesa::Codigo));
}

}  // namespace

Intento IntentoDe(const Devolucion& devolucion) {
  const Motivo* motivo = BuscarMotivo(devolucion.motivo.bytes());
  return motivo != nullptr ? motivo->intento : Intento::ConElDeudor;
}

std::vector<std::size_t> Propuestas(const Lote& lote) {
  std::vector<std::size_t> propuestas;
  for (std::size_t i = 0; i < lote.size(); ++i)
    if (IntentoDe(lote[i]) == Intento::OtraVez) propuestas.push_back(i);
  return propuestas;
}

remesa::Dia FechaPropuesta(remesa::Dia hoy) {
  return remesa::HabilDesde(std::chrono::sys_days(hoy) + std::chrono::days{1});
}

RemesaNueva HacerRemesa(const Lote& lote, const Cotejo& cotejo, const PeticionNueva& peticion) {
  return Constructor(lote, cotejo, peticion).hacer();
}

}  // namespace devoluciones
