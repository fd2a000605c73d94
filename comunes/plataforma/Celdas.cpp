#include "comunes/plataforma/Celdas.h"

namespace comunes {

using namespace Qt::StringLiterals;

QString SinFormula(QString valor) {
  if (!valor.isEmpty() && u"=+-@\t\r"_s.contains(valor.front())) valor.prepend(u'\'');
  return valor;
}

QString FilaTabulada(const QStringList& celdas) {
  QString fila;
  for (qsizetype i = 0; i < celdas.size(); ++i) {
    if (i > 0) fila += u'\t';
    QString celda = SinFormula(celdas[i]);
    // Una comilla suelta se llevaría las celdas y las filas de detrás.
    if (celda.contains(u'"')) celda = u'"' + celda.replace(u"\""_s, u"\"\""_s) + u'"';
    fila += celda;
  }
  return fila;
}

}  // namespace comunes
