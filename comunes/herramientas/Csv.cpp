#include "comunes/herramientas/Csv.h"

#include <algorithm>

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

/// Lee el campo que empieza en `i` y deja `i` en el signo que lo acaba, o en el final.
QString LeerCampo(QStringView texto, qsizetype& i, QChar separador, bool& sinCerrar) {
  QString campo;
  if (i < texto.size() && texto[i] == u'"') {
    for (++i;; ++i) {
      const qsizetype comillas = texto.indexOf(u'"', i);
      if (comillas < 0) {
        sinCerrar = true;
        campo += texto.sliced(i);
        i = texto.size();
        return campo;
      }
      campo += texto.sliced(i, comillas - i);
      i = comillas + 1;
      if (i == texto.size() || texto[i] != u'"') break;
      campo += u'"';
    }
  }
  // Lo que quede tras unas comillas cerradas antes de tiempo es parte del campo.
  const qsizetype desde = i;
  while (i < texto.size() && texto[i] != separador && texto[i] != u'\r' && texto[i] != u'\n')
    ++i;
  return campo += texto.sliced(desde, i - desde);
}

}  // namespace

Csv LeerCsv(QStringView texto, QChar separador) {
  Csv csv;
  QStringList fila;
  for (qsizetype i = 0; i < texto.size(); ++i) {
    fila += LeerCampo(texto, i, separador, csv.comillasSinCerrar);
    if (i < texto.size() && texto[i] == separador) {
      if (i + 1 < texto.size()) continue;
      fila += QString();
    }
    if (i + 1 < texto.size() && texto[i] == u'\r' && texto[i + 1] == u'\n') ++i;
    const bool vacia = std::all_of(fila.cbegin(), fila.cend(),
                                   [](const QString& campo) { return campo.trimmed().isEmpty(); });
    if (!vacia) csv.filas.push_back(fila);
    fila.clear();
  }
  return csv;
}

void EscribirFilaCsv(QString& salida, const QStringList& fila, QChar separador) {
  for (qsizetype i = 0; i < fila.size(); ++i) {
    const QString& campo = fila[i];
    const bool comillas = std::any_of(campo.cbegin(), campo.cend(), [&](QChar c) {
      return c == separador || c == u'"' || c == u'\r' || c == u'\n';
    });
    if (i > 0) salida += separador;
    if (comillas)
      salida += u'"' + QString(campo).replace(u"\""_s, u"\"\""_s) + u'"';
    else
      salida += campo;
  }
  salida += u"\r\n"_s;
}

}  // namespace herramientas
