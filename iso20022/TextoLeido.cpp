#include "iso20022/TextoLeido.h"

#include <QString>
#include <algorithm>

#include "comunes/plataforma/Texto.h"

namespace iso20022 {
namespace {

bool EsControl(QChar c) {
  return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

/// Solo ASCII sin controles: casi todo.
bool EsLlano(QStringView texto) {
  return std::ranges::all_of(texto, [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7F; });
}

/// Sin marcas: "ł" no se descompone, y se queda.
QString SinSignos(const QString& caracter) {
  QString letra = caracter.normalized(QString::NormalizationForm_KD);
  letra.removeIf([](QChar c) { return c.isMark(); });
  return comunes::CabeEnWindows1252(letra) ? letra : caracter;
}

}  // namespace

bool ABytes(QStringView texto, std::string& bytes) {
  texto = texto.trimmed();
  if (EsLlano(texto)) {
    bytes.resize(static_cast<std::size_t>(texto.size()));
    std::ranges::transform(texto, bytes.begin(), [](QChar c) { return static_cast<char>(c.unicode()); });
    return true;
  }
  // Compuesta, una letra con su acento es un carácter.
  const QString compuesto = texto.toString().normalized(QString::NormalizationForm_C);
  QString limpio;
  for (const QChar c : compuesto) {
    if (EsControl(c))
      limpio += u' ';
    else if (comunes::CabeEnWindows1252(QString(c)) || c.isSurrogate())
      limpio += c;
    else
      limpio += SinSignos(QString(c));
  }
  bytes = comunes::AWindows1252(limpio);
  return limpio == compuesto && comunes::CabeEnWindows1252(limpio);
}

}  // namespace iso20022
