#include "comunes/plataforma/Codificacion.h"

#include <algorithm>

#include "comunes/plataforma/Texto.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// UTF-8 sin marca se acepta si de verdad lo es: alguna letra de varios bytes y ningún control de los que
/// salen al leer como UTF-8 lo que no lo es.
bool soloPuedeSerUtf8(const QString& texto) {
  bool varios = false;
  for (const QChar c : texto) {
    if (c.unicode() >= 0x80 && c.unicode() < 0xA0) return false;
    varios = varios || c.unicode() >= 0x80;
  }
  return varios;
}

QByteArray enUnicode(const QString& texto, const Codificacion& codificacion) {
  QStringEncoder escritor(*codificacion.unicode, codificacion.marca ? QStringConverter::Flag::WriteBom
                                                                    : QStringConverter::Flag::Default);
  return escritor(texto);
}

}  // namespace

QString Codificacion::Nombre() const {
  if (!unicode) return u"Windows-1252"_s;
  const QString nombre = QString::fromLatin1(QStringConverter::nameForEncoding(*unicode));
  return marca ? nombre : nombre + u" sin marca"_s;
}

TextoLeido LeerTexto(const QByteArray& bytes) {
  const auto marcada = QStringConverter::encodingForData(bytes);
  const Codificacion codificacion{marcada.value_or(QStringConverter::Utf8), marcada.has_value()};
  // Sin estado: con él, un carácter a medias al final se callaría en vez de delatar que no lo es.
  QStringDecoder lector(*codificacion.unicode, QStringConverter::Flag::Stateless);
  const QString texto = lector(bytes);
  const bool vale = !lector.hasError() && (codificacion.marca || soloPuedeSerUtf8(texto));
  if (vale && enUnicode(texto, codificacion) == bytes) return {texto, codificacion};
  return {DesdeWindows1252({bytes.data(), static_cast<std::size_t>(bytes.size())}), {}};
}

QString MarcaIncumplida(const QByteArray& bytes) {
  const auto marcada = QStringConverter::encodingForData(bytes);
  if (!marcada || *marcada == QStringConverter::Utf8 || LeerTexto(bytes).codificacion.unicode) return {};
  return Codificacion{marcada, true}.Nombre();
}

std::string EscribirTexto(const QString& texto, const Codificacion& codificacion) {
  return codificacion.unicode ? enUnicode(texto, codificacion).toStdString() : AWindows1252(texto);
}

qsizetype PrimeroSinEscribir(const QString& texto, const Codificacion& codificacion) {
  return codificacion.unicode ? -1 : PrimeroFueraDeWindows1252(texto);
}

}  // namespace comunes
