#pragma once

#include <QScrollArea>

class QLabel;

namespace comunes {
class Enlace;
}

namespace principal {

class VistaRegistros;

/// Lo que ocupa el sitio de la lista `Acumulado` mientras está vacía: los pasos que hay que dar o, hasta la
/// orden siguiente, lo que se acaba de guardar. Está encima de ella y no dentro, para que sus enlaces los
/// encuentren las ayudas técnicas; lo demás (pulsaciones, menú) es de la lista.
class LugarVacio : public QScrollArea {
  Q_OBJECT

 public:
  /// `lista` ha de tener ya su padre.
  explicit LugarVacio(VistaRegistros& lista);

  /// Vuelve a los pasos.
  void olvidarGuardado();
  /// `cuanto`: ficheros, adeudos e importe. Sin `deshacible` no hay enlace que lo deshaga.
  void ponerGuardado(const QString& ruta, const QString& cuanto, bool deshacible);
  /// Lo que dice la comprobación de lo guardado, si aún se enseña.
  void ponerVeredicto(const QString& veredicto, bool hayErrores);
  bool conGuardado() const;

  /// Enlaces, en el orden en que se leen.
  comunes::Enlace* verEjemplos;
  comunes::Enlace* elegirCarpeta;
  comunes::Enlace* verComprobacion;
  comunes::Enlace* abrirCarpeta;
  comunes::Enlace* deshacer;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;
  void contextMenuEvent(QContextMenuEvent* evento) override;
  void mousePressEvent(QMouseEvent* evento) override;

 private:
  QWidget* pagina(const QString& titulo, std::initializer_list<QLabel*> textos,
                  std::initializer_list<comunes::Enlace*> enlaces);
  void colocar();
  void mostrarSiVacia();

  VistaRegistros& lista_;
  QWidget* pasos_;
  QWidget* guardado_;
  QLabel* ruta_;
  QLabel* cuanto_;
  QLabel* veredicto_;
};

}  // namespace principal
