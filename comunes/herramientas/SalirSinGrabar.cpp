#include "comunes/herramientas/SalirSinGrabar.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QWidget>

#include "comunes/dialogos/MyBox.h"

namespace herramientas {

using namespace Qt::StringLiterals;

bool SalirSinGrabar(QWidget& ventana, const QString& fichero, const QString& pregunta, int icono) {
  const QWidget* activa = QApplication::activeWindow();
  const bool desdeOtra = activa != nullptr && activa != &ventana;
  ventana.setWindowState(ventana.windowState() & ~Qt::WindowMinimized);
  ventana.show();
  ventana.raise();
  ventana.activateWindow();
  const QString nombre = fichero.isEmpty() ? ventana.windowTitle().remove(u"[*]"_s)
                                           : QDir::toNativeSeparators(QFileInfo(fichero).absoluteFilePath());
  const QString texto = desdeOtra ? nombre + u":;;"_s + pregunta : pregunta;
  return comunes::MyMsgBox(texto, QFileInfo(fichero).fileName(), icono, 2, 2, -1, -1, &ventana) ==
         comunes::kAceptar;
}

}  // namespace herramientas
