#include "ventanas/editor/NotasCampo.h"

#include <QStringList>

namespace editor {

namespace {

QString visible(char32_t c) {
  const QString texto = QString::fromUcs4(&c, 1);
  // Uno que no se ve, o que se pega al anterior, se nombra por su número.
  if (QChar::isPrint(c) && !QChar::isMark(c)) return QStringLiteral("«") + texto + QStringLiteral("»");
  return QStringLiteral("el carácter U+") +
         QStringLiteral("%1").arg(static_cast<uint>(c), 4, 16, QLatin1Char('0')).toUpper();
}

/// Los caracteres distintos que cambian, con lo que serán.
QStringList cambios(const QString& texto) {
  constexpr int kMaximo = 4;
  QStringList lista;
  for (const char32_t c : texto.normalized(QString::NormalizationForm_C).toUcs4()) {
    const QString antes = QString::fromUcs4(&c, 1);
    const QString despues = QString::fromStdString(BytesSEPA(antes));
    if (antes == despues) continue;
    const QString cambio = visible(c) + QStringLiteral(" será «") + despues + QStringLiteral("»");
    if (lista.contains(cambio)) continue;
    if (lista.size() == kMaximo) return lista << QStringLiteral("…");
    lista << cambio;
  }
  return lista;
}

QString deLongitud(const CampoDescrito& campo, const QString& texto) {
  const auto tiene = static_cast<int>(BytesSEPA(texto).size());
  const auto ocupa = static_cast<int>(BytesCampo(campo, texto).size());
  if (ocupa != campo.longitud) {
    return QStringLiteral("Ocupa %1 posiciones y no %2: el registro quedará %3.")
        .arg(ocupa)
        .arg(campo.longitud)
        .arg(ocupa < campo.longitud ? QStringLiteral("más corto") : QStringLiteral("más largo"));
  }
  if (tiene <= campo.longitud) return {};
  return campo.relleno == QLatin1String("I")
             ? QStringLiteral("Solo caben los %1 primeros caracteres.").arg(campo.longitud)
             : QStringLiteral("Solo caben los %1 últimos caracteres.").arg(campo.longitud);
}

}  // namespace

QString Observacion(const CampoDescrito& campo, const QString& texto) {
  const QStringList distintos = cambios(texto);
  QStringList frases;
  if (!distintos.isEmpty())
    frases << QStringLiteral("En el registro, ") + distintos.join(QStringLiteral(", ")) + QStringLiteral(".");
  const QString longitud = deLongitud(campo, texto);
  if (!longitud.isEmpty()) frases << longitud;
  return frases.join(QLatin1Char(' '));
}

}  // namespace editor
