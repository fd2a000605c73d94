#include <QTranslator>

#include "comunes/plataforma/Aplicacion.h"

// La macro no puede estar dentro de un espacio de nombres.
static void cargarRecursoIdioma() {
  Q_INIT_RESOURCE(idioma);
}

namespace comunes {

void PonerIdioma(QApplication& aplicacion) {
  cargarRecursoIdioma();
  auto* traductor = new QTranslator(&aplicacion);
  if (traductor->load(QStringLiteral(":/idioma/qtbase_es.qm"))) QApplication::installTranslator(traductor);
}

}  // namespace comunes
