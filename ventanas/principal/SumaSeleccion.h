#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <utility>
#include <vector>

namespace principal {

class VistaRegistros;

/// Cuántos adeudos hay entre los registros seleccionados y cuánto suman, cada vez que cambian. Una selección
/// enorme se suma por partes, entre unos eventos y otros.
class SumaSeleccion : public QObject {
  Q_OBJECT

 public:
  /// `vista` vive más.
  SumaSeleccion(VistaRegistros& vista, QObject* padre);

 signals:
  /// Ya no hay varios seleccionados, o aún se están sumando.
  void sinSuma();
  /// Importe en céntimos.
  void sumada(std::size_t adeudos, std::int64_t importe);

 private:
  void empezar();
  void seguir();

  VistaRegistros& vista_;
  QTimer paso_;
  bool pendiente_ = false;
  std::vector<std::pair<int, int>> intervalos_;  // filas, ambas incluidas; ascendentes y sin solaparse
  std::size_t cual_ = 0;
  int fila_ = 0;
  std::size_t adeudos_ = 0;
  std::int64_t importe_ = 0;
};

}  // namespace principal
