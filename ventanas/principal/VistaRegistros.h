#pragma once

#include <QListView>
#include <span>
#include <utility>
#include <vector>

#include "ventanas/principal/Columnas.h"
#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

class ReglaPosiciones;

/// Lista de registros con su regla de posiciones. `ListIndex` es la fila actual, -1 si ninguna.
class VistaRegistros : public QListView {
  Q_OBJECT

 public:
  explicit VistaRegistros(QWidget* padre = nullptr);

  void reset() override;

  ModeloRegistros& modelo() { return *modelo_; }
  const remesa::ListaRegistros& lista() const { return modelo_->lista(); }
  const Columnas& columnas() const { return columnas_; }
  /// Píxeles que la lista está desplazada hacia la izquierda.
  int desplazamiento() const { return horizontalOffset(); }

  /// Pone otra lista: nada queda seleccionado ni actual y se ve desde el principio.
  void poner(remesa::ListaRegistros lista);
  /// Cambio que añade o quita registros: nada queda seleccionado ni actual, y se sigue viendo lo mismo.
  void cambiar(const ModeloRegistros::Cambio& cambio);

  int actual() const { return currentIndex().row(); }
  /// Hace actual una fila (-1, ninguna) sin tocar la selección.
  void ponerActual(int fila);
  /// Hace actual una fila y deja seleccionada solo esa.
  void seleccionarSolo(int fila);
  /// Desplaza la lista a los lados para que se vea una posición (desde 1).
  void mostrarPosicion(int posicion);
  /// Índices seleccionados, ascendentes. Lineal en intervalos y filas.
  std::vector<std::size_t> seleccion() const;
  /// Primera y última fila de un tramo seleccionado.
  using Tramo = std::pair<int, int>;
  /// Los tramos seleccionados, ascendentes y sin tocarse.
  std::vector<Tramo> tramosSeleccionados() const;
  void seleccionarTramos(std::span<const Tramo> tramos);
  /// Sustituye la selección por `filas`, ascendentes.
  void seleccionar(std::span<const std::size_t> filas);

 signals:
  /// Doble clic, Intro o F2 sobre un registro.
  void dobleClic(int fila);
  /// Posición (desde 1) y fila bajo el ratón; 0 y -1 si no hay.
  void bajoRaton(int fila, int posicion);

 protected:
  void changeEvent(QEvent* evento) override;
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void keyboardSearch(const QString&) override {}
  void leaveEvent(QEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;
  QRegion visualRegionForSelection(const QItemSelection&) const override { return viewport()->rect(); }
  void dataChanged(const QModelIndex& desde, const QModelIndex& hasta, const QList<int>& papeles) override;
  void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
  void selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) override;

 private:
  ModeloRegistros* modelo_;
  Columnas columnas_;
  ReglaPosiciones* regla_;
};

}  // namespace principal
