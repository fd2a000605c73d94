#include <windows.h>

#include "app/LineaOrdenes.h"

QString LineaOrdenes() {
  // Sin pasar por argv, que desharía los blancos repetidos de la ruta.
  const QString linea = QString::fromWCharArray(GetCommandLineW());
  const QChar fin = linea.startsWith(u'"') ? u'"' : u' ';
  const qsizetype programa = linea.indexOf(fin, 1);
  if (programa < 0) return {};
  return linea.mid(programa + 1).remove(u'"').trimmed();
}
