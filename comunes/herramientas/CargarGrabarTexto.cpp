#include "comunes/herramientas/CargarGrabarTexto.h"

#include <QPlainTextEdit>
#include <QVariant>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/herramientas/CargarGrabar.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kCodificacion = "Codificacion";
/// Líneas que entran de una vez en la caja: entre tanda y tanda se puede detener.
constexpr qsizetype kLineasPorTanda = 5000;

/// Para un documento de Qt, estos tres son finales de párrafo: no los devolvería.
bool loDevuelveLaCaja(const QString& texto) {
  return std::none_of(texto.begin(), texto.end(), [](QChar c) {
    return c == QChar::ParagraphSeparator || c == QChar(0xFDD0) || c == QChar(0xFDD1);
  });
}

/// false si se detuvo, y la caja queda vacía. De una vez, millones de líneas tienen parada la ventana.
bool llenar(QPlainTextEdit& caja, const QString& texto) {
  caja.clear();
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Cargando el texto…"_s);
  const bool deshacer = caja.isUndoRedoEnabled();
  caja.setUndoRedoEnabled(false);
  QTextCursor cursor(caja.document());
  QString tanda;
  qsizetype lineas = 0;
  qsizetype leido = 0;
  bool seguir = true;
  comunes::RecorrerLineas(texto, [&](QStringView linea) {
    if (!seguir) return;
    if (lineas > 0) tanda += u'\n';
    tanda += linea;
    leido += linea.size() + 1;
    if (++lineas % kLineasPorTanda != 0) return;
    cursor.insertText(tanda);
    tanda.clear();
    seguir = avance.avanzar(static_cast<double>(leido), static_cast<double>(texto.size()));
  });
  if (seguir)
    cursor.insertText(tanda);
  else
    caja.clear();
  caja.setUndoRedoEnabled(deshacer);
  caja.moveCursor(QTextCursor::Start);
  return seguir;
}

bool poner(const QByteArray& bytes, QPlainTextEdit& caja) {
  comunes::TextoLeido leido = comunes::LeerTexto(bytes);
  const bool utf8 = leido.codificacion.unicode == QStringConverter::Utf8;
  if (!loDevuelveLaCaja(leido.texto)) {
    if (!utf8) {
      comunes::Avisar(
          u"El fichero está en %1 y tiene caracteres que este editor cambiaría.;;No se abre, para no "
          u"estropearlo."_s.arg(leido.codificacion.Nombre()));
      return false;
    }
    leido = {comunes::DesdeWindows1252({bytes.data(), static_cast<std::size_t>(bytes.size())}), {}};
  }
  if (!QuiereAbrir(leido.texto) || !llenar(caja, leido.texto)) return false;
  caja.setProperty(kCodificacion, QVariant::fromValue(leido.codificacion));
  return true;
}

std::string bytesDe(const QPlainTextEdit& caja) {
  const QString texto = TextoDe(caja).replace(u'\n', u"\r\n"_s) + u"\r\n"_s;
  return comunes::EscribirTexto(texto, CodificacionDe(caja));
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

comunes::Codificacion CodificacionDe(const QPlainTextEdit& caja) {
  return caja.property(kCodificacion).value<comunes::Codificacion>();
}

qsizetype PrimeroSinGrabar(const QPlainTextEdit& caja) {
  return comunes::PrimeroSinEscribir(TextoDe(caja), CodificacionDe(caja));
}

}  // namespace herramientas
