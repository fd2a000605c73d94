#include "remesa/Correcciones.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <numeric>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "remesa/FechasCorregidas.h"
#include "remesa/OrdenAdeudos.h"
#include "remesa/PaisesSEPA.h"
#include "remesa/ReferenciasCambiadas.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/RespuestaCampo.h"
#include "remesa/TotalesDebidos.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;

constexpr std::size_t kNinguno = static_cast<std::size_t>(-1);
/// La dirección entera del deudor, con su país.
constexpr Posiciones kTodaLaDireccion{kDireccionDeudor.desde,
                                      PosicionesDe(tabla::kAdeudo, "País del deudor").hasta};
constexpr Posiciones kLineasDireccion{kTodaLaDireccion.desde, kTodaLaDireccion.hasta - 2};

bool Dentro(Posiciones uno, Posiciones otro) {
  return uno.desde >= otro.desde && uno.hasta <= otro.hasta;
}

bool Impide(C codigo) {
  return codigo == C::SoloLF || codigo == C::SinRegistros || codigo == C::NoEsRemesa ||
         codigo == C::DeVuelta || codigo == C::Utf8;
}

bool EsDeFecha(C codigo) {
  return codigo == C::CobroPasado || codigo == C::CobroHoy || codigo == C::CobroFinDeSemana ||
         codigo == C::CobroFestivo;
}

std::string SinCola(std::string_view texto) {
  const std::size_t ultimo = texto.find_last_not_of(' ');
  return std::string(texto.substr(0, ultimo == std::string_view::npos ? 0 : ultimo + 1));
}

bool EsOpcional(ClaseRegistro clase) {
  return clase == ClaseRegistro::Ultimos || clase == ClaseRegistro::Balanza ||
         clase == ClaseRegistro::Mandato;
}

class Obra {
 public:
  Obra(ListaRegistros lista, const PeticionCorreccion& peticion, const AvanceComprobacion& avance)
      : lista_(std::move(lista)), peticion_(peticion), avance_(avance) {}

  ResultadoCorreccion hacer() {
    // Cada vuelta corrige algo que la siguiente ya no halla: unas pocas bastan, y el tope nunca se alcanza.
    constexpr int kVueltas = 20;
    for (vuelta_ = 1; vuelta_ <= kVueltas && vuelta(); ++vuelta_)
      asentar();
    if (resultado_.impide || !resultado_.quedan.completa) resultado_.hechas.clear();
    resultado_.procedencia = std::move(origen_);
    return std::move(resultado_);
  }
  ListaRegistros& lista() { return lista_; }

 private:
  struct Trozo {
    std::size_t desde, largo;
  };
  /// Los registros de `orden`, que van desde el sitio `primero`.
  struct Mudanza {
    std::size_t primero;
    std::vector<std::size_t> orden;
    bool toca(std::size_t desde, std::size_t cuantos) const {
      return desde < primero + orden.size() && primero < desde + cuantos;
    }
  };

  /// Comprueba la lista y apunta lo que se corrige. false si no hay nada.
  bool vuelta() {
    empezarVuelta();
    resultado_.quedan = ComprobarLista(
        lista_, peticion_.hoy, [this](Hallazgo&& h) { recibir(h); }, false, avance_);
    if (!resultado_.quedan.completa || resultado_.impide) return false;
    ordenar();
    return !copias_.empty() || !quitados_.empty() || !mudanzas_.empty();
  }

  void empezarVuelta() {
    copias_.clear();
    nuevos_.clear();
    trozos_.clear();
    quitados_.clear();
    mudanzas_.clear();
    desordenados_.clear();
    estructura_.clear();
    debidos_.reset();
    referencias_.reset();
    preguntado_ = kNinguno;
    std::vector<std::size_t> cabeceras;
    for (std::size_t i = 0; i < lista_.size(); ++i) {
      lista_.anticipar(i);
      const CodigoRegistro codigo = Codigo(lista_[i]);
      if (codigo == CodigoRegistro::Adeudo || codigo == CodigoRegistro::Otro) continue;
      estructura_.push_back(i);
      if (codigo == CodigoRegistro::Acreedor) cabeceras.push_back(i);
    }
    fechas_ = FechasCorregidas(lista_, cabeceras, peticion_.hoy);
  }

