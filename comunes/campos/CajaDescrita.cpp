#include "comunes/campos/CajaDescrita.h"

#include <QApplication>
#include <QDialog>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QList>
#include <QMenuBar>
#include <QMouseEvent>
#include <utility>

#include "comunes/campos/EntradaFiltrada.h"
#include "comunes/campos/Tecleo.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// Las cajas en las que se está: una por ventana a lo más.
QList<CajaDescrita*>& abiertas() {
  static QList<CajaDescrita*> lista;
  return lista;
}

void salirEn(const QWidget* ventana, const CajaDescrita* menos) {
  const auto copia = abiertas();
  for (CajaDescrita* c : copia)
    if (abiertas().contains(c) && c != menos && c->caja()->window() == ventana) c->Salir();
}

bool mueveElFoco(Qt::FocusReason motivo) {
  return motivo != Qt::ActiveWindowFocusReason && motivo != Qt::PopupFocusReason &&
         motivo != Qt::MenuBarFocusReason;
}

bool esModificador(int tecla) {
  return tecla == Qt::Key_Shift || tecla == Qt::Key_Control || tecla == Qt::Key_Alt ||
         tecla == Qt::Key_AltGr || tecla == Qt::Key_Meta;
}

bool esIntro(const QKeyEvent* evento) {
  return (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) &&
         !(evento->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
}

}  // namespace

CajaDescrita::CajaDescrita(QWidget* caja) : QObject(caja), caja_(caja) {
  if (auto* linea = qobject_cast<QLineEdit*>(caja)) {
    entrada_ = new EntradaFiltrada(linea);
    connect(linea, &QLineEdit::textChanged, this, [this, linea] {
      if (!dentro_ && !Tecleo().sinFiltrar && linea->isEnabled()) cambiadaDesdeFuera(linea);
    });
  }
  caja->installEventFilter(this);
  // Una ventana inactiva cambia de control sin que el anterior se entere.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* ahora) {
    if (dentro_ && ahora && ahora != caja_ && ahora->window() == caja_->window() &&
        !qobject_cast<QMenuBar*>(ahora))
      Salir();
  });
}

CajaDescrita::~CajaDescrita() {
  abiertas().removeOne(this);
}

CajaDescrita* CajaDescrita::De(const QWidget* caja) {
  return caja ? caja->findChild<CajaDescrita*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void CajaDescrita::Entrar() {
  if (dentro_) return;
  salirEn(caja_->window(), this);
  dentro_ = true;
  abiertas().append(this);
  apagarDefecto();
  TagGotFocus(caja_);
  emit haEntrado();
}

void CajaDescrita::Salir() {
  if (!dentro_) return;
  emit vaASalir();
  cerrar();
  emit haSalido();
}

void CajaDescrita::cerrar() {
  dentro_ = false;
  abiertas().removeOne(this);
  encenderDefecto();
  TagLostFocus(caja_);
}

/// Dentro de una caja, Intro pasa al control siguiente: ningún botón debe parecer el que se pulsa con él.
void CajaDescrita::apagarDefecto() {
  auto* ventana = qobject_cast<QDialog*>(caja_->window());
  if (!ventana) return;
  for (auto* boton : ventana->findChildren<QPushButton*>()) {
    if (!boton->isDefault()) continue;
    defecto_ = boton;
    boton->setDefault(false);
  }
}

void CajaDescrita::encenderDefecto() {
  if (defecto_) defecto_->setDefault(true);
  defecto_ = nullptr;
}

/// El ratón que entra en la caja pone el cursor donde pulsó y quita la selección de la entrada.
void CajaDescrita::seleccionarTras(QEvent* evento) {
  static_cast<QObject*>(caja_)->event(evento);
  auto* linea = static_cast<QLineEdit*>(caja_);
  if (!linea->hasSelectedText()) linea->selectAll();
}

void CajaDescrita::cambiadaDesdeFuera(QLineEdit* linea) {
  emit vaASalir();
  DarFormato(linea);
  emit haSalido();
}

bool CajaDescrita::tecla(QKeyEvent* evento) {
  if (evento->spontaneous() && caja_->hasFocus()) {
    // Un Tab encolado va antes que lo que se teclee después, que es del control siguiente.
    const QPointer<QWidget> caja = caja_;
    QCoreApplication::sendPostedEvents(caja_, QEvent::KeyPress);
    if (!caja) return true;
    QWidget* foco = QApplication::focusWidget();
    if (foco && foco != caja_) {
      QKeyEvent copia(evento->type(), evento->key(), evento->modifiers(), evento->nativeScanCode(),
                      evento->nativeVirtualKey(), evento->nativeModifiers(), evento->text(),
                      evento->isAutoRepeat(), static_cast<quint16>(evento->count()));
      QCoreApplication::sendEvent(foco, &copia);
      return true;
    }
  }
  if (!dentro_ && caja_->hasFocus() && !esModificador(evento->key())) Entrar();
  if (esIntro(evento) || (!entrada_ && evento->text() == "+"_L1)) {
    char32_t c = esIntro(evento) ? U'\r' : U'+';
    TagKeyPress(caja_, c);
    return true;
  }
  return entrada_ && entrada_->Atender(evento);
}

bool CajaDescrita::eventFilter(QObject* objeto, QEvent* evento) {
  if (objeto != caja_) return false;
  switch (evento->type()) {
    case QEvent::FocusIn:
      conRaton_ = entrada_ && static_cast<QFocusEvent*>(evento)->reason() == Qt::MouseFocusReason;
      Entrar();
      return false;
    case QEvent::FocusOut:
      // La que ya no se ve puede estar destruyéndose, y lo que la rodea no estar ya: ni comprueba ni avisa.
      if (mueveElFoco(static_cast<QFocusEvent*>(evento)->reason()) && caja_->isVisible()) Salir();
      return false;
    case QEvent::Hide:
      // Con la ventana, o ella sola, la caja se cierra sin que nadie compruebe lo escrito.
      if (dentro_ && !evento->spontaneous()) cerrar();
      return false;
    case QEvent::KeyPress:
      return tecla(static_cast<QKeyEvent*>(evento));
    case QEvent::MouseButtonPress:
      conRaton_ = entrada_ && (conRaton_ || !dentro_) && caja_->hasFocus() &&
                  static_cast<QMouseEvent*>(evento)->button() == Qt::LeftButton;
      if (caja_->hasFocus()) Entrar();
      return false;
    case QEvent::MouseButtonRelease:
      if (!std::exchange(conRaton_, false)) return entrada_ && entrada_->Atender(evento);
      seleccionarTras(evento);
      return true;
    default:
      return entrada_ && entrada_->Atender(evento);
  }
}

CajaDescrita* Describir(QWidget* caja, const QString& descriptor) {
  if (!descriptor.isEmpty()) PonerDescriptor(caja, descriptor);
  CajaDescrita* descrita = CajaDescrita::De(caja);
  if (!descrita) descrita = new CajaDescrita(caja);
  if (caja->hasFocus()) descrita->Entrar();
  return descrita;
}

void DejarCampo(QWidget* ventana) {
  salirEn(ventana->window(), nullptr);
}

void EntrarCampo(QWidget* ventana) {
  if (CajaDescrita* descrita = CajaDescrita::De(ventana->window()->focusWidget())) descrita->Entrar();
}

}  // namespace comunes
