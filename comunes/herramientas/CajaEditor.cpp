#include "comunes/herramientas/CajaEditor.h"

#include <QContextMenuEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace herramientas {

QMimeData* CajaEditor::createMimeDataFromSelection() const {
  auto* datos = new QMimeData;
  datos->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
  return datos;
}

/// El cambio de línea dentro de un párrafo, de otros programas, es aquí un final de línea.
void CajaEditor::insertFromMimeData(const QMimeData* datos) {
  if (!datos->hasText()) return;
  QTextCursor cursor = textCursor();
  // Aparte de lo tecleado, para que se deshaga por separado.
  cursor.beginEditBlock();
  cursor.insertText(datos->text().replace(QChar::LineSeparator, u'\n'));
  cursor.endEditBlock();
  ensureCursorVisible();
}

/// Mayús+Intro es Intro: el cambio de línea dentro de un párrafo no existe en un fichero.
void CajaEditor::keyPressEvent(QKeyEvent* suceso) {
  if (!suceso->matches(QKeySequence::InsertLineSeparator)) return QPlainTextEdit::keyPressEvent(suceso);
  textCursor().insertBlock();
  ensureCursorVisible();
}

bool CajaEditor::EsGesto(Qt::KeyboardModifiers teclas) const {
  return teclas == Qt::ControlModifier && textCursor().hasSelection();
}

void CajaEditor::mousePressEvent(QMouseEvent* suceso) {
  if (suceso->button() != Qt::RightButton || !EsGesto(suceso->modifiers()))
    return QPlainTextEdit::mousePressEvent(suceso);
  suceso->accept();
  emit gestoEncriptar();
}

void CajaEditor::contextMenuEvent(QContextMenuEvent* suceso) {
  // El menú de la misma pulsación taparía la pregunta.
  if (suceso->reason() == QContextMenuEvent::Mouse && EsGesto(suceso->modifiers())) return suceso->accept();
  QPlainTextEdit::contextMenuEvent(suceso);
}

}  // namespace herramientas
