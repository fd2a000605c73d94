#include "ventanas/principal/SumaSeleccion.h"

#include <algorithm>

#include "remesa/Campos.h"
#include "remesa/TotalesNorma.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

namespace {

/// Unos milisegundos.
constexpr int kFilasPorPaso = 20'000;

}  // namespace

SumaSeleccion::SumaSeleccion(VistaRegistros& vista, QObject* padre) : QObject(padre), vista_(vista) {
  paso_.setSingleShot(true);
  connect(&paso_, &QTimer::timeout, this, &SumaSeleccion::seguir);
  const auto cambia = [this] {
    pendiente_ = true;
    paso_.start(0);
  };
  connect(vista.selectionModel(), &QItemSelectionModel::selectionChanged, this, cambia);
  // Lo que pone otra lista quita la selección sin decirlo, y un importe puede cambiar.
  connect(vista.model(), &QAbstractItemModel::modelReset, this, cambia);
  connect(vista.model(), &QAbstractItemModel::dataChanged, this, cambia);
}

void SumaSeleccion::empezar() {
  pendiente_ = false;
  intervalos_.clear();
  const QItemSelection seleccion = vista_.selectionModel()->selection();
  for (const QItemSelectionRange& rango : seleccion)
    if (rango.isValid()) intervalos_.emplace_back(rango.top(), rango.bottom());
  std::ranges::sort(intervalos_);
  int ultima = -1;
  std::size_t filas = 0;
  for (auto& [desde, hasta] : intervalos_) {
    desde = std::max(desde, ultima + 1);
    ultima = std::max(ultima, hasta);
    if (hasta >= desde) filas += static_cast<std::size_t>(hasta - desde + 1);
  }
  if (filas < 2) intervalos_.clear();
  cual_ = 0;
  fila_ = intervalos_.empty() ? 0 : intervalos_.front().first;
  adeudos_ = 0;
  importe_ = 0;
  if (filas < 2 || filas > kFilasPorPaso) emit sinSuma();
}

void SumaSeleccion::seguir() {
  if (pendiente_) empezar();
  if (intervalos_.empty()) return;
  const remesa::ListaRegistros& lista = vista_.lista();
  int quedan = kFilasPorPaso;
  while (cual_ < intervalos_.size() && quedan > 0) {
    const int hasta = std::min(intervalos_[cual_].second, fila_ + quedan - 1);
    for (int fila = fila_; fila <= hasta; ++fila) {
      const auto i = static_cast<std::size_t>(fila);
      lista.anticipar(i);
      if (remesa::Clase(lista[i]) != remesa::ClaseRegistro::Adeudo) continue;
      ++adeudos_;
      importe_ += remesa::ImporteDe(lista[i]);
    }
    quedan -= std::max(0, hasta - fila_ + 1);
    fila_ = hasta + 1;
    if (fila_ <= intervalos_[cual_].second) break;
    if (++cual_ < intervalos_.size()) fila_ = intervalos_[cual_].first;
  }
  if (cual_ < intervalos_.size()) return paso_.start(0);
  emit sumada(adeudos_, importe_);
  intervalos_.clear();
}

}  // namespace principal
