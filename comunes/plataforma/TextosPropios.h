#pragma once

#include <QTranslator>

namespace comunes {

/// Textos del toolkit que qtbase_es no trae, o trae con una errata. Lo demás lo deja a los otros traductores.
class TextosPropios : public QTranslator {
 public:
  using QTranslator::QTranslator;

  bool isEmpty() const override { return false; }
  QString translate(const char* contexto, const char* texto, const char* distincion, int n) const override;
};

}  // namespace comunes
