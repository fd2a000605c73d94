#include "comunes/herramientas/frmEditor.h"

#include <QDir>
#include <QFileInfo>
#include <QShortcut>
#include <QTextBlock>

#include "comunes/dialogos/MyBox.h"
#include "comunes/dialogos/SelectorColor.h"
#include "comunes/herramientas/CargarGrabarTexto.h"
#include "comunes/herramientas/Encriptar.h"
#include "comunes/herramientas/SalirSinGrabar.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmEditor.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconoCifrado = 17;
const QString kModificado = u"MODIFICADO"_s;
const QString kClave = u"VELMAR"_s;
/// Más no lo lee nadie, y maquetarlo tarda.
constexpr qsizetype kMaximoPregunta = 20000;

/// Color inicial que pide un texto que empieza por "&H"; los demás no piden ninguno.
QColor colorDe(const QString& texto) {
  if (!texto.startsWith(u"&H"_s)) return Qt::black;
  uint numero = 0;
  for (const QChar c : QStringView(texto).mid(2, 8)) {
    bool esCifra = false;
    const uint cifra = QString(c).toUInt(&esCifra, 16);
    if (!esCifra) break;
    numero = numero << 4 | cifra;
  }
  return comunes::ColorDeNumero(static_cast<int>(numero & 0xFFFFFF));
}

}  // namespace

frmEditor::frmEditor(QWidget* padre) : QDialog(padre, Qt::Window), ui_(std::make_unique<Ui::frmEditor>()) {
  ui_->setupUi(this);
  ui_->FondoExtra->hide();
  ui_->Busqueda->Conectar(ui_->txtEditor);
  comunes::FuentesVentana(*this);
  comunes::DisponerVentana(*this);
  connect(ui_->txtEditor, &QPlainTextEdit::textChanged, this, [this] { Marcar(true); });
  connect(ui_->txtEditor, &QPlainTextEdit::cursorPositionChanged, this, &frmEditor::MostrarPosicion);
  connect(ui_->txtEditor, &QPlainTextEdit::selectionChanged, this, &frmEditor::MostrarPosicion);
  // Fuera del suceso del ratón: una caja modal lo dejaría a medias.
  connect(ui_->txtEditor, &CajaEditor::gestoEncriptar, this, &frmEditor::EncriptarSeleccion,
          Qt::QueuedConnection);
  connect(ui_->cmdGrabar, &QPushButton::clicked, this, [this] {
    if (Grabar()) close();
  });
  connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, &frmEditor::Grabar);
  connect(ui_->cmdSalir, &QPushButton::clicked, this, &QWidget::close);
  connect(ui_->cmdBuscar, &QPushButton::clicked, ui_->Busqueda, &comunes::BarraBusqueda::Abrir);
  connect(ui_->cmdMas, &QPushButton::clicked, this, &frmEditor::AlternarPanel);
  connect(ui_->cmdColores, &QPushButton::clicked, this, &frmEditor::InsertarColor);
  connect(ui_->QueOpc, &QListWidget::itemClicked, this, &frmEditor::Insertar);
  for (const auto tecla : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(tecla, ui_->QueOpc, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, [this] { Insertar(ui_->QueOpc->currentItem()); });
  MostrarPosicion();
}

frmEditor::~frmEditor() = default;

bool frmEditor::Cargar(const QString& ruta, const QStringList& valores) {
  QString elegida = ruta;
  if (!CargarGrabarTexto(u"CARGAR"_s, elegida, *ui_->txtEditor)) return false;
  ruta_ = elegida;
  ui_->Valores->clear();
  ui_->Valores->addItems(valores);
  ui_->cmdMas->setToolTip(valores.isEmpty() ? u"Este fichero no tiene líneas preparadas"_s
                                            : u"Enseña u oculta las líneas preparadas"_s);
  ui_->Codificacion->setText(CodificacionDe(*ui_->txtEditor).Nombre());
  Marcar(false);
  return true;
}

/// false si no se grabó porque se perdería algo o no se eligió dónde.
bool frmEditor::Grabar() {
  if (const qsizetype perdido = PrimeroSinGrabar(*ui_->txtEditor); perdido >= 0) {
    AvisarPerdida(perdido);
    return false;
  }
  if (!CargarGrabarTexto(u"REGRABAR"_s, ruta_, *ui_->txtEditor)) return false;
  Marcar(false);
  return true;
}

