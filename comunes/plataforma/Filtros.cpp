#include "comunes/plataforma/Explorar.h"

namespace comunes {

using namespace Qt::StringLiterals;

QString QuitarExtension(const QString& Nombre) {
  return Nombre.left(Nombre.lastIndexOf(u'.'));
}

QList<FiltroFicheros> ConstruirFiltro(const QString& Filtro) {
  if (Filtro.startsWith(u'|')) {
    QList<FiltroFicheros> filtros;
    const QStringList partes = Filtro.mid(1).split(u'|');
    for (qsizetype i = 0; i + 1 < partes.size() && !partes[i].isEmpty(); i += 2)
      filtros.append({partes[i], partes[i + 1]});
    return filtros;
  }
  if (Filtro.startsWith(u'@')) {
    const QString patrones = Filtro.mid(1);
    return {{u"Ficheros ("_s + patrones + u')', patrones}};
  }
  return {{u"Ficheros (*."_s + Filtro.toLower() + u')', u"*."_s + Filtro.toUpper()}};
}

}  // namespace comunes
