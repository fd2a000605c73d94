#include "ventanas/editor/NotasCampo.h"

#include <QStringList>

namespace editor {

using namespace Qt::StringLiterals;

namespace {

QString visible(char32_t c) {
  const QString texto = QString::fromUcs4(&c, 1);
  // Uno que no se ve, o que se pega al anterior, se nombra por su número.
  if (QChar::isPrint(c) && !QChar::isMark(c)) return u"«"_s + texto + u"»"_s;
  return u"el carácter U+"_s + u"%1"_s.arg(static_cast<uint>(c), 4, 16, QChar(u'0')).toUpper();
}

/// Los caracteres distintos que cambian, con lo que serán.
QStringList cambios(const QString& texto) {
  constexpr int kMaximo = 4;
  QStringList lista;
  for (const char32_t c : texto.normalized(QString::NormalizationForm_C).toUcs4()) {
    const QString antes = QString::fromUcs4(&c, 1);
    const QString despues = QString::fromStdString(BytesSEPA(antes));
    if (antes == despues) continue;
    const QString cambio = visible(c) + u" será «"_s + despues + u"»"_s;
    if (lista.contains(cambio)) continue;
    if (lista.size() == kMaximo) return lista << u"…"_s;
    lista << cambio;
  }
  return lista;
}

QString deLongitud(const CampoDescrito& campo, const QString& texto) {
  const auto tiene = static_cast<int>(BytesSEPA(texto).size());
  const auto ocupa = static_cast<int>(BytesCampo(campo, texto).size());
  if (ocupa != campo.longitud) {
    return u"Ocupa %1 posiciones y no %2: el registro quedará %3."_s.arg(ocupa)
        .arg(campo.longitud)
        .arg(ocupa < campo.longitud ? u"más corto"_s : u"más largo"_s);
  }
  if (tiene <= campo.longitud) return {};
  return campo.relleno == "I"_L1 ? u"Solo caben los %1 primeros caracteres."_s.arg(campo.longitud)
                                 : u"Solo caben los %1 últimos caracteres."_s.arg(campo.longitud);
}

}  // namespace

QString Observacion(const CampoDescrito& campo, const QString& texto) {
  const QStringList distintos = cambios(texto);
  QStringList frases;
  if (!distintos.isEmpty()) frases << u"En el registro, "_s + distintos.join(u", "_s) + u"."_s;
  const QString longitud = deLongitud(campo, texto);
  if (!longitud.isEmpty()) frases << longitud;
  return frases.join(u' ');
}

}  // namespace editor
