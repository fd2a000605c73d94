#include "comunes/dialogos/VisorAyuda.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTextBlock>

#include "comunes/dialogos/TextoAyuda.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "remesa/ErrorEjecucion.h"

namespace comunes {
namespace {

constexpr qint64 kMaximoImagen = 16 * 1024 * 1024;

/// Nombre con que los enlaces se refieren a un título: "Primer uso" es "primer-uso".
QString NombreSeccion(const QString& titulo) {
  QString nombre;
  for (const QChar c : titulo.toLower()) {
    if (c.isLetterOrNumber() || c == u'-' || c == u'_') nombre += c;
    if (c == u' ') nombre += u'-';
  }
  return nombre;
}

}  // namespace

VisorAyuda::VisorAyuda(QWidget* padre) : QTextBrowser(padre) {
  setOpenLinks(false);
  setOpenExternalLinks(false);
  // El azul de los enlaces de algunos escritorios no se lee sobre su propio fondo oscuro.
  QPalette colores = palette();
  if (colores.base().color().lightness() < 128 && colores.link().color().lightness() < 150) {
    colores.setColor(QPalette::Link, QColor(0x7A, 0xB8, 0xF5));
    setPalette(colores);
  }
  connect(this, &QTextBrowser::anchorClicked, this, &VisorAyuda::Seguir);
}

void VisorAyuda::Cargar(const QString& ruta) {
  ruta_ = QFileInfo(ruta).absoluteFilePath();
  const TextoAyuda ayuda = LeerAyuda(ruta_);
  clear();
  document()->setMetaInformation(QTextDocument::DocumentTitle, {});
  if (!ayuda.fallo.isEmpty()) {
    setPlainText(ayuda.fallo);
  } else if (ayuda.formato == TextoAyuda::Formato::Html) {
    setHtml(ayuda.texto);
  } else if (ayuda.formato == TextoAyuda::Formato::Markdown) {
    setMarkdown(ayuda.texto);
  } else {
    setPlainText(ayuda.texto);
  }
  moveCursor(QTextCursor::Start);
  emit cargado();
}

QString VisorAyuda::Titulo() const {
  const QString titulo = documentTitle().simplified();
  return titulo.isEmpty() ? QFileInfo(ruta_).completeBaseName() : titulo;
}

bool VisorAyuda::Buscar(const QString& texto, bool haciaAtras) {
  if (texto.isEmpty()) return true;
  const QTextDocument::FindFlags sentido =
      haciaAtras ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (find(texto, sentido)) return true;
  const QTextCursor donde = textCursor();
  moveCursor(haciaAtras ? QTextCursor::End : QTextCursor::Start);
  if (find(texto, sentido)) return true;
  setTextCursor(donde);
  return false;
}

/// La ruta de lo enlazado si está en la carpeta del tema o por debajo; "" si no.
QString VisorAyuda::RutaPermitida(const QUrl& enlace) const {
  // Un servidor (file://servidor/…) no se llega a consultar.
  if (!enlace.host().isEmpty()) return {};
  QString ruta;
  if (enlace.isRelative()) {
    ruta = QFileInfo(ruta_).path() + u'/' + enlace.path();
  } else if (enlace.isLocalFile()) {
    ruta = enlace.toLocalFile();
  } else if (enlace.scheme() == u"qrc") {
    ruta = u':' + enlace.path();
  }
  const QString carpeta = QFileInfo(ruta_).path();
  if (!QDir::cleanPath(ruta).startsWith(QDir::cleanPath(carpeta) + u'/')) return {};
  if (ruta.startsWith(u':')) return QDir::cleanPath(ruta);
  const QString real = QFileInfo(ruta).canonicalFilePath();
  return real.startsWith(QFileInfo(carpeta).canonicalFilePath() + u'/') ? real : QString();
}

QVariant VisorAyuda::loadResource(int tipo, const QUrl& nombre) {
  const QString ruta = RutaPermitida(nombre);
  if (ruta.isEmpty()) return {};
  try {
    const QByteArray bytes = LeerBytes(ruta, kMaximoImagen);
    if (tipo != QTextDocument::ImageResource) return bytes;
    QImage imagen = QImage::fromData(bytes);
    const int ancho = qRound(std::max(200, viewport()->width() - 24) * devicePixelRatioF());
    if (imagen.width() > ancho) {
      imagen = imagen.scaledToWidth(ancho, Qt::SmoothTransformation);
      imagen.setDevicePixelRatio(devicePixelRatioF());
    }
    return imagen;
  } catch (const remesa::ErrorEjecucion&) {
    return {};
  }
}

void VisorAyuda::Seguir(const QUrl& enlace) {
  if (enlace.isRelative() && enlace.path().isEmpty()) return IrASeccion(enlace.fragment(QUrl::FullyDecoded));
  const QString ruta = RutaPermitida(enlace);
  if (ruta.isEmpty()) return;
  Cargar(ruta);
  if (enlace.hasFragment()) IrASeccion(enlace.fragment(QUrl::FullyDecoded));
}

void VisorAyuda::IrASeccion(const QString& nombre) {
  for (QTextBlock bloque = document()->begin(); bloque.isValid(); bloque = bloque.next()) {
    if (bloque.blockFormat().headingLevel() == 0 || NombreSeccion(bloque.text()) != nombre) continue;
    moveCursor(QTextCursor::End);  // para que el título quede arriba
    setTextCursor(QTextCursor(bloque));
    return;
  }
  scrollToAnchor(nombre);
}

}  // namespace comunes
