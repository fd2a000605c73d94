#pragma once

#include <QListView>
#include <QString>

class QStringListModel;

namespace principal {

class TextoVacio;

/// Ficheros de una carpeta que cumplen el patrón. Como en la lista de la plataforma, elegir es hacer clic,
/// moverse con las flechas o pulsar Intro; con una tecla mantenida se elige al soltarla. Lo que cambia por
/// programa (otra carpeta, refrescar, marcar) no elige. Lo resaltado es siempre lo último que se eligió: solo
/// el botón izquierdo del ratón lo cambia.
class ListaFicheros : public QListView {
  Q_OBJECT

 public:
  explicit ListaFicheros(QWidget* padre = nullptr);

  void ponerCarpeta(const QString& carpeta);
  void ponerPatron(const QString& patron);
  /// Vuelve a leer la carpeta; lo marcado y lo que se ve siguen igual si siguen estando.
  void refrescar();
  /// Marca un nombre si está, sin elegirlo; si no está, no queda nada marcado.
  void marcar(const QString& nombre);
  /// Resalta solo ese nombre, o ninguno si no está. El teclado sigue donde estaba, y así puede pasar de
  /// largo.
  void resaltar(const QString& nombre);
  /// El nombre resaltado, o "".
  QString marcado() const;

 signals:
  void elegido(const QString& nombre);

 protected:
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void keyReleaseEvent(QKeyEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) override;

 private:
  QModelIndex indice(const QString& nombre) const;
  void leer();
  void elegir();

  QStringListModel* modelo_;
  TextoVacio* vacio_;
  QString carpeta_;
  QString patron_;
  bool aMano_ = false;      ///< La selección cambia por el ratón, el teclado o el programa.
  bool pendiente_ = false;  ///< Hay algo por elegir cuando se suelte la tecla o el botón.
};

}  // namespace principal
