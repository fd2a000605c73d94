#include "comunes/herramientas/CargarGrabarTexto.h"

#include <QPlainTextEdit>
#include <algorithm>
#include <optional>

#include "comunes/dialogos/MyBox.h"
#include "comunes/herramientas/CargarGrabar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kUtf8 = "Utf8";
constexpr const char* kMarca = "\xEF\xBB\xBF";

/// Lo que sigue a la marca, si es UTF-8 y una caja de texto lo devolvería igual.
std::optional<QString> textoUtf8(const QByteArray& bytes) {
  if (!bytes.startsWith(kMarca)) return {};
  const QByteArray resto = bytes.sliced(3);
  const QString texto = QString::fromUtf8(resto);
  // Para un documento de Qt, estos tres son finales de párrafo.
  const bool entero = std::none_of(texto.begin(), texto.end(), [](QChar c) {
    return c == QChar(0x2029) || c == QChar(0xFDD0) || c == QChar(0xFDD1);
  });
  return entero && texto.toUtf8() == resto ? std::optional(texto) : std::nullopt;
}

/// Una línea se maqueta entera cada vez que cambia algo de ella: con un millón de caracteres, la caja tarda
/// del orden de un segundo en cada tecla.
bool Desiste(const QStringList& lineas) {
  constexpr qsizetype kLineaEnorme = 1'000'000;
  qsizetype mayor = 0;
  for (const QString& linea : lineas)
    mayor = std::max(mayor, linea.size());
  return mayor > kLineaEnorme && comunes::MyMsgBox(
                                     u"El fichero tiene una línea de %1 caracteres: tardará en verse y en "
                                     u"responder a cada tecla.;;¿ Desea abrirlo ?"_s.arg(
                                         comunes::FormatoNumero(static_cast<double>(mayor), 0)),
                                     {}, comunes::kIconoPregunta, 2, 2) != comunes::kAceptar;
}

bool poner(const QByteArray& bytes, QPlainTextEdit& caja) {
  const std::optional<QString> utf8 = textoUtf8(bytes);
  const QString texto =
      utf8 ? *utf8 : comunes::DesdeWindows1252({bytes.data(), static_cast<std::size_t>(bytes.size())});
  const QStringList lineas = comunes::PartirLineas(texto);
  if (Desiste(lineas)) return false;
  const comunes::Reloj reloj;
  caja.setProperty(kUtf8, utf8.has_value());
  caja.setPlainText(lineas.join(u'\n'));
  return true;
}

std::string bytesDe(const QPlainTextEdit& caja) {
  const QString texto = TextoDe(caja);
  const std::string lineas = EsUtf8(caja) ? kMarca + texto.toStdString() : comunes::AWindows1252(texto);
  std::string bytes;
  bytes.reserve(lineas.size() + lineas.size() / 16);
  for (const char c : lineas) {
    if (c == '\n') bytes += '\r';
    bytes += c;
  }
  return bytes += "\r\n";
}

}  // namespace

bool CargarGrabarTexto(const QString& Accion, QString& Ruta, QPlainTextEdit& Caja) {
  return CargarGrabar(
      Accion, Ruta,
      {u"El MicroEditor de QMX"_s, &Caja, [&Caja](const QByteArray& bytes) { return poner(bytes, Caja); },
       [&Caja] { return bytesDe(Caja); }});
}

QString TextoDe(const QPlainTextEdit& caja) {
  return caja.document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

bool EsUtf8(const QPlainTextEdit& caja) {
  return caja.property(kUtf8).toBool();
}

qsizetype PrimeroSinGrabar(const QPlainTextEdit& caja) {
  return EsUtf8(caja) ? -1 : comunes::PrimeroFueraDeWindows1252(TextoDe(caja));
}

}  // namespace herramientas
