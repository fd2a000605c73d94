#include <windows.h>

#include "app/LineaOrdenes.h"

QString LineaOrdenes() {
  // Sin pasar por argv, que desharía los blancos repetidos de la ruta.
  const QString linea = QString::fromWCharArray(GetCommandLineW());
  const QChar fin = linea.startsWith(QLatin1Char('"')) ? QLatin1Char('"') : QLatin1Char(' ');
  const qsizetype programa = linea.indexOf(fin, 1);
  if (programa < 0) return {};
  return linea.mid(programa + 1).remove(QLatin1Char('"')).trimmed();
}
