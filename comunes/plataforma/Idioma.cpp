#include <QTranslator>

#include "comunes/plataforma/Aplicacion.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/TextosPropios.h"

// La macro no puede estar dentro de un espacio de nombres.
static void cargarRecursoIdioma() {
  Q_INIT_RESOURCE(idioma);
}

namespace comunes {

using namespace Qt::StringLiterals;

void PonerIdioma(QApplication& aplicacion) {
  cargarRecursoIdioma();
  auto* toolkit = new QTranslator(&aplicacion);
  if (toolkit->load(u":/idioma/qtbase_es.qm"_s)) QApplication::installTranslator(toolkit);
  // El último instalado es el primero que se consulta.
  QApplication::installTranslator(new TextosPropios(&aplicacion));
  QLocale::setDefault(LocaleUsuario());
}

}  // namespace comunes
