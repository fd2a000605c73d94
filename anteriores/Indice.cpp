#include "anteriores/Indice.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <limits>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <tuple>

#include "anteriores/Vueltas.h"
#include "ficheros/ErrorEjecucion.h"

namespace anteriores {
namespace {

std::uint32_t Acotado(std::uint64_t numero) {
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>(numero, std::numeric_limits<std::uint32_t>::max()));
}

auto Orden(const Entrada& e) {
  return std::tuple(e.mandato, e.acreedor, std::uint64_t{e.importe}, std::uint64_t{e.dia}, e.fichero,
                    e.registro);
}

bool SonIguales(const FicheroHallado& uno, const FicheroHallado& otro) {
  return uno.ruta == otro.ruta && uno.tamano == otro.tamano && uno.escrito == otro.escrito;
}

}  // namespace

remesa::Dia MesesAntes(remesa::Dia dia, int meses) {
  const remesa::Dia antes = dia - std::chrono::months(meses);
  return antes.ok() ? antes : remesa::Dia(antes.year() / antes.month() / std::chrono::last);
}

/// Hace un índice, quizá con lo que otro ya leyó.
class Constructor {
 public:
  Constructor(const PeticionIndice& peticion, const Indice* anterior, const Indice::Avance& avance)
      : peticion_(peticion),
        anterior_(anterior),
        avance_(avance),
        hallados_(RecorrerCarpetas(peticion.carpetas, [this] { return seguir(); })) {}

  bool nadaHaCambiado() const {
    if (anterior_ == nullptr || !anterior_->completo_ || !hallados_.completo) return false;
    const auto leidos = anterior_->ficheros_.size() + anterior_->noTomados_.size();
    return leidos == hallados_.ficheros.size() && anterior_->desde_ == peticion_.desde &&
           anterior_->carpetasSinLeer_.empty() && hallados_.carpetas.empty() &&
           std::ranges::all_of(hallados_.ficheros, [this](const auto& f) { return esDeAntes(f); });
  }

  std::shared_ptr<const Indice> hacer() {
    indice_->desde_ = peticion_.desde;
    repartir();
    enHilos([this](Tarea& tarea) { reconocer(tarea); });
    heredar();
    enHilos([this](Tarea& tarea) { leer(tarea); });
    terminar();
    return std::move(indice_);
  }

 private:
  /// Un fichero que hay que leer.
  struct Tarea {
    FicheroAnterior fichero;
    std::optional<Omitido> omitido = {};
    bool porContenido = false;  // se omite por lo que lleva dentro
    bool hecho = false;
    std::vector<Vuelta> vueltas = {};
  };

  bool seguir() {
    if (avance_ && !avance_(leidos_, total_)) parar_ = true;
    return !parar_;
  }

  const FicheroAnterior* yaLeido(const FicheroHallado& hallado) const {
    if (anterior_ == nullptr || anterior_->desde_ != peticion_.desde) return nullptr;
    const auto i = std::ranges::lower_bound(anterior_->ficheros_, hallado.ruta, {},
                                            [](const auto& f) { return f.hallado.ruta; });
    return i != anterior_->ficheros_.end() && SonIguales(i->hallado, hallado) ? &*i : nullptr;
  }
  const Indice::NoTomado* noTomado(const FicheroHallado& hallado) const {
    if (anterior_ == nullptr) return nullptr;
    const auto i = std::ranges::lower_bound(anterior_->noTomados_, hallado.ruta, {},
                                            [](const auto& f) { return f.hallado.ruta; });
    return i != anterior_->noTomados_.end() && SonIguales(i->hallado, hallado) ? &*i : nullptr;
  }
  bool esDeAntes(const FicheroHallado& hallado) const {
    return yaLeido(hallado) != nullptr || noTomado(hallado) != nullptr;
  }

  void repartir() {
    for (const FicheroHallado& hallado : hallados_.ficheros) {
      if (const Indice::NoTomado* antes = noTomado(hallado)) {
        indice_->noTomados_.push_back(*antes);
      } else if (yaLeido(hallado) == nullptr) {
        tareas_.push_back({.fichero = {.hallado = hallado}});
        total_ += hallado.tamano;
      }
    }
  }

  /// Lo que una tarea no puede hacer queda dicho en ella.
  template <class Hacer>
  void intentar(Tarea& tarea, Hacer&& hacer) {
    if (tarea.omitido) return;
    const std::filesystem::path& ruta = tarea.fichero.hallado.ruta;
    try {
      hacer();
    } catch (const NoSeToma& porque) {
      tarea.omitido = Omitido{ruta, porque.causa};
      tarea.porContenido = true;
    } catch (const ficheros::ErrorEjecucion& error) {
      tarea.omitido = Omitido{ruta, error.texto()};
      tarea.porContenido = error.numero() == ficheros::kFormatoNoValido;
    } catch (const Detenido&) {
      tarea.hecho = false;
    } catch (const std::exception& error) {
      tarea.omitido = Omitido{ruta, error.what()};
    }
  }

