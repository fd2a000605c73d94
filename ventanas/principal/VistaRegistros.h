#pragma once

#include <QListView>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "ventanas/principal/Columnas.h"
#include "ventanas/principal/ModeloRegistros.h"

namespace principal {

class CabeceraColumnas;
class ReglaPosiciones;

/// Lista de registros, que se leen como texto, con su regla de posiciones, o en columnas, con su cabecera. Lo
/// que se lee no cambia nada más: los registros, la selección y la fila actual son los mismos. `ListIndex` es
/// la fila actual, -1 si ninguna.
class VistaRegistros : public QListView {
  Q_OBJECT

 public:
  explicit VistaRegistros(QWidget* padre = nullptr);

  enum class Modo : std::uint8_t { Texto, Columnas };

  void reset() override;

  Modo modo() const { return modo_; }
  /// Se sigue viendo la misma fila la primera.
  void ponerModo(Modo modo);
  CabeceraColumnas& cabecera() const { return *cabecera_; }
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
  /// Lo que se lee de una fila, entero: sus posiciones, o sus columnas.
  QString textoFila(int fila) const;
  /// Desplaza la lista a los lados para que se vea una posición (desde 1) del registro actual.
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
  /// Posición (desde 1) y fila bajo el ratón; 0 y -1 si no hay. En columnas, la primera del campo que se ve.
  void bajoRaton(int fila, int posicion);
  /// El registro actual es otro, o dice otra cosa.
  void actualCambiado();
  /// Ctrl+C, o Ctrl+Mayús+C para copiar como tabla.
  void copiaPedida(bool tabla);
  /// Botón derecho, tecla de menú o Mayús+F10, con la selección ya como debe estar.
  void menuPedido(const QPoint& global);

 protected:
  void changeEvent(QEvent* evento) override;
  void contextMenuEvent(QContextMenuEvent* evento) override;
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void keyboardSearch(const QString&) override {}
  void leaveEvent(QEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;
  bool viewportEvent(QEvent* evento) override;
  QRegion visualRegionForSelection(const QItemSelection&) const override { return viewport()->rect(); }
  void dataChanged(const QModelIndex& desde, const QModelIndex& hasta, const QList<int>& papeles) override;
  void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
  void selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) override;

 private:
  void pedirMenuDeTeclado();
  /// Columna que cae en ese punto del área, o -1.
  int columnaEn(int x) const;
  int posicionBajo(const QModelIndex& indice, int x) const;

  ModeloRegistros* modelo_;
  Columnas columnas_;
  ReglaPosiciones* regla_;
  CabeceraColumnas* cabecera_;
  Modo modo_ = Modo::Texto;
  int lateralDelOtro_ = 0;  ///< desplazamiento a los lados que tenía el otro modo
};

}  // namespace principal
