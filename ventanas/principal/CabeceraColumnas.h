#pragma once

#include <QHeaderView>

#include "ventanas/principal/RegistroEnPalabras.h"

class QMenu;

namespace principal {

class VistaRegistros;

/// Cabecera de las columnas en que se leen los registros, encima de una lista y desplazada con ella. Los
/// anchos se cambian con el ratón y las columnas se quitan con su menú, hasta que se cierra el programa.
class CabeceraColumnas : public QHeaderView {
  Q_OBJECT

 public:
  explicit CabeceraColumnas(VistaRegistros* vista);

  int alto() const { return sizeHint().height(); }
  int altoFila() const { return fontMetrics().height() + 6; }
  /// Hueco entre el borde de una columna y su texto, en píxeles.
  static constexpr int kMargen = 5;
  /// Las columnas que se ven, en su orden.
  QList<Columna> visibles() const;
  /// Añade al menú qué columnas se ven y los anchos de partida.
  void llenarMenu(QMenu& menu);
  /// Sigue los anchos y las columnas que se quitan en `otra`, y al revés.
  void igualar(CabeceraColumnas& otra);

 signals:
  void ratonEncima();

 protected:
  void changeEvent(QEvent* evento) override;
  void contextMenuEvent(QContextMenuEvent* evento) override;
  void enterEvent(QEnterEvent* evento) override;

 private:
  void ponerAnchos();
  void ajustar(int columna);
  void seguir(CabeceraColumnas& otra);

  VistaRegistros* vista_;
};

}  // namespace principal
