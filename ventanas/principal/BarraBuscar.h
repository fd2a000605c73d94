#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

class QAction;
class QShortcut;

namespace Ui {
class BarraBuscar;
}

namespace principal {

class Hallador;
class VistaRegistros;

/// Barra que busca en una lista de registros y se abre encima de ella. Lo hallado se recorre con Intro y F3,
/// o se selecciona entero; la barra nunca cambia un registro. Escape detiene la búsqueda o, acabada, cierra y
/// devuelve el foco. Si la lista cambia se busca otra vez en la nueva, sin moverse de donde se esté.
class BarraBuscar : public QWidget {
  Q_OBJECT

 public:
  /// `listas`: en las que se busca; sin el foco en ninguna, en la primera. Cada una, dentro de una caja
  /// vertical.
  explicit BarraBuscar(const QList<VistaRegistros*>& listas, QWidget* padre = nullptr);
  ~BarraBuscar() override;

  /// Lo menos ancha que puede ser sin dejar de entenderse, para una pantalla en la que no cabe.
  void estrechar();
  /// Sobre la lista que tiene el foco, con el texto de antes seleccionado.
  void abrir();
  void siguiente();
  void anterior();
  /// Pregunta el número de un registro, desde 1, y va a él.
  void irARegistro();

 protected:
  void changeEvent(QEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  enum class Pendiente { Nada, Primero, Siguiente, Anterior, Todos };

  VistaRegistros& lista() const;
  void ponerSobre(VistaRegistros& lista);
  void cerrar();
  void escape();
  void buscar(Pendiente que);
  void pedir(Pendiente que);
  void atender();
  void ir(std::size_t cual);
  void seleccionarTodos();
  void contar();

  std::unique_ptr<Ui::BarraBuscar> ui_;
  QList<VistaRegistros*> listas_;
  VistaRegistros* vista_;
  std::unique_ptr<Hallador> hallador_;
  QShortcut* escape_;
  QPointer<QWidget> anterior_;  ///< quien tenía el foco al abrir
  Pendiente pendiente_ = Pendiente::Nada;
  int ancla_ = 0;  ///< desde qué fila se busca mientras se escribe
  bool yendo_ = false;
  bool detenida_ = false;
  QString vuelta_;
};

}  // namespace principal
