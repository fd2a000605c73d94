#pragma once

#include <QString>

#include "iso20022/Aviso.h"
#include "iso20022/Nota.h"

namespace consola {

// Una nota o un aviso en una línea, como los hallazgos de `comprobar`: "fichero: registro 3, 89-99 Importe
// del adeudo (Ana Peña, REF1): error E512: …", o un objeto JSON con las mismas claves. Los de la lectura de
// un mensaje tienen elemento y línea en vez de campo y posiciones.

QString EnLinea(const QString& fichero, const iso20022::Nota& nota);
QString EnLinea(const QString& fichero, const iso20022::AvisoLectura& aviso);
QString EnLineaJson(const QString& fichero, const iso20022::Nota& nota);
QString EnLineaJson(const QString& fichero, const iso20022::AvisoLectura& aviso);

}  // namespace consola
