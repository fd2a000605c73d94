#include "devoluciones/RemesaNueva.h"

#include <algorithm>
#include <tuple>

#include "remesa/BloquesListas.h"
#include "remesa/Campos.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Validez.h"

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

/// Un adeudo de una deuda.
struct Cobro {
  std::string referencia;  ///< En el juego de SEPA.
  std::string fecha;       ///< AAAAMMDD
  std::uint32_t remesa;
};

/// "R1-2" es "R1" con sufijo; de una que no cabía con él, sin su final.
bool EsConSufijo(std::string_view conSufijo, std::string_view referencia) {
  const std::size_t guion = conSufijo.rfind('-');
  if (guion == std::string_view::npos || guion == 0) return false;
  const std::string_view cifras = conSufijo.substr(guion + 1), comienzo = conSufijo.substr(0, guion);
  if (cifras.empty() || !remesa::SonCifras(cifras) || cifras.front() == '0' || cifras == "1") return false;
  const bool lleno = conSufijo.size() == static_cast<std::size_t>(remesa::kReferenciaAdeudo.longitud());
  return comienzo == referencia || (lleno && referencia.starts_with(comienzo));
}

/// De un mismo mandato e importe, si lo que se cobró en una remesa es lo que se cobra en otra: con la misma
/// referencia o, después, con ella y un sufijo. En una misma remesa son dos deudas.
bool EsLaMismaDeuda(const Cobro& uno, const Cobro& otro) {
  if (uno.remesa == otro.remesa) return false;
  const auto& [antes, despues] = uno.fecha < otro.fecha ? std::tie(uno, otro) : std::tie(otro, uno);
  return uno.referencia == otro.referencia ||
         (antes.fecha < despues.fecha && EsConSufijo(despues.referencia, antes.referencia));
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
  /// Si está en una línea del lote más propia que las de ese alcance, que es la que dice si va.
  bool tieneOtraLinea(std::size_t presentado, Alcance alcance);
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
  std::map<std::string, std::vector<Cobro>> cobros_;  // por acreedor, mandato e importe
  std::set<std::string> referencias_;
  std::map<std::string, int> sufijos_;                    // el que toca a cada referencia
  std::optional<std::map<std::size_t, Alcance>> lineas_;  // la más propia de cada uno
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
    if (entero && tieneOtraLinea(presentado, d.alcance)) continue;
    const Entrada entrada = incluir(presentado);
    if (entrada == Entrada::MismaDeuda || (entrada == Entrada::YaEstaba && !entero)) ++repetidos;
  }
  if (repetidos > 0) dejarFuera(CausaFuera::YaIncluida, repetidos);
}

bool Constructor::tieneOtraLinea(std::size_t presentado, Alcance alcance) {
  if (!lineas_) {
    lineas_.emplace();
    for (std::size_t i = 0; i < lote_.size(); ++i) {
      const Alcance suyo = lote_[i].alcance;
      for (const std::size_t uno : cotejo_.hallazgo(i).adeudos) {
        const auto linea = lineas_->try_emplace(uno, suyo).first;
        linea->second = std::min(linea->second, suyo);
      }
    }
  }
  return lineas_->at(presentado) < alcance;
}

Constructor::Entrada Constructor::incluir(std::size_t presentado) {
  const Presentado& original = cotejo_.presentado(presentado);
  if (!incluidos_.insert(presentado).second) return Entrada::YaEstaba;
  const std::string& cabecera = cotejo_.cabecera(original.cabecera);
  const std::string_view debe = original.registros.front();
  // Sin referencia no se sabe si es la misma deuda.
  if (const auto referencia = Campo(debe, remesa::kReferenciaAdeudo); !referencia.empty()) {
    std::string deuda(Campo(cabecera, remesa::kIdentificadorAcreedor));
    deuda.append(remesa::EquivalenteSEPA(LeerCampo(debe, remesa::kReferenciaMandato)))
        .append(LeerCampo(debe, remesa::kImporteAdeudo));
    const Cobro cobro{remesa::EquivalenteSEPA(referencia),
                      std::string(LeerCampo(cabecera, remesa::kFechaCobro)), original.remesa};
    auto& otros = cobros_[std::move(deuda)];
    if (std::ranges::any_of(otros, [&](const Cobro& otro) { return EsLaMismaDeuda(cobro, otro); }))
      return Entrada::MismaDeuda;
    otros.push_back(cobro);
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
  remesa::ReunirBloques(nueva_.registros, remesa::ListaRegistros());
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
    if (IntentoDe(lote[i]) == Intento::OtraVez && !lote.estaEnOtro(i)) propuestas.push_back(i);
  return propuestas;
}

remesa::Dia FechaPropuesta(remesa::Dia hoy) {
  return remesa::HabilDesde(std::chrono::sys_days(hoy) + std::chrono::days{1});
}

RemesaNueva HacerRemesa(const Lote& lote, const Cotejo& cotejo, const PeticionNueva& peticion) {
  return Constructor(lote, cotejo, peticion).hacer();
}

}  // namespace devoluciones