  template <class Hacer>
  void enHilos(const Hacer& hacer) {
    std::atomic<std::size_t> siguiente = 0;
    const auto trabajar = [&] {
      for (std::size_t i = 0; (i = siguiente++) < tareas_.size() && seguir();)
        hacer(tareas_[i]);
    };
    std::vector<std::jthread> hilos;
    const std::size_t cuantos = std::min<std::size_t>(peticion_.hilos, tareas_.size());
    hilos.reserve(cuantos);
    try {
      while (hilos.size() + 1 < cuantos)
        hilos.emplace_back(trabajar);
    } catch (const std::system_error&) {
      // No hay más hilos: con los que haya.
    }
    trabajar();
  }

  void reconocer(Tarea& tarea) {
    intentar(tarea, [&] { tarea.fichero.clase = Reconocer(tarea.fichero.hallado); });
    if (tarea.omitido) leidos_ += tarea.fichero.hallado.tamano;
  }

  /// Reserva lo que van a ocupar los adeudos, para no tenerlos dos veces, y pone los que ya se sabían.
  void heredar() {
    constexpr std::size_t kRegistroConFin = remesa::kLongitudRegistro + 1;
    std::size_t cuantos = 0;
    for (const Tarea& tarea : tareas_)
      if (!tarea.omitido && tarea.fichero.clase == ClaseFichero::Texto)
        cuantos += static_cast<std::size_t>(tarea.fichero.hallado.tamano / kRegistroConFin);
    std::map<std::filesystem::path, Tarea*> porRuta;
    for (Tarea& tarea : tareas_)
      porRuta.emplace(tarea.fichero.hallado.ruta, &tarea);
    std::vector<std::uint32_t> nuevo(anterior_ == nullptr ? 0 : anterior_->ficheros_.size(), kNinguno);
    for (const FicheroHallado& hallado : hallados_.ficheros) {
      const auto cual = static_cast<std::uint32_t>(indice_->ficheros_.size());
      if (const auto tarea = porRuta.find(hallado.ruta); tarea != porRuta.end()) {
        if (tarea->second->omitido) continue;
        numeros_.emplace(tarea->second, cual);
        indice_->ficheros_.push_back(tarea->second->fichero);
      } else if (const FicheroAnterior* antes = yaLeido(hallado)) {
        nuevo[static_cast<std::size_t>(antes - anterior_->ficheros_.data())] = cual;
        indice_->ficheros_.push_back(*antes);
      }
    }
    if (anterior_ != nullptr) cuantos += anterior_->entradas_.size();
    indice_->entradas_.reserve(cuantos);
    if (nuevo.empty()) return;
    for (Entrada entrada : anterior_->entradas_) {
      entrada.fichero = nuevo[entrada.fichero];
      if (entrada.fichero != kNinguno) indice_->entradas_.push_back(entrada);
    }
    for (Vuelta vuelta : anterior_->vueltas_) {
      vuelta.fichero = nuevo[vuelta.fichero];
      if (vuelta.fichero != kNinguno) indice_->vueltas_.push_back(std::move(vuelta));
    }
  }

  void leer(Tarea& tarea) {
    if (tarea.omitido) return;
    const std::uint32_t cual = numeros_.at(&tarea);
    std::vector<Entrada> entradas;
    tarea.hecho = true;
    const auto sigue = [this] { return seguir(); };
    intentar(tarea, [&] {
      if (tarea.fichero.clase == ClaseFichero::Devoluciones)
        tarea.vueltas = LeerVueltas(tarea.fichero.hallado.ruta, cual, sigue);
      else
        leerRemesa(tarea.fichero, cual, entradas);
    });
    leidos_ += tarea.fichero.hallado.tamano;
    if (!tarea.omitido && tarea.hecho) entregar(entradas);
  }

  /// Poco a poco, para no tener dos veces las de un fichero grande; si luego no vale, quitar() las saca.
  void entregar(std::vector<Entrada>& entradas) {
    const std::lock_guard puesto(cerrojo_);
    indice_->entradas_.insert(indice_->entradas_.end(), entradas.begin(), entradas.end());
    entradas.clear();
  }