/// Selecciona el carácter que está ahí y dice cuál es.
void frmEditor::AvisarPerdida(qsizetype posicion) {
  QTextCursor cursor = ui_->txtEditor->textCursor();
  cursor.setPosition(static_cast<int>(posicion));
  cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
  const int columna = cursor.anchor() - cursor.block().position() + 1;
  ui_->txtEditor->setTextCursor(cursor);
  const QString caracter = cursor.selectedText();
  const QString codigo = u"%1"_s.arg(caracter.toUcs4().value(0), 4, 16, QChar(u'0')).toUpper();
  comunes::Avisar(
      u"El carácter «%1» (U+%2), en la línea %3, columna %4, no existe en Windows-1252 y se "
      u"perdería.;;Cámbielo antes de seguir."_s.arg(caracter, codigo)
          .arg(cursor.blockNumber() + 1)
          .arg(columna));
  ui_->txtEditor->setFocus();
}

void frmEditor::reject() {
  if (!ui_->txtEditor->property("Tag").toString().isEmpty() &&
      !SalirSinGrabar(*this, ruta_, u"Datos han sido modificados. ¿ Desea salir sin grabar ?"_s,
                      comunes::kIconoPregunta))
    return;
  QDialog::reject();
}

void frmEditor::Marcar(bool modificado) {
  ui_->txtEditor->setProperty("Tag", modificado ? kModificado : QString());
  ui_->Modificado->setText(modificado ? u"Modificado"_s : QString());
  // En el título, "[*]" es el sitio del asterisco de lo modificado.
  setWindowTitle(QFileInfo(ruta_).fileName().replace(u"[*]"_s, u"[*][*]"_s) +
                 u"[*] - El MicroEditor de QMX"_s);
  setWindowModified(modificado);
}

void frmEditor::AlternarPanel() {
  const bool mostrar = ui_->FondoExtra->isHidden();
  if (ui_->QueOpc->count() == 0)
    for (int i = 0; i < ui_->Valores->count(); ++i)
      ui_->QueOpc->addItem(ui_->Valores->item(i)->text());
  ui_->FondoExtra->setVisible(mostrar);
  ui_->cmdMas->setText(mostrar ? u"<<"_s : u">>"_s);
}

void frmEditor::Insertar(const QListWidgetItem* linea) {
  if (linea == nullptr) return;
  const QString texto = linea->text();
  QTextCursor cursor = ui_->txtEditor->textCursor();
  // Lo cargado no trae el final de su última línea: ahí, la insertada se juntaría con ella.
  const bool trasLaUltima = cursor.atEnd() && !cursor.hasSelection() && !cursor.atBlockStart();
  cursor.insertText((trasLaUltima ? u"\n"_s : QString()) + texto +
                    (texto.endsWith(u'=') ? QString() : u"\n"_s));
  ui_->txtEditor->ensureCursorVisible();
  ui_->txtEditor->setFocus();
}

void frmEditor::InsertarColor() {
  QTextCursor cursor = ui_->txtEditor->textCursor();
  const QColor color = comunes::ElegirColor(colorDe(cursor.selectedText()), this);
  if (color.isValid())
    cursor.insertText(u"&H%1&"_s.arg(comunes::NumeroDeColor(color), 8, 16, QChar(u'0')).toUpper());
  ui_->txtEditor->setFocus();
}

void frmEditor::EncriptarSeleccion() {
  QTextCursor cursor = ui_->txtEditor->textCursor();
  QString texto = cursor.selectedText().replace(QChar::ParagraphSeparator, u'\n');
  const qsizetype perdido = comunes::PrimeroFueraDeWindows1252(texto);
  if (perdido >= 0) return AvisarPerdida(cursor.selectionStart() + perdido);
  texto.replace(u'\n', u"\r\n"_s);
  const QString visible = texto.size() > kMaximoPregunta ? texto.left(kMaximoPregunta) + u"…"_s : texto;
  if (comunes::Confirmar(u"¿ Desea encriptar el texto "_s + visible + u" ?"_s, 1, nullptr, kIconoCifrado))
    cursor.insertText(Encriptar(texto, kClave));
}

void frmEditor::MostrarPosicion() {
  const QTextCursor cursor = ui_->txtEditor->textCursor();
  ui_->Posicion->setText(
      u"Línea %1, columna %2"_s.arg(cursor.blockNumber() + 1).arg(cursor.positionInBlock() + 1));
}

}  // namespace herramientas
