#include "ventanas/principal/VigiaVeredicto.h"

#include <chrono>

#include "comunes/plataforma/Formatos.h"
#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

namespace {

using namespace std::chrono_literals;

/// Varias órdenes seguidas no empiezan una comprobación cada una.
constexpr auto kQuieta = 150ms;
/// Lo que tarda en dejarse una a medias.
constexpr auto kDejada = 10ms;

}  // namespace

VigiaVeredicto::VigiaVeredicto(const ModeloRegistros& modelo, QObject* padre)
    : QObject(padre), modelo_(modelo) {
  espera_.setSingleShot(true);
  connect(&espera_, &QTimer::timeout, this, &VigiaVeredicto::empezar);
  connect(&modelo, &QAbstractItemModel::modelReset, this, &VigiaVeredicto::anticuar);
  connect(&modelo, &QAbstractItemModel::dataChanged, this, &VigiaVeredicto::anticuar);
}

void VigiaVeredicto::anticuar() {
  if (enCurso_) enCurso_->parar();
  const bool vacia = modelo_.lista().empty();
  vacia ? espera_.stop() : espera_.start(kQuieta);
  estado_ = vacia ? Estado::Vacia : Estado::Comprobando;
  emit cambiado();
}

void VigiaVeredicto::empezar() {
  // Esperarlo aquí pararía la ventana.
  if (enCurso_ && !enCurso_->listo()) return espera_.start(kDejada);
  enCurso_ = std::make_unique<Veredicto>(modelo_.lista(), comunes::Hoy());
  enCurso_->alLlegar([this](const Veredicto::Resultado& resultado) { terminar(resultado); });
}

void VigiaVeredicto::terminar(const Veredicto::Resultado& resultado) {
  estado_ = resultado ? Estado::Comprobada : Estado::Fallida;
  if (resultado) resultado_ = *resultado;
  emit cambiado();
}

}  // namespace principal
