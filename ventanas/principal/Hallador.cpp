#include "ventanas/principal/Hallador.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

namespace {

constexpr int kMilisegundos = 8;             // de un turno: dos caben entre dos imágenes
constexpr std::size_t kSinMirarReloj = 256;  // registros

}  // namespace

Hallador::Hallador(ModeloRegistros& modelo, QObject* padre) : QObject(padre), modelo_(modelo) {
  connect(&turno_, &QTimer::timeout, this, &Hallador::mirar);
  connect(&modelo, &QAbstractItemModel::modelAboutToBeReset, this, &Hallador::olvidar);
  connect(&modelo, &QAbstractItemModel::modelReset, this, &Hallador::caducar);
  connect(&modelo, &QAbstractItemModel::dataChanged, this, &Hallador::caducar);
}

void Hallador::buscar(remesa::Busqueda busqueda) {
  olvidar();
  busqueda_ = std::move(busqueda);
  if (!busqueda_.vacia()) turno_.start(0);
}

void Hallador::detener() {
  turno_.stop();
}

void Hallador::olvidar() {
  detener();
  hallados_ = {};
  mirados_ = 0;
}

void Hallador::caducar() {
  olvidar();
  emit caducado();
}

void Hallador::mirar() {
  const remesa::ListaRegistros& lista = modelo_.lista();
  const auto todos = static_cast<std::size_t>(modelo_.rowCount());
  QElapsedTimer reloj;
  reloj.start();
  while (mirados_ < todos && !reloj.hasExpired(kMilisegundos)) {
    const std::size_t hasta = std::min(todos, mirados_ + kSinMirarReloj);
    for (; mirados_ < hasta; ++mirados_)
      if (busqueda_.en(lista[mirados_])) hallados_.push_back(mirados_);
  }
  if (mirados_ >= todos) detener();
  emit adelantado();
}

}  // namespace principal
