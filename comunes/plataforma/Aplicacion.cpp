#include "comunes/plataforma/Aplicacion.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <algorithm>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Estilo.h"
#include "comunes/plataforma/InformeError.h"
#include "comunes/plataforma/Ventanas.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// Calla las órdenes de una ventana mientras otra modal la tapa: el ratón y el teclado no le llegan, pero una
/// ayuda técnica pulsa sus botones sin pasar por ellos. La que tapa puede ser hija suya.
void callarOrdenes(QWidget& ventana, bool tapada) {
  const auto suya = [&ventana](const QObject* control) {
    const auto* w = qobject_cast<const QWidget*>(control);
    return w != nullptr && w->window() == &ventana;
  };
  // De una que se está destruyendo ya no queda más que esto, y sus hijos se están yendo.
  if (ventana.metaObject() == &QWidget::staticMetaObject) return;
  for (auto* boton : ventana.findChildren<QAbstractButton*>())
    if (suya(boton)) boton->blockSignals(tapada);
  for (auto* accion : ventana.findChildren<QAction*>())
    if (suya(accion->parent())) accion->blockSignals(tapada);
}

/// El botón que tiene el foco y que Intro no pulsaría: donde ninguno parece el de siempre, ha de pulsar el
/// del foco.
QPushButton* botonDeIntro(QObject* receptor, const QEvent* evento) {
  if (evento->type() != QEvent::KeyPress) return nullptr;
  const auto* tecla = static_cast<const QKeyEvent*>(evento);
  const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
  if (!intro || (tecla->modifiers() & ~Qt::KeypadModifier) != 0 || tecla->isAutoRepeat()) return nullptr;
  auto* boton = qobject_cast<QPushButton*>(receptor);
  if (boton == nullptr || boton->autoDefault()) return nullptr;
  const auto botones = boton->window()->findChildren<QPushButton*>();
  const bool haySiempre = std::any_of(botones.begin(), botones.end(), [](const QPushButton* otro) {
    return otro->isDefault() && otro->isVisible();
  });
  return haySiempre ? nullptr : boton;
}

}  // namespace

Aplicacion::Aplicacion(int& argc, char** argv) : QApplication(argc, argv) {
  setStyle(CrearEstilo());
  PonerIdioma(*this);
  PonerFuentes();
  AvisosConCaja();
}

bool Aplicacion::notify(QObject* receptor, QEvent* evento) {
  bool atendido = true;
  if (receptor->isWidgetType() &&
      (evento->type() == QEvent::WindowBlocked || evento->type() == QEvent::WindowUnblocked))
    callarOrdenes(static_cast<QWidget&>(*receptor), evento->type() == QEvent::WindowBlocked);
  const QPointer<QPushButton> boton = botonDeIntro(receptor, evento);
  const bool enDialogo =
      boton && qobject_cast<QDialog*>(boton->window()) != nullptr;  // que se queda con la tecla
  Proteger([&] {
    if (!enDialogo) atendido = QApplication::notify(receptor, evento);
    // Una ventana que hace otra cosa con Intro, como la calculadora, la ha aceptado.
    if (boton && (enDialogo || !evento->isAccepted())) {
      evento->accept();
      boton->click();
    }
  });
  return atendido;
}

bool Aplicacion::Proteger(const std::function<void()>& tarea) {
  try {
    tarea();
    return true;
  } catch (const std::exception& error) {
    InformarError(error);
  }
  return false;
}

void AvisosConCaja() {
  PonerAvisador([](GradoAviso grado, const QString& texto, const QString& titulo) {
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    if (grado == GradoAviso::Informacion) icono = QMessageBox::Information;
    if (grado == GradoAviso::Exclamacion) icono = QMessageBox::Warning;
    if (grado == GradoAviso::Critico) icono = QMessageBox::Critical;
    QMessageBox caja(icono, titulo.isEmpty() ? QApplication::applicationDisplayName() : titulo, QString(),
                     QMessageBox::Ok, VentanaActiva());
    caja.setObjectName(u"AvisoPlataforma"_s);
    caja.setTextFormat(Qt::PlainText);
    caja.setText(texto);
    caja.exec();
  });
}

}  // namespace comunes
