#pragma once

#include <QListWidget>
#include <QString>

namespace principal {

/// La carpeta abierta con sus antecesoras encima y sus subcarpetas debajo, sangradas. Doble clic o Intro
/// entra.
class ListaCarpetas : public QListWidget {
  Q_OBJECT

 public:
  explicit ListaCarpetas(QWidget* padre = nullptr);

  /// Carpeta abierta: absoluta y con los separadores de la plataforma.
  QString ruta() const;
  /// Abre una carpeta. Si no existe o no se puede leer devuelve false y todo sigue como estaba.
  bool ponerRuta(const QString& ruta);
  /// Vuelve a leer las subcarpetas; si la abierta ya no está, abre la antecesora más cercana.
  void refrescar();

 signals:
  void cambio();
  /// Se pide el menú de una carpeta, que no se abre; "", el de la lista. `donde`, en la pantalla.
  void menuPedido(const QString& ruta, const QPoint& donde);

 protected:
  void contextMenuEvent(QContextMenuEvent* evento) override;
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) override;

 private:
  void llenar();
  void entrar(const QListWidgetItem* elemento);
  void pedirMenu();

  QString ruta_;
  bool aMano_ = false;  ///< La selección cambia por el ratón, el teclado o el programa.
};

}  // namespace principal
