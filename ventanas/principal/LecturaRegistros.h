#pragma once

#include <QObject>
#include <QString>

namespace Ui {
class frmUnirQ19;
}

namespace principal {

class EtiquetaRecortada;
class VistaRegistros;

/// Cómo se leen las dos listas de registros: como texto o en columnas, con el registro actual en palabras
/// debajo de cada una, el campo que hay bajo el ratón al pie de la ventana y el menú del botón derecho.
class LecturaRegistros : public QObject {
  Q_OBJECT

 public:
  LecturaRegistros(const Ui::frmUnirQ19& ui, QWidget& principal);

  void ponerColumnas(bool columnas);
  /// Donde falta alto, una franja para las dos listas, la de la última en que se ha estado, en la línea del
  /// total.
  void plegar(bool plegada);

 signals:
  /// Lo que se ha hecho, para decirlo al pie de la ventana.
  void dicho(const QString& texto);

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void mostrarActual(const VistaRegistros& lista);
  void mostrarBajoRaton(const VistaRegistros& lista, int fila, int posicion);
  void copiar(const VistaRegistros& lista, bool tabla);
  void mostrarMenu(VistaRegistros& lista, const QPoint& donde);

  const Ui::frmUnirQ19& ui_;
  VistaRegistros* ultima_;  ///< la última en que se ha estado
  bool plegada_ = false;
};

}  // namespace principal