  void recibir(const Hallazgo& h) {
    if (vuelta_ == 1 && Impide(h.codigo) && !resultado_.impide) resultado_.impide = h;
    if (resultado_.impide || h.fila == 0 || !PuedeCorregirse(h.codigo)) return;
    const std::size_t i = h.fila - 1;
    if (h.codigo == C::Longitud) return completar(i, h);
    if (sobra(i, h)) return;
    if (h.codigo == C::SinOrdenar || h.codigo == C::FueraDeOrden) return desordenados_.push_back(h);
    if (h.campo == nullptr) return;
    if (sinDireccion(i, h)) return;
    const bool seRepite = SeRepite(h), esTotal = EsTotal(h);
    std::optional<std::string> debido;
    if (EsDeFecha(h.codigo)) {
      if (const auto fecha = fechas_.find(i); fecha != fechas_.end()) debido = fecha->second;
    } else if (seRepite) {
      debido = repetido(i, h);
    } else if (esTotal && (!peticion_.totales || (!quitados_.empty() && EsDeRegistros(h)))) {
      return;  // sin lo quitado serán menos: en la vuelta siguiente
    } else if (esTotal && (h.codigo == C::ObligatorioVacio || h.codigo == C::NoNumerico)) {
      if (!debidos_) debidos_.emplace(lista_);
      if (std::string suyo = debidos_->de(i, h.campo->donde); !suyo.empty()) debido = std::move(suyo);
    } else if (h.codigo != C::Direccion && !chocaria(i, h)) {
      debido = RespuestaCampo(h, *h.campo, LeerCampo(actual(i), h.campo->donde));
    }
    if (debido) cambiar(i, h, h.campo->donde, *debido, seRepite || esTotal);
  }

  /// Lo que un registro repite de otro.
  static bool SeRepite(const Hallazgo& h) {
    switch (h.codigo) {
      case C::ReferenciasDistintas:
      case C::OtraCabecera:
        return true;
      case C::ObligatorioVacio:
      case C::NoNumerico:
      case C::FechaInexistente:
      case C::IdentificadorAcreedor:
        if (EsOpcional(h.clase)) return Dentro(h.campo->donde, kReferencias);
        return EsDeTotales(h) &&
               (h.campo->valor == ValorCampo::Identificador || h.campo->valor == ValorCampo::Fecha);
      default:
        return false;
    }
  }

  static bool EsDeTotales(const Hallazgo& h) {
    return h.clase == ClaseRegistro::TotalesFecha || h.clase == ClaseRegistro::TotalesAcreedor ||
           h.clase == ClaseRegistro::TotalesGenerales;
  }
  static bool EsDeRegistros(const Hallazgo& h) {
    return h.campo->donde == kRegistros04 || h.campo->donde == kRegistros05 || h.campo->donde == kRegistros99;
  }
  static bool EsTotal(const Hallazgo& h) {
    return EsDeTotales(h) && (h.campo->valor == ValorCampo::Importe || h.campo->valor == ValorCampo::Numero);
  }

  std::optional<std::string> repetido(std::size_t i, const Hallazgo& h) const {
    if (EsOpcional(h.clase)) return deSuAdeudo(i, h.campo->donde);
    const std::size_t cabecera = cabeceraDe(i);
    if (cabecera != kNinguno) {
      const bool fecha = h.campo->valor == ValorCampo::Fecha;
      const std::string_view debido =
          LeerCampo(actual(cabecera), fecha ? kFechaCobro : kIdentificadorAcreedor);
      const bool bueno =
          fecha ? LeerFecha(debido).has_value() : ComprobarIdentificador(Recortar(debido)).correcto;
      if (bueno) return EnSuSitio(Recortar(debido), h.campo->donde);
    }
    return RespuestaCampo(h, *h.campo, LeerCampo(actual(i), h.campo->donde));
  }

