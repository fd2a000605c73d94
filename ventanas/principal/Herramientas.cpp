#include "ventanas/principal/Herramientas.h"

#include <QAction>
#include <memory>

#include "comunes/dialogos/Ayuda.h"
#include "comunes/dialogos/MiniHelp.h"
#include "comunes/herramientas/LineasAjustes.h"
#include "comunes/herramientas/MiCalc.h"
#include "comunes/herramientas/Presenta.h"
#include "comunes/herramientas/Telefonos.h"
#include "comunes/herramientas/frmEditor.h"
#include "comunes/herramientas/frmTablas.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "ui_frmUnirQ19.h"

// La macro no puede estar dentro de un espacio de nombres.
static void cargarRecursoManual() {
  Q_INIT_RESOURCE(manual);
}

namespace principal {

using namespace Qt::StringLiterals;

Herramientas::Herramientas(const Ui::frmUnirQ19& ui, QWidget& principal) : QObject(&principal) {
  cargarRecursoManual();
  comunes::PonerAyuda(u":/manual/manual.md"_s);
  connect(ui.mnuTextos, &QAction::triggered, this, [this, &principal] { editarTexto(principal); });
  connect(ui.mnuTablas, &QAction::triggered, this, [this, &principal] { editarTabla(principal); });
  connect(ui.mnuCalculadora, &QAction::triggered, this, &Herramientas::unica<herramientas::MiCalc>);
  connect(ui.mnuTelefonos, &QAction::triggered, this, &Herramientas::unica<herramientas::Telefonos>);
  connect(ui.mnuContenido, &QAction::triggered, &principal,
          [&principal] { comunes::MostrarAyuda(principal); });
  connect(ui.mnuAcercaDe, &QAction::triggered, &principal,
          [&principal] { herramientas::Presenta(u":/manual/Licencia"_s, &principal).exec(); });
  ui.menuHerramientas->menuAction()->setVisible(
      ui.mnuTextos->isVisible() || ui.mnuTablas->isVisible() || ui.mnuCalculadora->isVisible() ||
      ui.mnuTelefonos->isVisible() || ui.mnuComprobar->isVisible() || ui.mnuDevoluciones->isVisible());
}

void Herramientas::editarTabla(QWidget& principal) {
  const QString elegido = comunes::DialogoFichero(true, &principal, {},
                                                  u"|Tablas (*.txt)|*.txt|Todos los ficheros|*"_s, false, {});
  if (elegido.isEmpty() || traerLaDe<herramientas::frmTablas>(elegido)) return;
  auto tabla = std::make_unique<herramientas::frmTablas>();
  tabla->PonerRuta(comunes::RutaAbsoluta(elegido));
  if (tabla->Dimensionar(nullptr, 0, u"Valor#40"_s, u"T(Z) A(I) L(255)"_s, true)) mostrar(tabla.release());
}

void Herramientas::editarTexto(QWidget& principal) {
  const QString ruta =
      comunes::DialogoFichero(true, &principal, QFileInfo(comunes::RutaAjustes).path(),
                              u"|Textos y ajustes|*.INI;*.TXT|Todos los ficheros|*.*"_s, false, {});
  if (ruta.isEmpty() || traerLaDe<herramientas::frmEditor>(ruta)) return;
  auto editor = std::make_unique<herramientas::frmEditor>();
  if (editor->Cargar(ruta, herramientas::LineasAjustes(ruta))) mostrar(editor.release());
}

bool Herramientas::cerrarTodas() {
  const QList<QPointer<QWidget>> ventanas = abiertas_;
  for (const QPointer<QWidget>& ventana : ventanas)
    if (ventana && !ventana->isHidden() && !ventana->close()) return false;
  if (auto* ayuda = parent()->findChild<comunes::MiniHelp*>()) ayuda->close();
  return true;
}

void Herramientas::mostrar(QWidget* ventana) {
  ventana->setAttribute(Qt::WA_DeleteOnClose);
  abiertas_.removeAll(nullptr);
  abiertas_.append(ventana);
  traer(*ventana);
}

void Herramientas::traer(QWidget& ventana) {
  ventana.setWindowState(ventana.windowState() & ~Qt::WindowMinimized);
  ventana.show();
  ventana.raise();
  ventana.activateWindow();
}

}  // namespace principal
