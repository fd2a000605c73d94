#include "comunes/plataforma/Aplicacion.h"

#include <QAbstractButton>
#include <QAction>
#include <QMessageBox>

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
  for (auto* boton : ventana.findChildren<QAbstractButton*>())
    if (suya(boton)) boton->blockSignals(tapada);
  for (auto* accion : ventana.findChildren<QAction*>())
    if (suya(accion->parent())) accion->blockSignals(tapada);
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
  Proteger([&] { atendido = QApplication::notify(receptor, evento); });
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
                     QMessageBox::Ok, QApplication::activeWindow());
    caja.setObjectName(u"AvisoPlataforma"_s);
    caja.setTextFormat(Qt::PlainText);
    caja.setText(texto);
    caja.exec();
  });
}

}  // namespace comunes