  /// La referencia del 003 que lo precede, si la otra la lleva también él: si no lleva ninguna de las dos, no
  /// se sabe de quién es.
  std::optional<std::string> deSuAdeudo(std::size_t i, Posiciones donde) const {
    constexpr std::size_t kMaximo = 4;
    std::size_t suyo = i;
    while (suyo > 0 && i - suyo < kMaximo && EsOpcional(Clase(actual(suyo))))
      --suyo;
    if (Clase(actual(suyo)) != ClaseRegistro::Adeudo) return std::nullopt;
    const Posiciones otra = donde == kReferenciaAdeudo ? kReferenciaMandato : kReferenciaAdeudo;
    const auto dice = [](std::string_view registro, Posiciones cual) {
      return Recortar(LeerCampo(registro, cual));
    };
    // Del registro, como vino: la otra puede haberse corregido ya con esta.
    const std::string_view comun = dice(lista_[i], otra);
    const std::string_view debida = dice(actual(suyo), donde);
    if (debida.empty() || comun.empty()) return std::nullopt;
    if (comun != dice(lista_[suyo], otra) && comun != dice(actual(suyo), otra)) return std::nullopt;
    return EnSuSitio(debida, donde);
  }

  /// La 02 que abrió el bloque de un 04 o el del 05; ninguna si otro 05 lo cerró ya.
  std::size_t cabeceraDe(std::size_t i) const {
    constexpr std::size_t kMaximo = 4;
    auto donde = std::ranges::lower_bound(estructura_, i);
    for (std::size_t pasos = 0; donde != estructura_.begin() && pasos < kMaximo; ++pasos) {
      --donde;
      const CodigoRegistro codigo = Codigo(lista_[*donde]);
      if (codigo == CodigoRegistro::Acreedor) return *donde;
      if (codigo != CodigoRegistro::TotalesFecha) break;
    }
    return kNinguno;
  }

  /// Dos referencias distintas no pueden pasar a ser la misma.
  bool chocaria(std::size_t i, const Hallazgo& h) {
    const Posiciones donde = h.campo->donde;
    if (h.codigo != C::Caracteres || (donde != kReferenciaAdeudo && donde != kReferenciaMandato))
      return false;
    if (!referencias_) referencias_.emplace(lista_);
    const std::size_t cabecera = cabeceraDe(i);
    return referencias_->choca(cabecera == kNinguno ? std::string_view() : lista_[cabecera], lista_[i],
                               donde);
  }

  void completar(std::size_t i, const Hallazgo& h) {
    const auto completo = RegistroCompleto(lista_[i]);
    if (!completo) return;
    Correccion c = de(i, h);
    c.donde = h.donde;
    c.antes = h.valor;
    c.despues = h.esperado;
    if (admitida(c)) copiar(i, *completo);
  }

  /// El 005 se quita entero: de lo demás que le pase no hay que decir nada.
  bool sobra(std::size_t i, const Hallazgo& h) {
    if (h.clase != ClaseRegistro::Balanza) return false;
    if (!quitados_.empty() && quitados_.back() == i) return true;
    if (preguntado_ == i) return false;
    preguntado_ = i;
    Correccion c = de(i, h);
    c.codigo = C::RegistroSinUso;
    c.cambio = CambioRegistro::Quita;
    c.antes = SinCola(actual(i));
    if (!admitida(c)) return false;
    quitados_.push_back(i);
    return true;
  }

