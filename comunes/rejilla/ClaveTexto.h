#pragma once

#include <QByteArray>
#include <QCollator>

namespace comunes {

/// Con qué se compara un texto, por `<`, en el orden alfabético de un idioma y sin distinguir mayúsculas.
#ifdef Q_OS_WIN
using ClaveTexto = QByteArray;
#else
using ClaveTexto = QCollatorSortKey;
#endif

/// Da las claves de muchos textos: comparar claves cuesta mucho menos que comparar los textos.
class ClavesTexto {
 public:
  explicit ClavesTexto(const QLocale& idioma) : orden_(idioma) {
    orden_.setCaseSensitivity(Qt::CaseInsensitive);
  }
  ClaveTexto de(const QString& texto) const;

 private:
  QCollator orden_;
};

}  // namespace comunes
