#pragma once

#include <QListView>
#include <QString>
#include <functional>

namespace principal {

class ModeloFicheros;
class TextoVacio;

/// Ficheros de una carpeta que cumplen el patrón. Como en la lista de la plataforma, elegir es hacer clic,
/// moverse con las flechas o pulsar Intro; con una tecla mantenida se elige al soltarla. Con Ctrl o Mayús se
/// eligen varios. Lo que cambia por programa (otra carpeta, refrescar, marcar) no elige. Lo resaltado es
/// siempre lo último que se eligió: solo el botón izquierdo del ratón lo cambia. Los importados llevan una
/// señal, que las ayudas técnicas leen con el nombre.
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
  /// Marca los que estén de esos nombres, y ningún otro, sin elegirlos.
  void marcarVarios(const QStringList& nombres);
  /// Quita uno de los resaltados.
  void desmarcar(const QString& nombre);
  /// Resalta solo ese nombre, o ninguno si no está; si ya es de los resaltados, nada cambia. El teclado sigue
  /// donde estaba, y así puede pasar de largo.
  void resaltar(const QString& nombre);
  /// El primero de los resaltados, o "".
  QString marcado() const;
  /// Los resaltados, en el orden de la lista.
  QStringList marcados() const;
  /// Quién dice si un fichero está importado. `renovarSenales` lo vuelve a preguntar.
  void ponerImportado(std::function<bool(const QString& nombre)> importado);
  void renovarSenales();

 signals:
  /// El que hay que ver: el último que se eligió, de los resaltados.
  void elegido(const QString& nombre);
  /// Se pide el menú de un fichero, que no cambia lo elegido, o el de la lista con "". `donde`, en la
  /// pantalla.
  void menuPedido(const QString& nombre, const QPoint& donde);

 protected:
  void contextMenuEvent(QContextMenuEvent* evento) override;
  bool event(QEvent* evento) override;
  void focusInEvent(QFocusEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void keyReleaseEvent(QKeyEvent* evento) override;
  void mouseDoubleClickEvent(QMouseEvent* evento) override;
  void mouseMoveEvent(QMouseEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;
  void mouseReleaseEvent(QMouseEvent* evento) override;
  void selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) override;
  void initViewItemOption(QStyleOptionViewItem* opcion) const override;

 private:
  QModelIndex indice(const QString& nombre) const;
  void leer();
  void elegir();
  void seleccionar(const QStringList& nombres);
  void pedirMenu();

  ModeloFicheros* modelo_;
  TextoVacio* vacio_;
  QString carpeta_;
  QString patron_;
  bool aMano_ = false;      ///< La selección cambia por el ratón, el teclado o el programa.
  bool porElegir_ = false;  ///< La eligió una ayuda técnica, y aún no se ha dicho.
  bool pendiente_ = false;  ///< Hay algo por elegir cuando se suelte la tecla o el botón.
};

}  // namespace principal