  /// Dentro del Espacio Económico Europeo la dirección sobra, con su país; no hay que decir de ella nada más.
  bool sinDireccion(std::size_t i, const Hallazgo& h) {
    if (h.clase != ClaseRegistro::Adeudo || !Dentro(h.campo->donde, kTodaLaDireccion)) return false;
    const std::string_view registro = actual(i);
    const std::string_view direccion = LeerCampo(registro, kTodaLaDireccion);
    const bool entera = registro.size() >= static_cast<std::size_t>(kTodaLaDireccion.hasta);
    if (!entera || !EnEEE(PaisDeCuenta(registro))) return false;
    const bool vacia = Recortar(LeerCampo(registro, kLineasDireccion)).empty();
    if (preguntado_ == i || vacia) return preguntado_ == i && Recortar(direccion).empty();
    preguntado_ = i;
    Hallazgo suyo = h;
    suyo.codigo = C::Direccion;
    suyo.campo = CampoEn(registro, kDireccionDeudor.desde);
    cambiar(i, suyo, kTodaLaDireccion, EnSuSitio({}, kTodaLaDireccion), false);
    return Recortar(LeerCampo(actual(i), kTodaLaDireccion)).empty();
  }

  /// Primero los bloques enteros: los opcionales de un adeudo que se mueve esperan a la vuelta siguiente.
  void ordenar() {
    for (const C codigo : {C::SinOrdenar, C::FueraDeOrden})
      for (const Hallazgo& h : desordenados_)
        if (h.codigo == codigo && h.campo != nullptr) ordenar(h);
  }

  void ordenar(const Hallazgo& h) {
    const std::size_t i = h.fila - 1;
    const auto siguiente = std::ranges::lower_bound(estructura_, i);
    if (siguiente == estructura_.begin()) return;
    const std::size_t desde = *std::prev(siguiente) + 1;
    const std::size_t hasta = siguiente == estructura_.end() ? lista_.size() : *siguiente;
    if (Codigo(lista_[desde - 1]) != CodigoRegistro::Acreedor) return;
    const RegistroDe registro = [this](std::size_t cual) { return actual(cual); };
    std::vector<std::size_t> orden = h.codigo == C::SinOrdenar ? PorReferencia(desde, hasta, registro)
                                                               : PorDato(desde, hasta, i, registro);
    if (orden.empty()) return;
    const std::size_t primero = *std::ranges::min_element(orden);
    if (std::ranges::any_of(mudanzas_, [&](const Mudanza& otra) { return otra.toca(primero, orden.size()); }))
      return;
    Correccion c = de(i, h);
    c.cambio = CambioRegistro::Orden;
    c.campo = h.campo;
    c.donde = h.campo->donde;
    c.antes = SinCola(LeerCampo(actual(primero), c.donde));
    c.despues = SinCola(LeerCampo(actual(orden.front()), c.donde));
    for (std::size_t k = 0; k < orden.size(); ++k)
      if (orden[k] != primero + k) ++c.movidos;
    if (admitida(c)) mudanzas_.push_back({primero, std::move(orden)});
  }

  Correccion de(std::size_t i, const Hallazgo& h) const {
    Correccion c;
    c.codigo = h.codigo;
    c.registro = (origen_.empty() ? i : origen_[i]) + 1;
    c.clase = h.clase;
    c.deudor = h.deudor;
    c.referencia = h.referencia;
    return c;
  }

  void cambiar(std::size_t i, const Hallazgo& h, Posiciones donde, std::string_view debido, bool deOtro) {
    const std::string_view bytes = LeerCampo(actual(i), donde);
    if (bytes == debido || bytes.size() != debido.size()) return;
    Correccion c = de(i, h);
    c.campo = h.campo;
    c.donde = donde;
    c.antes = SinCola(bytes);
    c.despues = SinCola(debido);
    const std::uint64_t clave = (c.registro << 10) | static_cast<std::uint64_t>(donde.desde);
    // Lo que ya estaba mal y no se quiso corregir no lo ha traído ninguna corrección.
    c.arrastrada = deOtro && vuelta_ > 1 && !rechazadas_.contains(clave);
    if (!admitida(c)) {
      if (deOtro && vuelta_ == 1) rechazadas_.insert(clave);
      return;
    }
    if (!copias_.contains(i)) copiar(i, lista_[i]);
    const std::size_t inicio = trozos_[copias_[i]].desde;
    debido.copy(nuevos_.data() + inicio + static_cast<std::size_t>(donde.desde - 1), debido.size());
  }

