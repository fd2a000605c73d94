#include "comunes/impresion/VistaPrevia.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "comunes/plataforma/Ventanas.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaginasVistaPrevia = 200;

class VistaPrevia : public QDialog {
 public:
  VistaPrevia(QPrinter& impresora, const std::function<bool(QPrinter&, int)>& dibujar, QWidget* padre)
      : QDialog(padre), visor_(new QPrintPreviewWidget(&impresora, this)) {
    setObjectName("VistaPrevia");
    setWindowTitle(u"Vista previa"_s);
    setProperty("Ayuda", u"imprimir"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    auto* columna = new QVBoxLayout(this);
    columna->addLayout(botones_);
    columna->setSizeConstraint(QLayout::SetNoConstraint);
    prepararBotones();
    columna->addWidget(visor_, 1);
    aviso_->setObjectName("Aviso");
    aviso_->setVisible(false);
    columna->addWidget(aviso_);
    connect(visor_, &QPrintPreviewWidget::paintRequested, this, [this, &dibujar](QPrinter* en) {
      const bool todas = dibujar(*en, kPaginasVistaPrevia);
      aviso_->setText(
          u"Se muestran las primeras %1 páginas. Se imprimirán todas."_s.arg(kPaginasVistaPrevia));
      aviso_->setVisible(!todas);
    });
    connect(visor_, &QPrintPreviewWidget::previewChanged, this, &VistaPrevia::actualizar);
    resize(900, 800);
    FuentesVentana(*this);
    const QMargins bordes = columna->contentsMargins();
    setMinimumWidth(tamano_->sizeHint().width() + bordes.left() + bordes.right());
    DisponerVentana(*this);
    visor_->fitInView();
    visor_->updatePreview();
  }

 private:
  QPushButton* boton(QHBoxLayout* fila, const char* nombre, const QString& titulo,
                     const QList<QKeySequence>& teclas, const std::function<void()>& accion) {
    auto* b = new QPushButton(titulo, this);
    b->setObjectName(nombre);
    b->setAutoDefault(false);
    fila->addWidget(b);
    connect(b, &QAbstractButton::clicked, this, accion);
    for (const QKeySequence& tecla : teclas)
      connect(new QShortcut(tecla, this), &QShortcut::activated, this, accion);
    return b;
  }

  // Las páginas a la izquierda y el tamaño a la derecha o, si no caben, debajo.
  void prepararBotones() {
    auto* fila = new QHBoxLayout;
    botones_->addLayout(fila, 0, 0, Qt::AlignLeft);
    anterior_ = boton(fila, "cmdAnterior", u"&Anterior"_s, {Qt::CTRL | Qt::Key_PageUp},
                      [this] { ir(visor_->currentPage() - 1); });
    pagina_->setObjectName("Pagina");
    pagina_->setAccessibleName(u"Página"_s);
    pagina_->setKeyboardTracking(false);
    fila->addWidget(pagina_);
    connect(pagina_, &QSpinBox::valueChanged, this, &VistaPrevia::ir);
    fila->addWidget(de_);
    siguiente_ = boton(fila, "cmdSiguiente", u"&Siguiente"_s, {Qt::CTRL | Qt::Key_PageDown},
                       [this] { ir(visor_->currentPage() + 1); });
    fila = tamano_ = new QHBoxLayout;
    boton(fila, "cmdMas", u"A&umentar"_s, QKeySequence::keyBindings(QKeySequence::ZoomIn),
          [this] { visor_->zoomIn(); });
    boton(fila, "cmdMenos", u"&Reducir"_s, QKeySequence::keyBindings(QKeySequence::ZoomOut),
          [this] { visor_->zoomOut(); });
    boton(fila, "cmdPagina", u"&Página entera"_s, {}, [this] { visor_->fitInView(); });
    boton(fila, "cmdAncho", u"Anc&ho de página"_s, {}, [this] { visor_->fitToWidth(); });
    boton(fila, "cmdCerrar", u"&Cerrar"_s, {}, [this] { accept(); });
    botones_->addLayout(tamano_, 0, 1, Qt::AlignRight);
  }

  void resizeEvent(QResizeEvent* suceso) override {
    QDialog::resizeEvent(suceso);
    const QMargins bordes = layout()->contentsMargins();
    const int sitio = width() - bordes.left() - bordes.right();
    const int paginas = botones_->itemAtPosition(0, 0)->sizeHint().width();
    const bool debajo = paginas + botones_->horizontalSpacing() + tamano_->sizeHint().width() > sitio;
    if (debajo == (botones_->itemAtPosition(1, 0) != nullptr)) return;
    botones_->removeItem(tamano_);
    tamano_->setParent(nullptr);
    botones_->addLayout(tamano_, debajo ? 1 : 0, debajo ? 0 : 1, debajo ? Qt::AlignLeft : Qt::AlignRight);
  }

  // El visor no avisa de la página que se le pide, solo de la que se alcanza desplazándolo.
  void ir(int pagina) {
    visor_->setCurrentPage(pagina);
    actualizar();
  }

  void actualizar() {
    const int paginas = std::max(1, visor_->pageCount());
    const int actual = std::clamp(visor_->currentPage(), 1, paginas);
    pagina_->setRange(1, paginas);
    const QSignalBlocker sinEco(pagina_);
    pagina_->setValue(actual);
    de_->setText(u"de %1"_s.arg(paginas));
    anterior_->setEnabled(actual > 1);
    siguiente_->setEnabled(actual < paginas);
  }

  QPrintPreviewWidget* visor_;
  QGridLayout* botones_ = new QGridLayout;
  QHBoxLayout* tamano_ = nullptr;
  QSpinBox* pagina_ = new QSpinBox(this);
  QLabel* de_ = new QLabel(this);
  QLabel* aviso_ = new QLabel(this);
  QPushButton* anterior_ = nullptr;
  QPushButton* siguiente_ = nullptr;
};

}  // namespace

void MostrarVistaPrevia(QPrinter& impresora, const std::function<bool(QPrinter&, int)>& dibujar,
                        QWidget* padre) {
  VistaPrevia(impresora, dibujar, padre).exec();
}

}  // namespace comunes
