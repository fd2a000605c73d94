#include "remesa/EscrituraBloques.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <string>
#include <thread>

#include "remesa/TotalesBloques.h"

namespace remesa {

void FuenteLista::adeudo(const RepartoBloques::Adeudo& adeudo, const Receptor& recibir) {
  for (const std::size_t i : indices(adeudo))
    recibir(lista_[i]);
}

const std::vector<std::size_t>& FuenteLista::indices(const RepartoBloques::Adeudo& adeudo) {
  indices_.clear();
  const auto tomar = [&](RepartoBloques::Tramo tramo) {
    for (std::size_t i = tramo.desde; i < tramo.hasta; ++i)
      if (Codigo(lista_[i]) == CodigoRegistro::Adeudo) indices_.push_back(i);
  };
  tomar(adeudo.donde);
  std::ranges::for_each(adeudo.detras, tomar);
  adeudo.ordenar(indices_, [&](std::size_t i) { return lista_[i]; });
  return indices_;
}

std::vector<Rebanada> Enteros(const RepartoBloques& reparto) {
  std::vector<Rebanada> rebanadas;
  for (std::size_t b = 0; b < reparto.bloques(); ++b)
    rebanadas.push_back({b, 0, reparto.adeudos(b)});
  return rebanadas;
}

namespace {

/// Lo que un hilo lee y prepara mientras otro escribe: registros de 600 con CR LF, por trozos.
class Tuberia {
 public:
  static constexpr std::size_t kRegistro = kLongitudRegistro + 2;
  static constexpr std::size_t kTrozo = std::size_t{1} << 18;

  /// Deja `trozo` vacío. false si ya no los quiere nadie.
  bool poner(std::string& trozo) {
    std::unique_lock turno(guarda_);
    hay_.wait(turno, [&] { return llenos_.size() < kMaximo || detenida_; });
    if (detenida_) return false;
    llenos_.push_back(std::move(trozo));
    trozo = {};
    if (!vacios_.empty()) {
      trozo = std::move(vacios_.back());
      vacios_.pop_back();
    }
    hay_.notify_all();
    return true;
  }
  void terminar(std::exception_ptr error) {
    const std::scoped_lock turno(guarda_);
    terminada_ = true;
    error_ = std::move(error);
    hay_.notify_all();
  }

  /// El que sigue, a cambio del ya usado. false si no hay más. Lanza lo que lanzó quien los prepara.
  bool tomar(std::string& trozo) {
    std::unique_lock turno(guarda_);
    trozo.clear();
    if (trozo.capacity() >= kTrozo) vacios_.push_back(std::move(trozo));
    hay_.wait(turno, [&] { return !llenos_.empty() || terminada_; });
    if (error_) std::rethrow_exception(error_);
    if (llenos_.empty()) return false;
    trozo = std::move(llenos_.front());
    llenos_.pop_front();
    hay_.notify_all();
    return true;
  }
  void detener() {
    const std::scoped_lock turno(guarda_);
    detenida_ = true;
    hay_.notify_all();
  }

 private:
  static constexpr std::size_t kMaximo = 2;
  std::mutex guarda_;
  std::condition_variable hay_;
  std::deque<std::string> llenos_;
  std::vector<std::string> vacios_;
  std::exception_ptr error_;
  bool terminada_ = false, detenida_ = false;
};

struct Detenida {};

void Preparar(const RepartoBloques& reparto, std::span<const Rebanada> rebanadas, FuenteRegistros& fuente,
              const std::optional<Renovacion>& renovacion, Tuberia& tuberia) {
  std::string trozo;
  std::string completo;
  const auto poner = [&](std::string_view registro) {
    if (trozo.size() >= Tuberia::kTrozo && !tuberia.poner(trozo)) throw Detenida();
    trozo.append(ComoSeGuarda(registro, completo)).append("\r\n");
  };
  if (const auto presentador = reparto.presentador()) {
    std::string registro(fuente.registro(*presentador));
    AjustarLongitud(registro);
    if (renovacion) RenovarIdentificacion(registro, renovacion->ahora, renovacion->parte);
    poner(registro);
  }
  const FuenteRegistros::Receptor recibir = poner;
  for (const Rebanada& rebanada : rebanadas) {
    poner(fuente.registro(reparto.cabecera(rebanada.bloque)));
    for (std::size_t a = rebanada.desde; a < rebanada.hasta; ++a)
      fuente.adeudo(reparto.adeudo(rebanada.bloque, a), recibir);
  }
  if (!trozo.empty()) tuberia.poner(trozo);
}

}  // namespace

SumaNorma EscribirBloques(const RepartoBloques& reparto, std::span<const Rebanada> rebanadas,
                          FuenteRegistros& fuente, const std::optional<Renovacion>& renovacion,
                          const std::function<void(std::string_view bytes)>& escribir) {
  TotalesBloques totales;
  const auto escribirTotales = [&](std::span<const std::string> nuevos) {
    for (const std::string& registro : nuevos)
      escribir(registro + "\r\n");
  };
  Tuberia tuberia;
  const std::jthread lector([&] {
    try {
      Preparar(reparto, rebanadas, fuente, renovacion, tuberia);
      tuberia.terminar({});
    } catch (const Detenida&) {
    } catch (...) {
      tuberia.terminar(std::current_exception());
    }
  });
  try {
    for (std::string trozo; tuberia.tomar(trozo);) {
      const std::string_view bytes = trozo;
      std::size_t escritos = 0;
      for (std::size_t p = 0; p < bytes.size(); p += Tuberia::kRegistro) {
        const auto nuevos = totales.dar(bytes.substr(p, kLongitudRegistro));
        if (nuevos.empty()) continue;
        escribir(bytes.substr(escritos, p - escritos));
        escribirTotales(nuevos);
        escritos = p;
      }
      escribir(bytes.substr(escritos));
    }
    escribirTotales(totales.terminar());
  } catch (...) {
    tuberia.detener();
    throw;
  }
  return totales.general();
}

}  // namespace remesa
