#include "comunes/dialogos/BarraBusqueda.h"

#include <QShortcut>

#include "ui_BarraBusqueda.h"

namespace comunes {

using namespace Qt::StringLiterals;

BarraBusqueda::BarraBusqueda(QWidget* padre) : QWidget(padre), ui_(std::make_unique<Ui::BarraBusqueda>()) {
  ui_->setupUi(this);
  // El alto es de la caja en que se busca.
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  const auto siguiente = [this] { Buscar({}); };
  const auto anterior = [this] { Buscar(QTextDocument::FindBackward); };
  // De la ventana entera: oculta, la barra no recibiría sus teclas.
  const auto tecla = [this](const QKeySequence& cual, auto accion) {
    auto* atajo = new QShortcut(cual, parentWidget());
    connect(atajo, &QShortcut::activated, this, accion);
    return atajo;
  };
  tecla(QKeySequence::Find, [this] { Abrir(); });
  tecla(QKeySequence(Qt::Key_F3), siguiente);
  tecla(QKeySequence(Qt::SHIFT | Qt::Key_F3), anterior);
  escape_ = tecla(QKeySequence(Qt::Key_Escape), [this] {
    hide();
    caja_->setFocus();
  });
  hide();
  escape_->setEnabled(false);
  connect(ui_->Siguiente, &QPushButton::clicked, this, siguiente);
  connect(ui_->Anterior, &QPushButton::clicked, this, anterior);
  connect(ui_->Buscado, &QLineEdit::returnPressed, this, siguiente);
  connect(ui_->Buscado, &QLineEdit::textEdited, ui_->Hallazgo, &QLabel::clear);
}

BarraBusqueda::~BarraBusqueda() = default;

void BarraBusqueda::Abrir() {
  show();
  ui_->Buscado->setFocus();
  ui_->Buscado->selectAll();
}

// Cerrada la barra, Escape es de la ventana.
void BarraBusqueda::showEvent(QShowEvent*) {
  escape_->setEnabled(true);
}

void BarraBusqueda::hideEvent(QHideEvent*) {
  escape_->setEnabled(false);
}

void BarraBusqueda::Buscar(QTextDocument::FindFlags sentido) {
  if (ui_->Buscado->text().isEmpty()) return Abrir();
  const bool hallado = buscar_(ui_->Buscado->text(), sentido);
  ui_->Hallazgo->setText(hallado ? QString() : u"No aparece"_s);
  // Buscando con F3 y la barra cerrada, no se vería.
  if (!hallado) show();
}

}  // namespace comunes
