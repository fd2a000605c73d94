#pragma once

#include <QString>
#include <QStringList>

#include "remesa/Fichero.h"
#include "remesa/ListaRegistros.h"

namespace principal {

/// Una remesa leída de un fichero, de texto o XML.
struct RemesaTomada {
  remesa::ListaRegistros lista;
  QStringList perdidas;  ///< De un XML, lo que dice y sus registros no tienen: una frase por cosa.
  QString rechazo;       ///< Si no se toma, por qué, en una frase sin punto; entonces no hay lista.
};

/// Por qué el fichero no es de los que se importan, sin mayúscula ni punto; vacío si lo es. De uno en XML
/// solo se sabe al leerlo. Lanza ErrorEjecucion si no se puede mirar.
QString PorQueNoSeToma(const QString& ruta);

/// ¿Trae lo que el banco rechaza o devuelve? Uno que no se puede leer, no: ya lo dirá quien lo intente.
bool TraeDevoluciones(const QString& ruta);

/// Lee la remesa entera; de la cabeza de uno de texto no se mira nada. Lanza ErrorEjecucion si no se puede
/// leer, y lo que lance `avance`.
RemesaTomada LeerRemesa(const QString& ruta, const remesa::AvanceLectura& avance);

/// Las primeras frases, una por línea, para una caja de mensajes; al final, cuántas más hay.
QString EnCaja(const QStringList& frases);

}  // namespace principal
