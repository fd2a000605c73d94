#include "comunes/campos/EntradaFiltrada.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>
#include <algorithm>
#include <limits>

#include "comunes/campos/Blancos.h"
#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Filtro.h"
#include "comunes/campos/Formato.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/plataforma/Formatos.h"

namespace comunes {

namespace {

/// true si la línea escribiría el texto de esta tecla.
bool escribe(const QKeyEvent* evento) {
  if (evento->text().isEmpty()) return false;
  const QChar c = evento->text()[0];
  if (c.category() == QChar::Other_Format) return true;
  const auto sinMayus = evento->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (sinMayus == Qt::ControlModifier) return false;
  return c.isPrint() || c.category() == QChar::Other_PrivateUse || c.isSurrogate();
}

EstadoCaja estadoDe(const QLineEdit* linea) {
  const bool seleccionado = linea->hasSelectedText();
  return {linea->text(), seleccionado ? linea->selectionStart() : linea->cursorPosition(),
          linea->selectedText().size()};
}

}  // namespace

EntradaFiltrada::EntradaFiltrada(QLineEdit* linea)
    : QValidator(linea), linea_(linea), ultimo_(linea->text()) {
  // El límite de fábrica, 32767, cortaría sin decirlo un valor que ya estaba; cuánto se teclea lo dice el
  // descriptor.
  linea->setMaxLength(std::numeric_limits<int>::max());
  linea->setValidator(this);
}

bool EntradaFiltrada::Atender(QEvent* evento) {
  // Solo se le pregunta por lo que hace el operador: mientras se destruye le llegan aún otros sucesos.
  const auto escribible = [this] { return !linea_->isReadOnly(); };
  switch (evento->type()) {
    case QEvent::KeyPress:
      return escribible() && tecla(static_cast<QKeyEvent*>(evento));
    case QEvent::InputMethod:
      return escribible() && metodoDeEntrada(static_cast<QInputMethodEvent*>(evento));
    case QEvent::Drop:
      return escribible() && soltar(static_cast<QDropEvent*>(evento));
    case QEvent::MouseButtonRelease:
      return escribible() && botonCentral(static_cast<QMouseEvent*>(evento));
    case QEvent::ContextMenu:
      if (!escribible()) return false;
      menu(static_cast<QContextMenuEvent*>(evento)->globalPos());
      return true;
    default:
      return false;
  }
}

bool EntradaFiltrada::tecla(QKeyEvent* evento) {
  const QClipboard* portapapeles = QGuiApplication::clipboard();
  if (evento->matches(QKeySequence::Paste)) {
    const bool seleccion = portapapeles->supportsSelection() && evento->key() == Qt::Key_Insert &&
                           evento->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    pegar(portapapeles->text(seleccion ? QClipboard::Selection : QClipboard::Clipboard));
    return true;
  }
  if (evento->matches(QKeySequence::Undo)) {
    deshacer();
    return true;
  }
  if (evento->matches(QKeySequence::Redo)) {
    rehacer();
    return true;
  }
  if (!escribe(evento)) return false;
  if (evento->modifiers() & Qt::AltModifier && !(evento->modifiers() & Qt::ControlModifier)) {
    // Una letra con Alt es una orden: si nadie la tiene, no se escribe.
    evento->ignore();
    return true;
  }
  for (const char32_t c : evento->text().toUcs4())
    escribirTecla(c);
  return true;
}

void EntradaFiltrada::escribirTecla(char32_t tecla) {
  const char32_t pulsada = tecla;
  const EstadoCaja antes = estadoDe(linea_);
  TagKeyPress(linea_, tecla);
  if (tecla != 0) return escribir(QString::fromUcs4(&tecla, 1));
  rechazar(Filtro(Descriptor(linea_)).Motivo(antes, pulsada));
}

void EntradaFiltrada::rechazar(const QString& motivo) const {
  CajaDescrita* descrita = CajaDescrita::De(linea_);
  if (descrita && !motivo.isEmpty()) emit descrita->rechazada(motivo);
}

bool EntradaFiltrada::metodoDeEntrada(QInputMethodEvent* evento) {
  if (evento->commitString().isEmpty()) return false;
  // Lo que compone una tecla muerta ("´" y "e") es una tecla más.
  const auto puntos = evento->commitString().toUcs4();
  if (puntos.size() == 1 && evento->replacementLength() == 0) {
    QInputMethodEvent compuesto(evento->preeditString(), evento->attributes());
    linea_->event(&compuesto);
    escribirTecla(puntos.first());
    evento->accept();
    return true;
  }
  EstadoCaja estado = estadoDe(linea_);
  if (evento->replacementLength() > 0) {
    estado.texto.remove(estado.cursor, estado.seleccion);
    estado.cursor = std::clamp<qsizetype>(estado.cursor + evento->replacementStart(), 0, estado.texto.size());
    estado.seleccion = std::min<qsizetype>(evento->replacementLength(), estado.texto.size() - estado.cursor);
  }
  QInputMethodEvent filtrado(evento->preeditString(), evento->attributes());
  const Filtro filtro(Descriptor(linea_));
  if (const auto escrito = filtro.Texto(estado, evento->commitString()))
    filtrado.setCommitString(*escrito, evento->replacementStart(), evento->replacementLength());
  else
    rechazar(filtro.MotivoLongitud());
  const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
  linea_->event(&filtrado);
  evento->accept();
  return true;
}

bool EntradaFiltrada::soltar(QDropEvent* evento) {
  const QString texto = evento->mimeData()->text();
  if (texto.isNull()) return false;
  CajaDescrita* descrita = CajaDescrita::De(linea_);
  // En una caja a la que se llega así, lo soltado sustituye al texto, que al entrar queda seleccionado.
  if (descrita && !descrita->dentro()) {
    linea_->setFocus(Qt::OtherFocusReason);
    descrita->Entrar();
  } else {
    linea_->setCursorPosition(linea_->cursorPositionAt(evento->position().toPoint()));
  }
  pegar(texto);
  evento->acceptProposedAction();
  QDragLeaveEvent fin;  // apaga el cursor que la línea mueve mientras se arrastra
  linea_->event(&fin);
  return true;
}

bool EntradaFiltrada::botonCentral(QMouseEvent* evento) {
  const QClipboard* portapapeles = QGuiApplication::clipboard();
  if (evento->button() != Qt::MiddleButton || !portapapeles->supportsSelection()) return false;
  linea_->deselect();
  pegar(portapapeles->text(QClipboard::Selection));
  return true;
}

// El menú de la línea pega sin filtrar: este es el mismo, con sus textos, sobre las órdenes de aquí.
void EntradaFiltrada::menu(const QPoint& lugar) {
  auto* menu = new QMenu(linea_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto anadir = [menu, this](const QString& texto, QKeySequence::StandardKey tecla, bool activa,
                                   auto hacer) {
    const QString atajo = QKeySequence(tecla).toString(QKeySequence::NativeText);
    QAction* accion = menu->addAction(atajo.isEmpty() ? texto : texto + u'\t' + atajo);
    accion->setEnabled(activa);
    connect(accion, &QAction::triggered, this, hacer);
  };
  const bool visible = linea_->echoMode() == QLineEdit::Normal;
  const bool seleccion = linea_->hasSelectedText();
  anadir(QLineEdit::tr("&Undo"), QKeySequence::Undo, linea_->isUndoAvailable(), [this] { deshacer(); });
  anadir(QLineEdit::tr("&Redo"), QKeySequence::Redo, linea_->isRedoAvailable(), [this] { rehacer(); });
  menu->addSeparator();
  anadir(QLineEdit::tr("Cu&t"), QKeySequence::Cut, seleccion && visible, [this] { linea_->cut(); });
  anadir(QLineEdit::tr("&Copy"), QKeySequence::Copy, seleccion && visible, [this] { linea_->copy(); });
  anadir(QLineEdit::tr("&Paste"), QKeySequence::Paste, !QGuiApplication::clipboard()->text().isEmpty(),
         [this] { pegar(QGuiApplication::clipboard()->text()); });
  anadir(QLineEdit::tr("Delete"), QKeySequence::Delete, seleccion, [this] { linea_->del(); });
  menu->addSeparator();
  anadir(QLineEdit::tr("Select All"), QKeySequence::SelectAll, !linea_->text().isEmpty(),
         [this] { linea_->selectAll(); });
  menu->popup(lugar);
}

void EntradaFiltrada::pegar(const QString& texto) {
  const Filtro filtro(Descriptor(linea_));
  const EstadoCaja estado = estadoDe(linea_);
  const auto filtrado = filtro.Texto(estado, texto);
  if (!filtrado) return rechazar(filtro.MotivoLongitud());
  if (!filtrado->isEmpty()) return escribir(*filtrado);
  if (!texto.isEmpty()) rechazar(filtro.Motivo(estado, texto.toUcs4().first()));
}

void EntradaFiltrada::escribir(const QString& filtrado) {
  const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
  linea_->insert(filtrado);
}

void EntradaFiltrada::deshacer() {
  const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
  linea_->undo();
}

void EntradaFiltrada::rehacer() {
  const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
  linea_->redo();
}

QValidator::State EntradaFiltrada::validate(QString& texto, int& cursor) const {
  // Preguntar por un texto que no es el de la línea no lo pone.
  if (texto != linea_->text()) return Acceptable;
  if (Tecleo().sinFiltrar) {
    ultimo_ = texto;
    return Acceptable;
  }
  if (texto == ultimo_) return Acceptable;
  const CajaDescrita* descrita = CajaDescrita::De(linea_);
  if (!linea_->isEnabled())
    texto = ultimo_;
  else if (descrita && descrita->dentro())
    filtrarLoNuevo(texto, cursor);
  else
    filtrarEntero(texto);
  ultimo_ = texto;
  return Acceptable;
}

void EntradaFiltrada::filtrarEntero(QString& texto) const {
  const Filtro filtro(Descriptor(linea_));
  const auto filtrado = filtro.Texto({}, FormaEdicion(linea_));
  if (!filtrado) rechazar(filtro.MotivoLongitud());
  // Lo que había está como se muestra, y ahora se le dará esa forma otra vez.
  texto = filtrado ? *filtrado : SinBlancos(UnformatValue(ultimo_, Descriptor(linea_)));
}

void EntradaFiltrada::filtrarLoNuevo(QString& texto, int& cursor) const {
  const qsizetype comun = std::min(ultimo_.size(), texto.size());
  qsizetype inicio = 0;
  while (inicio < comun && ultimo_[inicio] == texto[inicio])
    ++inicio;
  qsizetype fin = 0;
  while (fin < comun - inicio && ultimo_[ultimo_.size() - 1 - fin] == texto[texto.size() - 1 - fin])
    ++fin;
  const qsizetype entra = texto.size() - inicio - fin;
  if (entra == 0) return;
  const Filtro filtro(Descriptor(linea_));
  // Un número con grupos se lee entero: en su parte nueva, el separador sería el signo decimal. Un solo
  // carácter es una tecla, salvo que sea ese separador.
  if ((entra > 1 || texto.mid(inicio, 1) == SignoGrupo()) && filtro.EsNumeroConGrupos(texto)) {
    const auto entero = filtro.Texto({}, texto);
    if (!entero) rechazar(filtro.MotivoLongitud());
    texto = entero.value_or(ultimo_);
    cursor = static_cast<int>(texto.size());
    return;
  }
  const EstadoCaja estado{texto.left(inicio) + texto.right(fin), inicio, 0};
  const auto filtrado = filtro.Texto(estado, texto.mid(inicio, entra));
  if (!filtrado) {
    rechazar(filtro.MotivoLongitud());
    texto = ultimo_;
    cursor = static_cast<int>(std::min<qsizetype>(cursor, texto.size()));
    return;
  }
  if (*filtrado == texto.mid(inicio, entra)) return;
  texto = texto.left(inicio) + *filtrado + texto.right(fin);
  cursor = static_cast<int>(inicio + filtrado->size());
}

}  // namespace comunes