  void leerRemesa(FicheroAnterior& fichero, std::uint32_t cual, std::vector<Entrada>& entradas) {
    const std::uint16_t desde = remesa::NumeroDeDia(peticion_.desde);
    constexpr std::size_t kLote = 4096;
    entradas.reserve(kLote);
    BloqueActual bloque;
    fichero.fin = LeerRemesa(
        fichero.hallado.ruta, fichero.clase,
        [&](std::string_view registro, std::uint64_t numero) {
          fichero.resumen.dar(registro, numero);
          bloque.dar(registro, numero);
          if (remesa::Clase(registro) != remesa::ClaseRegistro::Adeudo || bloque.cabecera.empty()) return;
          const ClavesAdeudo c = Claves(registro, bloque);
          fichero.resumen.darAdeudo(c);
          if (c.dia == 0 || c.dia < desde) return;
          fichero.enFecha = true;
          if (c.mandato == 0 && c.referencia == 0 && c.cuenta == 0) return;
          Entrada e;
          e.mandato = c.mandato;
          e.acreedor = c.acreedor;
          e.referencia = c.referencia;
          e.importe = c.importe & kMascaraImporte;
          e.dia = c.dia;
          e.tipo = static_cast<std::uint64_t>(c.tipo) & 0xFF;
          e.cuenta = c.cuenta;
          e.concepto = c.concepto;
          e.fichero = cual;
          e.registro = Acotado(numero);
          e.cabecera = Acotado(bloque.numero);
          entradas.push_back(e);
          if (entradas.size() == kLote) entregar(entradas);
        },
        [this] { return seguir(); });
  }

  void terminar() {
    std::vector<bool> caido(indice_->ficheros_.size());
    for (Tarea& tarea : tareas_) {
      const auto numero = numeros_.find(&tarea);
      if (numero != numeros_.end()) {
        indice_->ficheros_[numero->second] = tarea.fichero;
        caido[numero->second] = tarea.omitido || !tarea.hecho;
      }
      if (!tarea.omitido && tarea.hecho)
        std::ranges::move(tarea.vueltas, std::back_inserter(indice_->vueltas_));
      if (!tarea.omitido) continue;
      if (tarea.porContenido)
        indice_->noTomados_.push_back({tarea.fichero.hallado, std::move(tarea.omitido->causa)});
      else
        hallados_.omitidos.push_back(std::move(*tarea.omitido));
    }
    quitar(caido);
    std::ranges::sort(indice_->noTomados_, {}, [](const auto& f) { return f.hallado.ruta; });
    indice_->omitidos_ = std::move(hallados_.omitidos);
    for (const Indice::NoTomado& f : indice_->noTomados_)
      indice_->omitidos_.push_back({f.hallado.ruta, f.causa});
    std::ranges::sort(indice_->omitidos_, {}, &Omitido::ruta);
    indice_->carpetasSinLeer_ = std::move(hallados_.carpetas);
    indice_->completo_ = hallados_.completo && !parar_;
    std::ranges::sort(indice_->entradas_, {}, Orden);
    Asociar(indice_->entradas_, indice_->vueltas_, indice_->ficheros_);
  }

  /// Los ficheros que al final no se han leído dejan su sitio.
  void quitar(const std::vector<bool>& caido) {
    std::vector<std::uint32_t> nuevo(caido.size());
    std::uint32_t quedan = 0;
    for (std::size_t i = 0; i < caido.size(); ++i) {
      nuevo[i] = quedan;
      if (caido[i]) continue;
      if (quedan != i) indice_->ficheros_[quedan] = std::move(indice_->ficheros_[i]);
      ++quedan;
    }
    if (quedan == caido.size()) return;
    indice_->ficheros_.resize(quedan);
    std::erase_if(indice_->entradas_, [&](const Entrada& e) { return caido[e.fichero]; });
    for (Entrada& entrada : indice_->entradas_)
      entrada.fichero = nuevo[entrada.fichero];
    for (Vuelta& vuelta : indice_->vueltas_)
      vuelta.fichero = nuevo[vuelta.fichero];
  }

  static constexpr std::uint32_t kNinguno = std::numeric_limits<std::uint32_t>::max();

  const PeticionIndice& peticion_;
  const Indice* anterior_;
  const Indice::Avance& avance_;
  std::atomic<bool> parar_ = false;
  std::atomic<std::uintmax_t> leidos_ = 0;
  std::uintmax_t total_ = 0;
  Hallados hallados_;
  std::vector<Tarea> tareas_;
  std::map<const Tarea*, std::uint32_t> numeros_;
  std::mutex cerrojo_;  // de las entradas del índice
  std::shared_ptr<Indice> indice_{new Indice};
};

std::shared_ptr<const Indice> Indice::Hacer(const PeticionIndice& peticion,
                                            std::shared_ptr<const Indice> anterior, const Avance& avance) {
  Constructor constructor(peticion, anterior.get(), avance);
  if (constructor.nadaHaCambiado()) return anterior;
  return constructor.hacer();
}

std::span<const Entrada> Indice::delMandato(std::uint64_t acreedor, std::uint64_t mandato) const {
  const auto clave = [](const Entrada& e) { return std::pair(e.mandato, e.acreedor); };
  const std::pair cual(mandato, acreedor);
  return {std::ranges::lower_bound(entradas_, cual, {}, clave),
          std::ranges::upper_bound(entradas_, cual, {}, clave)};
}

}  // namespace anteriores
