#include "ventanas/principal/Patrones.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <algorithm>

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// No se usan los comodines de Qt: para ellos los corchetes son especiales, y hay nombres que los llevan.
QRegularExpression Expresion(const QString& patrones) {
  QStringList alternativas;
  const QStringList partes = patrones.split(u';', Qt::SkipEmptyParts);
  for (const QString& parte : partes) {
    const QString patron = parte.trimmed();
    if (patron.isEmpty()) continue;
    if (patron == "*.*"_L1) {
      alternativas << u".*"_s;
      continue;
    }
    QString expresion;
    for (const QChar c : patron)
      expresion += c == u'*' ? u".*"_s : c == u'?' ? u"."_s : QRegularExpression::escape(QString(c));
    alternativas << expresion;
  }
  // Sin patrones no hay alternativa que cumplir.
  const QString todas = alternativas.isEmpty() ? u"(?!)"_s : alternativas.join(u'|');
  return QRegularExpression(QRegularExpression::anchoredPattern(todas),
                            QRegularExpression::CaseInsensitiveOption |
                                QRegularExpression::DotMatchesEverythingOption |
                                QRegularExpression::UseUnicodePropertiesOption);
}

}  // namespace

bool CumplePatron(const QString& nombre, const QString& patrones) {
  return Expresion(patrones).match(nombre).hasMatch();
}

QStringList FicherosDe(const QString& carpeta, const QString& patrones) {
  const QRegularExpression expresion = Expresion(patrones);
  QStringList nombres;
  for (QDirIterator it(carpeta, QDir::Files); it.hasNext();) {
    it.next();
    const QString nombre = it.fileName();
    if (expresion.match(nombre).hasMatch()) nombres << nombre;
  }
  std::sort(nombres.begin(), nombres.end(), [](const QString& a, const QString& b) {
    const int orden = a.compare(b, Qt::CaseInsensitive);
    return orden != 0 ? orden < 0 : a < b;
  });
  return nombres;
}

}  // namespace principal
