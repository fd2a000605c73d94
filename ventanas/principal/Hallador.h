#pragma once

#include <QObject>
#include <QTimer>
#include <vector>

#include "remesa/Busqueda.h"

namespace principal {

class ModeloRegistros;

/// Busca en la lista de un modelo por turnos de pocos milisegundos, que la ventana nunca espera. Si la lista
/// cambia, lo hallado deja de ser suyo: se olvida y se dice.
class Hallador : public QObject {
  Q_OBJECT

 public:
  explicit Hallador(ModeloRegistros& modelo, QObject* padre = nullptr);

  /// Empieza, olvidando lo de antes. Un texto vacío no busca nada.
  void buscar(remesa::Busqueda busqueda);
  /// Deja la búsqueda donde esté, con lo que lleve hallado.
  void detener();
  void olvidar();

  const remesa::Busqueda& busqueda() const { return busqueda_; }
  bool buscando() const { return turno_.isActive(); }
  /// Los registros mirados, que son todos si se ha llegado al final.
  std::size_t mirados() const { return mirados_; }
  /// Filas halladas, ascendentes.
  const std::vector<std::size_t>& hallados() const { return hallados_; }

 signals:
  /// Hay más mirados, o se ha acabado.
  void adelantado();
  /// La lista ha cambiado: no hay nada hallado.
  void caducado();

 private:
  void mirar();
  void caducar();

  ModeloRegistros& modelo_;
  remesa::Busqueda busqueda_;
  std::vector<std::size_t> hallados_;
  std::size_t mirados_ = 0;
  QTimer turno_;
};

}  // namespace principal
