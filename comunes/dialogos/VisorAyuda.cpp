#include "comunes/dialogos/VisorAyuda.h"

#include <QDir>
#include <QFileInfo>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>

#include "comunes/dialogos/TextoAyuda.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "ficheros/ErrorEjecucion.h"

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

/// Markdown no dice cómo se ve: aire entre los títulos y dentro de las tablas.
void Vestir(QTextDocument& documento) {
  documento.setDocumentMargin(12);
  for (QTextBlock bloque = documento.begin(); bloque.isValid(); bloque = bloque.next()) {
    QTextBlockFormat formato = bloque.blockFormat();
    if (formato.nonBreakableLines()) {
      // Lo que se teclea en la consola se parte, mejor que obligar a desplazar la página entera.
      formato.setNonBreakableLines(false);
      QTextCursor(bloque).setBlockFormat(formato);
    }
    if (formato.headingLevel() == 0) continue;
    formato.setTopMargin(formato.headingLevel() == 1 ? 0 : 18);
    formato.setBottomMargin(6);
    QTextCursor(bloque).setBlockFormat(formato);
  }
  for (QTextFrame* marco : documento.rootFrame()->childFrames()) {
    auto* tabla = qobject_cast<QTextTable*>(marco);
    if (tabla == nullptr) continue;
    QTextTableFormat formato = tabla->format();
    formato.setBorderCollapse(true);
    formato.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    formato.setBorderBrush(QColor(0x99, 0x99, 0x99));
    formato.setCellPadding(5);
    formato.setTopMargin(4);
    formato.setBottomMargin(12);
    tabla->setFormat(formato);
  }
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
  ajuste_.setSingleShot(true);
  ajuste_.setInterval(50);
  connect(&ajuste_, &QTimer::timeout, this, &VisorAyuda::AjustarImagenes);
  connect(this, &QTextBrowser::anchorClicked, this, &VisorAyuda::Seguir);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &VisorAyuda::movido);
}

void VisorAyuda::Cargar(const QString& ruta) {
  anteriores_.clear();
  Abrir(ruta);
}

void VisorAyuda::Abrir(const QString& ruta) {
  imagenes_.clear();
  anchura_ = viewport()->width();
  ruta_ = QFileInfo(ruta).absoluteFilePath();
  const TextoAyuda ayuda = LeerAyuda(ruta_);
  clear();
  document()->setMetaInformation(QTextDocument::DocumentTitle, {});
  if (!ayuda.fallo.isEmpty()) {
    setPlainText(ayuda.fallo);
  } else if (ayuda.formato == TextoAyuda::Formato::Html) {
    setHtml(ayuda.texto);
  } else if (ayuda.formato == TextoAyuda::Formato::Markdown) {
    // Se coloca una vez, al final: si no, otra entera por cada párrafo y cada tabla, segundos en un manual.
    document()->setLayoutEnabled(false);
    setMarkdown(ayuda.texto);
    Vestir(*document());
    document()->setLayoutEnabled(true);
    document()->markContentsDirty(0, document()->characterCount());
  } else {
    setPlainText(ayuda.texto);
  }
  moveCursor(QTextCursor::Start);
  emit cargado();
}

QString VisorAyuda::Titulo() const {
  QString titulo = documentTitle().simplified();
  const QTextBlock primero = document()->begin();
  if (titulo.isEmpty() && primero.blockFormat().headingLevel() == 1) titulo = primero.text();
  return titulo.isEmpty() ? QFileInfo(ruta_).completeBaseName() : titulo;
}

QList<VisorAyuda::Seccion> VisorAyuda::Secciones() const {
  QList<Seccion> secciones;
  for (QTextBlock bloque = document()->begin(); bloque.isValid(); bloque = bloque.next())
    if (const int nivel = bloque.blockFormat().headingLevel(); nivel > 0)
      secciones.append({nivel, bloque.text(), bloque.position()});
  return secciones;
}

int VisorAyuda::Posicion() const {
  return cursorForPosition(QPoint(2, 12)).position();
}

void VisorAyuda::IrA(int posicion) {
  Recordar();
  LlevarArriba(posicion);
}

void VisorAyuda::LlevarArriba(int posicion) {
  QTextCursor cursor(document());
  cursor.setPosition(posicion);
  moveCursor(QTextCursor::End);
  setTextCursor(cursor);
  emit movido();
}

void VisorAyuda::Recordar() {
  anteriores_.append({ruta_, verticalScrollBar()->value()});
}

void VisorAyuda::Atras() {
  if (anteriores_.isEmpty()) return;
  const Sitio sitio = anteriores_.takeLast();
  if (sitio.ruta != ruta_) Abrir(sitio.ruta);
  verticalScrollBar()->setValue(sitio.desplazamiento);
  emit movido();
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
    const QImage imagen = QImage::fromData(bytes);
    imagenes_.insert(nombre, imagen);
    return Ajustada(imagen);
  } catch (const ficheros::ErrorEjecucion&) {
    return {};
  }
}

/// Reducida a la anchura del visor, si no cabe. Donde cada punto de la página son varios de la pantalla, los
/// de la imagen que quepan en ellos no se pierden.
QImage VisorAyuda::Ajustada(const QImage& imagen) const {
  const int pagina = std::max(200, viewport()->width() - 24);
  if (imagen.width() <= pagina) return imagen;
  const int ancho = qRound(pagina * devicePixelRatioF());
  QImage reducida = imagen.width() > ancho ? imagen.scaledToWidth(ancho, Qt::SmoothTransformation) : imagen;
  reducida.setDevicePixelRatio(double{1} * reducida.width() / pagina);
  return reducida;
}

void VisorAyuda::AjustarImagenes() {
  if (imagenes_.isEmpty() || viewport()->width() == anchura_) return;
  anchura_ = viewport()->width();
  const int arriba = Posicion();
  for (auto i = imagenes_.cbegin(); i != imagenes_.cend(); ++i)
    document()->addResource(QTextDocument::ImageResource, i.key(), Ajustada(i.value()));
  document()->markContentsDirty(0, document()->characterCount());
  LlevarArriba(arriba);
}

void VisorAyuda::resizeEvent(QResizeEvent* evento) {
  QTextBrowser::resizeEvent(evento);
  if (evento->size().width() != evento->oldSize().width()) ajuste_.start();
}

void VisorAyuda::Seguir(const QUrl& enlace) {
  const bool aqui = enlace.isRelative() && enlace.path().isEmpty();
  const QString ruta = aqui ? ruta_ : RutaPermitida(enlace);
  if (ruta.isEmpty()) return;
  Recordar();
  if (!aqui) Abrir(ruta);
  if (enlace.hasFragment()) IrASeccion(enlace.fragment(QUrl::FullyDecoded));
}

bool VisorAyuda::IrASeccion(const QString& nombre) {
  for (const Seccion& seccion : Secciones()) {
    if (NombreSeccion(seccion.titulo) != nombre) continue;
    LlevarArriba(seccion.posicion);
    return true;
  }
  scrollToAnchor(nombre);
  return false;
}

}  // namespace comunes
