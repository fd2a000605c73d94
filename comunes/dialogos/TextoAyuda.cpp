#include "comunes/dialogos/TextoAyuda.h"

#include <QFileInfo>

#include "comunes/plataforma/LecturaTexto.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaximoAyuda = 4 * 1024 * 1024;

TextoAyuda::Formato FormatoDe(const QString& ruta, const QString& texto) {
  const QString extension = QFileInfo(ruta).suffix().toLower();
  const QString cabeza = texto.left(200).trimmed().toLower();
  if (extension == u"md" || extension == u"markdown") return TextoAyuda::Formato::Markdown;
  if (extension == u"html" || extension == u"htm" || cabeza.startsWith(u"<!doctype html") ||
      cabeza.startsWith(u"<html")) {
    return TextoAyuda::Formato::Html;
  }
  return TextoAyuda::Formato::Llano;
}

}  // namespace

TextoAyuda LeerAyuda(const QString& ruta) {
  TextoAyuda ayuda;
  try {
    ayuda.texto = DecodificarTexto(LeerBytes(ruta, kMaximoAyuda));
    ayuda.formato = FormatoDe(ruta, ayuda.texto);
    if (ayuda.texto.contains(QChar(u'\0'))) ayuda.fallo = u"El tema de ayuda no es un fichero de texto:\n"_s;
  } catch (const ficheros::ErrorEjecucion& error) {
    ayuda.fallo =
        error.numero() == ficheros::kMemoriaInsuficiente
            ? u"El tema de ayuda es demasiado grande para verlo aquí:\n"_s
            : u"No se puede leer el tema de ayuda (%1):\n"_s.arg(QString::fromStdString(error.texto()));
  }
  if (!ayuda.fallo.isEmpty()) {
    ayuda.texto.clear();
    ayuda.fallo += ruta;
  }
  return ayuda;
}

}  // namespace comunes
