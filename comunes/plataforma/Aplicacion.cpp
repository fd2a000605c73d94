#include "comunes/plataforma/Aplicacion.h"

#include <QMessageBox>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/InformeError.h"
#include "comunes/plataforma/Ventanas.h"

namespace comunes {

Aplicacion::Aplicacion(int& argc, char** argv) : QApplication(argc, argv) {
  PonerIdioma(*this);
  PonerFuentes();
  AvisosConCaja();
}

bool Aplicacion::notify(QObject* receptor, QEvent* evento) {
  bool atendido = true;
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
    caja.setObjectName(QStringLiteral("AvisoPlataforma"));
    caja.setTextFormat(Qt::PlainText);
    caja.setText(texto);
    caja.exec();
  });
}

}  // namespace comunes
