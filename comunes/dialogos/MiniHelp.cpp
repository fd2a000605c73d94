#include "comunes/dialogos/MiniHelp.h"

#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

#include "comunes/plataforma/Ventanas.h"
#include "ui_MiniHelp.h"

namespace comunes {

using namespace Qt::StringLiterals;

MiniHelp::MiniHelp(QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                         Qt::WindowMaximizeButtonHint),
      ui_(std::make_unique<Ui::MiniHelp>()) {
  ui_->setupUi(this);
  ui_->Busqueda->Conectar(ui_->Tema);
  FuentesVentana(*this);
  DisponerVentana(*this);
  const auto tecla = [this](const QKeySequence& cual, auto accion) {
    connect(new QShortcut(cual, this), &QShortcut::activated, this, accion);
  };
  tecla(QKeySequence(Qt::CTRL | Qt::Key_Plus), [this] { Ampliar(1); });
  tecla(QKeySequence(Qt::CTRL | Qt::Key_Equal), [this] { Ampliar(1); });
  tecla(QKeySequence(Qt::CTRL | Qt::Key_Minus), [this] { Ampliar(-1); });
  tecla(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { Ampliar(-ampliado_); });
  connect(ui_->cmdBuscar, &QPushButton::clicked, ui_->Busqueda, &BarraBusqueda::Abrir);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdAtras, &QPushButton::clicked, ui_->Tema, &VisorAyuda::Atras);
  tecla(QKeySequence(Qt::ALT | Qt::Key_Left), [this] { ui_->cmdAtras->click(); });
  connect(ui_->Tema, &VisorAyuda::cargado, this, &MiniHelp::LlenarIndice);
  connect(ui_->Tema, &VisorAyuda::movido, this, &MiniHelp::MarcarIndice);
  connect(ui_->Indice, &QTreeWidget::itemClicked, this, &MiniHelp::IrAlElegido);
  connect(ui_->Indice, &QTreeWidget::itemActivated, this, &MiniHelp::IrAlElegido);
  ui_->Division->setStretchFactor(1, 1);
}

MiniHelp::~MiniHelp() = default;

void MiniHelp::Cargar(const QString& ruta) {
  ui_->Tema->Cargar(ruta);
  ui_->Tema->setFocus();
}

/// El título del documento ya está en la barra: el índice empieza por el segundo nivel.
void MiniHelp::LlenarIndice() {
  setWindowTitle(u"Ayuda: "_s + ui_->Tema->Titulo());
  const QSignalBlocker callado(ui_->Indice);
  ui_->Indice->clear();
  QTreeWidgetItem* capitulo = nullptr;
  for (const VisorAyuda::Seccion& seccion : ui_->Tema->Secciones()) {
    if (seccion.nivel < 2 || seccion.nivel > 3) continue;
    const bool dentro = seccion.nivel == 3 && capitulo != nullptr;
    auto* entrada = dentro ? new QTreeWidgetItem(capitulo) : new QTreeWidgetItem(ui_->Indice);
    entrada->setText(0, seccion.titulo);
    entrada->setToolTip(0, TextoLiteral(seccion.titulo));
    entrada->setData(0, Qt::UserRole, seccion.posicion);
    if (!dentro) capitulo = entrada;
  }
  ui_->Indice->expandAll();
  ui_->Indice->setVisible(ui_->Indice->topLevelItemCount() > 1);
  RepartirAncho();
  MarcarIndice();
}

/// Los títulos del índice, enteros si dejan a la página la mitad.
void MiniHelp::RepartirAncho() {
  const QAbstractItemView* indice = ui_->Indice;
  const QWidget& ancha = isVisible() ? static_cast<const QWidget&>(*ui_->Division) : *this;
  const int total = ancha.width() - ui_->Division->handleWidth();
  const int entero = indice->sizeHintForColumn(0) + indice->verticalScrollBar()->sizeHint().width() +
                     2 * indice->frameWidth() + 4;
  const int suyo = std::min(entero, total / 2);
  ui_->Division->setSizes({suyo, total - suyo});
}

/// Señala en el índice lo que se está leyendo.
void MiniHelp::MarcarIndice() {
  ui_->cmdAtras->setEnabled(ui_->Tema->HayAtras());
  const int posicion = ui_->Tema->Posicion();
  QTreeWidgetItem* actual = nullptr;
  for (QTreeWidgetItemIterator i(ui_->Indice); *i; ++i)
    if ((*i)->data(0, Qt::UserRole).toInt() <= posicion) actual = *i;
  if (ui_->Indice->currentItem() != actual) ui_->Indice->setCurrentItem(actual);
  if (!actual) ui_->Indice->scrollToTop();
}

void MiniHelp::IrAlElegido(QTreeWidgetItem* entrada) {
  ui_->Tema->IrA(entrada->data(0, Qt::UserRole).toInt());
  // Los últimos apartados no llegan a verse arriba.
  ui_->Indice->setCurrentItem(entrada);
}

void MiniHelp::IrASeccion(const QString& nombre) {
  ui_->Tema->IrASeccion(nombre);
}

void MiniHelp::Ampliar(int pasos) {
  pasos = std::clamp(ampliado_ + pasos, -5, 20) - ampliado_;
  ampliado_ += pasos;
  ui_->Tema->zoomIn(pasos);
}

}  // namespace comunes
