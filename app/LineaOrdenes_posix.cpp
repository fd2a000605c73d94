#include <QCoreApplication>
#include <QStringList>

#include "app/LineaOrdenes.h"

QString LineaOrdenes() {
  return QCoreApplication::arguments().mid(1).join(u' ').remove(u'"');
}
