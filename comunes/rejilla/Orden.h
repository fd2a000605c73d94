#pragma once

#include <QDate>
#include <QString>

#include "comunes/rejilla/Rejilla.h"

namespace comunes {

/// Ordena por una columna (-1, la actual) según su letra en `Tag`; las celdas que no son fecha o importe en
/// una columna de ese tipo quedan vacías. Con `marcar`, su título queda en rojo. `nuevaColumna` distinta de
/// -1 queda como columna actual.
void OrdenarColumna(Rejilla& rejilla, int columna = -1, bool marcar = false, int nuevaColumna = -1);

/// Ordena las filas no fijas por la columna como fechas, las vacías delante, y deja las fechas escritas con
/// `formato`; las celdas que no son fecha quedan vacías.
void OrdenarFechas(Rejilla& rejilla, int columna, const QString& formato);

/// Fecha según un formato de grupos de "d", "m" e "y" ("dd/mm/yyyy", "mmmm yyyy"); lo demás se copia.
QString FormatoFechaLibre(const QDate& fecha, const QString& formato);

}  // namespace comunes
