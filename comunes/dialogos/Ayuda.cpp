#include "comunes/dialogos/Ayuda.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

#include "comunes/dialogos/MiniHelp.h"

namespace comunes {
namespace {

/// La tecla llega a la ventana solo si ninguno de sus controles la quiso.
class TeclaAyuda : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* receptor, QEvent* evento) override {
    if (evento->type() != QEvent::KeyPress || !receptor->isWidgetType()) return false;
    const auto* tecla = static_cast<QKeyEvent*>(evento);
    auto* ventana = static_cast<QWidget*>(receptor);
    if (tecla->key() != Qt::Key_F1 || tecla->modifiers() != Qt::NoModifier || !ventana->isWindow())
      return false;
    MostrarAyuda(*ventana);
    return true;
  }
};

QString& Manual() {
  static QString manual;
  return manual;
}

bool EsDuena(const QWidget& duena, const QWidget& ventana) {
  const QWidget* w = &ventana;
  while (w != nullptr && w != &duena)
    w = w->parentWidget();
  return w != nullptr;
}

}  // namespace

void PonerAyuda(const QString& manual) {
  static QPointer<TeclaAyuda> tecla;
  Manual() = manual;
  if (tecla) return;
  tecla = new TeclaAyuda(qApp);
  qApp->installEventFilter(tecla);
}

void MostrarAyuda(QWidget& ventana) {
  static QPointer<MiniHelp> abierta;
  if (Manual().isEmpty() || &ventana == abierta) return;
  // Con otra dueña, una ventana modal la dejaría sin responder.
  if (abierta && abierta->parentWidget() != &ventana) {
    // Una caja abierta sobre la ayuda es suya: quitarla se la llevaría.
    if (EsDuena(*abierta, ventana))
      abierta.clear();
    else
      delete abierta;
  }
  const bool nueva = !abierta;
  if (nueva) {
    abierta = new MiniHelp(&ventana);
    abierta->setAttribute(Qt::WA_DeleteOnClose);
  }
  // Primero se ve: el tema se coloca según la anchura que tenga.
  abierta->show();
  if (nueva) abierta->Cargar(Manual());
  const QString seccion = ventana.property("Ayuda").toString();
  if (!seccion.isEmpty()) abierta->IrASeccion(seccion);
  abierta->raise();
  abierta->activateWindow();
}

}  // namespace comunes
