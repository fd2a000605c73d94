#include "ventanas/principal/EnFondo.h"

#include <chrono>
#include <utility>

#include "comunes/plataforma/Formatos.h"
#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

namespace {

using namespace std::chrono_literals;

/// Lo que se espera por si se pide otra.
constexpr auto kQuieta = 150ms;
/// Lo que tarda en dejarse una a medias.
constexpr auto kDejada = 5ms;

}  // namespace

EnFondo::EnFondo(const ModeloRegistros& modelo, QObject* padre) : QObject(padre), modelo_(modelo) {
  espera_.setSingleShot(true);
  connect(&espera_, &QTimer::timeout, this, &EnFondo::empezar);
}

void EnFondo::pedir(std::uint64_t fila, Contar contar) {
  dejar();
  fila_ = fila;
  contar_ = std::move(contar);
  espera_.start(kQuieta);
}

void EnFondo::dejar() {
  espera_.stop();
  if (enCurso_) enCurso_->parar();
}

void EnFondo::empezar() {
  // Esperarlo aquí pararía la ventana.
  if (enCurso_ && !enCurso_->listo()) return espera_.start(kDejada);
  enCurso_ = std::make_unique<Veredicto>(modelo_.lista(), comunes::Hoy(), fila_);
  enCurso_->alLlegar([this](const Veredicto::Resultado&) { contar_(*enCurso_); });
}

}  // namespace principal