  void copiar(std::size_t i, std::string_view registro) {
    copias_[i] = trozos_.size();
    trozos_.push_back({nuevos_.size(), registro.size()});
    nuevos_ += registro;
  }

  /// El registro como va quedando. Vale hasta que se cambie otro.
  std::string_view actual(std::size_t i) const {
    const auto copia = copias_.find(i);
    if (copia == copias_.end()) return lista_[i];
    const Trozo& trozo = trozos_[copia->second];
    return std::string_view(nuevos_).substr(trozo.desde, trozo.largo);
  }

  bool admitida(Correccion& c) {
    if (!c.arrastrada && peticion_.admitir && !peticion_.admitir(c)) return false;
    resultado_.hechas.push_back(std::move(c));
    return true;
  }

  /// Lleva a la lista lo apuntado en la vuelta.
  void asentar() {
    auto datos = std::make_shared_for_overwrite<char[]>(nuevos_.size());
    nuevos_.copy(datos.get(), nuevos_.size());
    std::vector<std::string_view> registros;
    registros.reserve(trozos_.size());
    for (const Trozo& trozo : trozos_)
      registros.emplace_back(datos.get() + trozo.desde, trozo.largo);
    std::vector<std::size_t> indices(lista_.size());
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    for (const Mudanza& mudanza : mudanzas_)
      std::ranges::copy(mudanza.orden, indices.begin() + static_cast<std::ptrdiff_t>(mudanza.primero));
    std::erase_if(indices, [&](std::size_t i) { return std::ranges::binary_search(quitados_, i); });
    if (!mudanzas_.empty() || !quitados_.empty()) {
      std::vector<std::size_t> origen;
      origen.reserve(indices.size());
      for (const std::size_t i : indices)
        origen.push_back(origen_.empty() ? i : origen_[i]);
      origen_ = std::move(origen);
    }
    const std::size_t habia = lista_.size();
    for (std::size_t& i : indices)
      if (const auto copia = copias_.find(i); copia != copias_.end()) i = habia + copia->second;
    lista_.anadirBloque({std::move(datos), nuevos_.size()}, std::move(registros));
    lista_.elegir(indices);
  }

  ListaRegistros lista_;
  const PeticionCorreccion& peticion_;
  const AvanceComprobacion& avance_;
  ResultadoCorreccion resultado_;
  std::vector<std::size_t> origen_;  // de cada registro, el que era; vacío mientras sean los mismos
  std::unordered_set<std::uint64_t> rechazadas_;
  int vuelta_ = 1;

  // De la vuelta
  std::vector<std::size_t> estructura_;  // los registros que no son 03, de los conocidos
  std::map<std::size_t, std::string> fechas_;
  std::optional<TotalesDebidos> debidos_;
  std::optional<ReferenciasCambiadas> referencias_;
  std::size_t preguntado_ = kNinguno;  // el último del que se ha ofrecido quitar algo entero
  std::string nuevos_;                 // los registros cambiados, seguidos
  std::vector<Trozo> trozos_;
  std::unordered_map<std::size_t, std::size_t> copias_;  // su trozo
  std::vector<std::size_t> quitados_;
  std::vector<Mudanza> mudanzas_;
  std::vector<Hallazgo> desordenados_;
};

}  // namespace

ResultadoCorreccion Corregir(ListaRegistros& lista, const PeticionCorreccion& peticion,
                             const AvanceComprobacion& avance) {
  Obra obra(lista, peticion, avance);
  ResultadoCorreccion resultado = obra.hacer();
  if (!resultado.impide && resultado.quedan.completa) lista = obra.lista();
  return resultado;
}

}  // namespace remesa
