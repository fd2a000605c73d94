#include "ventanas/editor/NotasCampo.h"

#include <QStringList>
#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "remesa/CaracteresSEPA.h"

namespace editor {

using namespace Qt::StringLiterals;

namespace {

/// Lo que quedará en el registro, si no es `texto`; "" si lo es.
QString reducido(const QString& texto) {
  const QString compuesto = texto.normalized(QString::NormalizationForm_C);
  const QString bytes = QString::fromStdString(BytesSEPA(texto));
  return bytes == compuesto ? QString() : bytes;
}

QString deLongitud(const CampoDescrito& campo, const QString& texto, const QString& original) {
  const auto tiene = static_cast<int>(BytesSEPA(texto).size());
  const auto ocupa = static_cast<int>(BytesCampo(campo, texto, original).size());
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

QString Observacion(const CampoDescrito& campo, const QString& texto, const QString& original) {
  QStringList frases;
  const QString queda = reducido(texto).trimmed();
  if (!queda.isEmpty()) frases << u"En el registro quedará «%1»."_s.arg(queda);
  const QString longitud = deLongitud(campo, texto, original);
  if (!longitud.isEmpty()) frases << longitud;
  return frases.join(u' ');
}

QString FormaLegible(const CampoDescrito& campo, const QString& texto) {
  // En una caja de mayúsculas, la letra puesta lo es, salvo que lo de al lado no lo sea: «Núria» es «Nuria».
  const bool enMayusculas =
      campo.descriptor.contains("T(M)"_L1) &&
      std::none_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'a' && c <= u'z'; });
  QString legible;
  for (const char32_t c : texto.normalized(QString::NormalizationForm_C).toUcs4()) {
    const QString caracter = QString::fromUcs4(&c, 1);
    const bool cabe = comunes::CabeEnWindows1252(caracter);
    if (!cabe && QChar::isMark(c)) continue;  // una marca que no compone ninguna letra
    // De lo que Windows-1252 no tiene, la letra sin sus signos.
    const QString base = cabe ? caracter : caracter.normalized(QString::NormalizationForm_KD).left(1);
    QString puesto = u"."_s;
    if (comunes::CabeEnWindows1252(base))
      puesto = QString::fromStdString(remesa::EquivalenteSEPA(comunes::AWindows1252(base)));
    legible += enMayusculas ? puesto.toUpper() : puesto;
  }
  return legible;
}

}  // namespace editor
