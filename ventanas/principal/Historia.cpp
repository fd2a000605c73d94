#include "ventanas/principal/Historia.h"

#include <QUndoCommand>
#include <algorithm>
#include <unordered_set>
#include <utility>

namespace principal {

struct Historia::Paso {
  QString que;
  bool vacia;  ///< Dejó vacía la remesa.
  EstadoAcumulacion estado;
};

class Historia::Orden : public QUndoCommand {
 public:
  Orden(std::shared_ptr<Paso> paso, const Intercambiar& intercambiar)
      : QUndoCommand(paso->que), paso_(std::move(paso)), intercambiar_(intercambiar) {}

  void undo() override { intercambiar_(paso_->estado); }
  void redo() override {
    // La pila la da al recibirla, cuando ya está dada.
    if (std::exchange(dada_, true)) undo();
  }

 private:
  std::shared_ptr<Paso> paso_;
  const Intercambiar& intercambiar_;
  bool dada_ = false;
};

std::size_t EstadoAcumulacion::memoria() const noexcept {
  return sizeof *this + lista.memoria() + tramos.capacity() * sizeof(VistaRegistros::Tramo) +
         static_cast<std::size_t>(importados.capacity()) * sizeof(QChar);
}

Historia::Historia(Intercambiar intercambiar, QObject* padre, std::size_t tope)
    : QObject(padre), intercambiar_(std::move(intercambiar)), tope_(tope) {
  connect(&pila_, &QUndoStack::undoTextChanged, this, &Historia::cambio);
  connect(&pila_, &QUndoStack::redoTextChanged, this, &Historia::cambio);
}

Historia::~Historia() {
  pila_.blockSignals(true);  // la ventana ya no está para oír que la pila se vacía
}

void Historia::apuntar(const QString& que, EstadoAcumulacion antes, const remesa::ListaRegistros& ahora,
                       std::span<const remesa::ListaRegistros* const> otras) {
  // Los deshechos ya no se pueden rehacer.
  pasos_.resize(static_cast<std::size_t>(pila_.index()));
  const bool vacia = ahora.empty() && !antes.lista.empty();
  pasos_.push_back(std::make_shared<Paso>(Paso{que, vacia, std::move(antes)}));
  pila_.push(new Orden(pasos_.back(), intercambiar_));
  std::vector<const remesa::ListaRegistros*> vivas(otras.begin(), otras.end());
  vivas.push_back(&ahora);
  recortar(vivas);
}

const Historia::Paso* Historia::vaciado() const {
  const auto ultimo = std::find_if(pasos_.rbegin(), pasos_.rend(), [](const auto& p) { return p->vacia; });
  return ultimo == pasos_.rend() ? nullptr : ultimo->get();
}

Historia::Ocupacion Historia::ocupacion(std::span<const remesa::ListaRegistros* const> vivas) const {
  const Paso* fijo = vaciado();
  std::unordered_set<const char*> contados;
  const auto contar = [&contados](const remesa::ListaRegistros& lista) {
    std::size_t bytes = 0;
    for (const remesa::Bloque& bloque : lista.bloques())
      if (contados.insert(bloque.datos.get()).second) bytes += bloque.largo;
    return bytes;
  };
  for (const remesa::ListaRegistros* lista : vivas)
    contar(*lista);
  if (fijo != nullptr) contar(fijo->estado.lista);
  Ocupacion suma{pasos_.size(), 0, 0};
  for (const auto& paso : pasos_) {
    if (paso.get() == fijo) continue;
    suma.propia += paso->estado.memoria();
    suma.registros += contar(paso->estado.lista);
  }
  return suma;
}

void Historia::recortar(std::span<const remesa::ListaRegistros* const> vivas) {
  const std::size_t habia = pasos_.size();
  const Paso* fijo = vaciado();
  for (;;) {
    const Ocupacion ocupado = ocupacion(vivas);
    if (ocupado.propia <= tope_ && ocupado.registros <= tope_) break;
    const auto antiguo = pasos_.begin() + (pasos_.front().get() == fijo ? 1 : 0);
    if (pasos_.end() - antiguo <= 1) break;
    pasos_.erase(antiguo);
  }
  if (pasos_.size() == habia) return;
  // La pila no deja quitar los de abajo.
  pila_.clear();
  for (const auto& paso : pasos_)
    pila_.push(new Orden(paso, intercambiar_));
}

}  // namespace principal
