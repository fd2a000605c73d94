#pragma once

#include <QFileInfo>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace Ui {
class frmUnirQ19;
}

namespace principal {

/// Lo que se abre desde los menús: ventanas sin modo, una de cada, independientes de la principal pero que se
/// cierran con ella.
class Herramientas : public QObject {
  Q_OBJECT

 public:
  Herramientas(const Ui::frmUnirQ19& ui, QWidget& principal);

  /// Cierra las ventanas abiertas. Cada una pregunta por lo que tenga sin guardar; false en cuanto una se
  /// queda.
  bool cerrarTodas();
  /// La ventana de esa clase, delante; si no estaba abierta, una nueva.
  template <typename Ventana>
  Ventana* unica() {
    for (const QPointer<QWidget>& ventana : abiertas_)
      if (auto* suya = qobject_cast<Ventana*>(ventana.data()); suya && !suya->isHidden()) {
        traer(*suya);
        return suya;
      }
    auto* nueva = new Ventana;
    mostrar(nueva);
    return nueva;
  }

 private:
  /// Trae la ventana de ese tipo que ya edita `ruta`; false si no la hay.
  template <typename Ventana>
  bool traerLaDe(const QString& ruta) {
    for (const QPointer<QWidget>& ventana : abiertas_)
      if (auto* suya = qobject_cast<Ventana*>(ventana.data());
          suya && !suya->isHidden() && QFileInfo(suya->Ruta()) == QFileInfo(ruta)) {
        traer(*suya);
        return true;
      }
    return false;
  }
  /// Una ventana por fichero.
  void editarTabla(QWidget& principal);
  /// Una ventana por fichero; la del de ajustes trae sus líneas preparadas.
  void editarTexto(QWidget& principal);
  void mostrar(QWidget* ventana);
  static void traer(QWidget& ventana);

  QList<QPointer<QWidget>> abiertas_;
};

}  // namespace principal
