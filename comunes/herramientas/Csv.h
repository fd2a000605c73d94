#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace herramientas {

struct Csv {
  std::vector<QStringList> filas;  ///< sin las líneas en blanco
  bool comillasSinCerrar = false;  ///< todo lo que sigue a ellas está en el último campo
};

/// Filas de un texto separado por `separador`. Un campo entre comillas puede llevar el separador, comillas
/// dobladas y cambios de línea. CR LF, LF y CR acaban una fila.
Csv LeerCsv(QStringView texto, QChar separador);

/// Añade a `salida` una fila acabada en CR LF, con comillas donde hacen falta.
void EscribirFilaCsv(QString& salida, const QStringList& fila, QChar separador);

}  // namespace herramientas
