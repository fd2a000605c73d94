#include "comunes/plataforma/Explorar.h"

namespace comunes {

QString QuitarExtension(const QString& Nombre) {
  return Nombre.left(Nombre.lastIndexOf(QLatin1Char('.')));
}

QList<FiltroFicheros> ConstruirFiltro(const QString& Filtro) {
  if (Filtro.startsWith(QLatin1Char('|'))) {
    QList<FiltroFicheros> filtros;
    const QStringList partes = Filtro.mid(1).split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < partes.size() && !partes[i].isEmpty(); i += 2)
      filtros.append({partes[i], partes[i + 1]});
    return filtros;
  }
  if (Filtro.startsWith(QLatin1Char('@'))) {
    const QString patrones = Filtro.mid(1);
    return {{QStringLiteral("Ficheros (") + patrones + QLatin1Char(')'), patrones}};
  }
  return {{QStringLiteral("Ficheros (*.") + Filtro.toLower() + QLatin1Char(')'),
           QStringLiteral("*.") + Filtro.toUpper()}};
}

}  // namespace comunes
