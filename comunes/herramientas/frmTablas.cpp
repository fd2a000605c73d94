#include "comunes/herramientas/frmTablas.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QShortcut>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/dialogos/MyBox.h"
#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/herramientas/CargarGrabarTabla.h"
#include "comunes/herramientas/SalirSinGrabar.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "ui_frmTablas.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconoSalir = 3;

}  // namespace

frmTablas::frmTablas(QWidget* padre)
    : QDialog(padre, Qt::Window),
      ui_(std::make_unique<Ui::frmTablas>()),
      rejilla_(u"VisorTabla"_s),
      modelo_(rejilla_) {
  ui_->setupUi(this);
  setProperty("Ayuda", u"el-editor-de-tablas"_s);
  comunes::FuentesVentana(*this);
  PonerRuta({});
  conectar();
}

frmTablas::~frmTablas() = default;

void frmTablas::PonerRuta(const QString& ruta) {
  ruta_ = ruta;
  // En el título, "[*]" es el sitio del asterisco de lo modificado.
  const QString nombre = QFileInfo(ruta).fileName().replace(u"[*]"_s, u"[*][*]"_s);
  setWindowTitle(nombre + u"[*]"_s + (nombre.isEmpty() ? QString() : u" - "_s) +
                 u"Editor de Tablas de QMX"_s);
}

void frmTablas::conectar() {
  connect(ui_->VisorTabla, &QTableView::clicked, this,
          [this](const QModelIndex& celda) { editar(modelo_.FilaRejilla(celda.row())); });
  const auto atajo = [this](const QKeySequence& tecla, QWidget* donde, Qt::ShortcutContext contexto,
                            auto hacer) {
    connect(new QShortcut(tecla, donde, nullptr, nullptr, contexto), &QShortcut::activated, this, hacer);
  };
  for (const auto tecla : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2})
    atajo(tecla, ui_->VisorTabla, Qt::WidgetShortcut, [this] { editar(filaSenalada()); });
  atajo(Qt::Key_Delete, ui_->VisorTabla, Qt::WidgetShortcut, [this] { quitar(); });
  atajo(Qt::ALT | Qt::Key_Up, this, Qt::WindowShortcut, [this] { mover(-1); });
  atajo(Qt::ALT | Qt::Key_Down, this, Qt::WindowShortcut, [this] { mover(1); });
  atajo(QKeySequence::Save, this, Qt::WindowShortcut, [this] { grabar(); });
  connect(ui_->Elemento, &QLineEdit::textChanged, this, [this] {
    if (!poniendo_ && !comunes::Tecleo().reescribiendo) marcar(true);
  });
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &frmTablas::aceptar);
  connect(ui_->cmdQuitar, &QPushButton::clicked, this, &frmTablas::quitar);
  connect(ui_->cmdSubir, &QPushButton::clicked, this, [this] { mover(-1); });
  connect(ui_->cmdBajar, &QPushButton::clicked, this, [this] { mover(1); });
  connect(ui_->cmdGrabar, &QPushButton::clicked, this, &frmTablas::grabar);
  connect(ui_->cmdSalir, &QPushButton::clicked, this, &QWidget::close);
}

bool frmTablas::Dimensionar(const QWidget* Origen, int Ajuste, const QString& Columnas,
                            const QString& Descriptor, bool Cargar) {
  comunes::PrepararRejilla(rejilla_, Columnas);
  const int columnas = comunes::PrepararVistaRejilla(*ui_->VisorTabla, modelo_);
  QItemSelectionModel* seleccion = ui_->VisorTabla->selectionModel();
  // Al llegar con el teclado la vista hace actual una fila sin seleccionarla: la señalada ha de verse.
  connect(seleccion, &QItemSelectionModel::currentRowChanged, this,
          [this, seleccion](const QModelIndex& fila) {
            if (fila.isValid() && !seleccion->isSelected(fila)) ui_->VisorTabla->selectRow(fila.row());
            decir();
          });
  connect(seleccion, &QItemSelectionModel::selectionChanged, this, [this] { decir(); });
  comunes::Describir(ui_->Elemento, Descriptor);
  editada_ = 0;
  sinValores_ = true;
  if (Cargar) {
    const bool conRuta = !ruta_.isEmpty();
    const bool cargada = CargarGrabarTabla(u"CARGAR"_s, ruta_, rejilla_, ui_->VisorTabla, &codificacion_);
    if (!cargada && conRuta) return false;
    sinValores_ =
        rejilla_.Rows() == rejilla_.FixedRows() + 1 && rejilla_.TextMatrix(rejilla_.FixedRows(), 0).isEmpty();
    PonerRuta(ruta_);
  }
  poner(0);
  marcar(false);
  ui_->Elemento->setFocus();

  const int ajuste = comunes::PixelesDeTwips(Ajuste);
  const int barra = ui_->VisorTabla->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const int anchoMaximo = std::min(640, screen()->availableGeometry().width() - 40);
  const int ancho = columnas + barra + 2 * ui_->VisorTabla->frameWidth();
  ui_->VisorTabla->setMinimumWidth(std::min(ancho, anchoMaximo));
  adjustSize();
  resize(width() + ajuste, height());
  comunes::DisponerVentana(*this);
  if (Origen == nullptr) return true;
  resize(Origen->width() + ajuste, height());
  move(Origen->mapToGlobal(QPoint(0, Origen->height())));
  return true;
}

void frmTablas::editar(int fila) {
  if (fila < rejilla_.FixedRows()) return;
  editada_ = sinValores_ ? 0 : fila;
  poner(fila);
  ui_->Elemento->setFocus();
  comunes::EntrarCampo(this);
}

void frmTablas::poner(int fila) {
  comunes::DejarCampo(this);
  const QScopedValueRollback marca(poniendo_, true);
  comunes::PonerTexto(ui_->Elemento, fila > 0 ? rejilla_.TextMatrix(fila, 0) : QString());
  decir();
}

void frmTablas::aceptar() {
  comunes::DejarCampo(this);
  QString valor = ui_->Elemento->text();
  valor.replace(u'\r', u' ').replace(u'\n', u' ');
  int fila = editada_;
  if (fila <= 0) fila = sinValores_ ? rejilla_.FixedRows() : rejilla_.Rows();
  comunes::PonerCelda(rejilla_, fila, 0, valor);
  sinValores_ = false;
  editada_ = 0;
  senalar(fila);
  poner(0);
  marcar(true);
  ui_->Elemento->setFocus();
  comunes::EntrarCampo(this);
}

void frmTablas::quitar() {
  const int fila = filaSenalada();
  if (fila == 0 || sinValores_) return;
  const int primera = rejilla_.FixedRows();
  if (rejilla_.Rows() > primera + 1) {
    comunes::QuitarFila(rejilla_, fila);
  } else {
    comunes::PonerCelda(rejilla_, primera, 0, {});
    sinValores_ = true;
  }
  if (editada_ == fila) {
    editada_ = 0;
    poner(0);
  } else if (editada_ > fila) {
    --editada_;
  }
  senalar(std::min(fila, rejilla_.Rows() - 1));
  marcar(true);
}

void frmTablas::mover(int pasos) {
  const int fila = filaSenalada();
  const int destino = fila + pasos;
  if (fila == 0 || destino < rejilla_.FixedRows() || destino >= rejilla_.Rows()) return;
  for (int columna = 0; columna < rejilla_.Cols(); ++columna) {
    const QString texto = rejilla_.TextMatrix(fila, columna);
    rejilla_.PonerTextMatrix(fila, columna, rejilla_.TextMatrix(destino, columna));
    rejilla_.PonerTextMatrix(destino, columna, texto);
  }
  if (editada_ == fila)
    editada_ = destino;
  else if (editada_ == destino)
    editada_ = fila;
  senalar(destino);
  marcar(true);
}

bool frmTablas::grabar() {
  comunes::DejarCampo(this);
  if (avisarPerdida() || !CargarGrabarTabla(u"REGRABAR"_s, ruta_, rejilla_, ui_->VisorTabla, &codificacion_))
    return false;
  PonerRuta(ruta_);
  marcar(false);
  const QString pendiente = ui_->Elemento->text();
  const bool sinPasar =
      editada_ > 0 ? pendiente != rejilla_.TextMatrix(editada_, 0) : !pendiente.trimmed().isEmpty();
  decir(sinPasar ? u"Tabla grabada, sin el valor que se está tecleando: falta «Aceptar»"_s
                 : u"Tabla grabada en %1"_s.arg(QDir::toNativeSeparators(ruta_)));
  if (ui_->Elemento->hasFocus()) {
    // Lo siguiente que se teclee sigue a lo que había, no lo sustituye.
    comunes::EntrarCampo(this);
    ui_->Elemento->end(false);
  }
  return true;
}

bool frmTablas::avisarPerdida() {
  if (codificacion_.unicode) return false;
  for (int fila = rejilla_.FixedRows(); fila < rejilla_.Rows(); ++fila) {
    const QString& valor = rejilla_.TextMatrix(fila, 0);
    if (comunes::CabeEnWindows1252(valor)) continue;
    senalar(fila);
    QString perdidos;
    for (const QChar c : valor)
      if (!comunes::CabeEnWindows1252(c)) perdidos += c;
    comunes::Avisar(
        u"«%1», en la fila %2, no existe en Windows-1252 y se perdería.;;Cámbielo antes de "
        u"grabar."_s.arg(perdidos)
            .arg(fila - rejilla_.FixedRows() + 1),
        this);
    return true;
  }
  return false;
}

void frmTablas::reject() {
  if (!ui_->VisorTabla->property("Tag").toString().isEmpty() &&
      !SalirSinGrabar(*this, ruta_, u"Datos han sido modificados.;;¿ Desea salir sin grabar ?"_s,
                      kIconoSalir))
    return;
  QDialog::reject();
}

void frmTablas::keyPressEvent(QKeyEvent* suceso) {
  // Escape deja antes la fila que se corrige que la ventana.
  if (suceso->key() != Qt::Key_Escape || editada_ == 0) return QDialog::keyPressEvent(suceso);
  editada_ = 0;
  poner(0);
  comunes::EntrarCampo(this);
}

int frmTablas::filaSenalada() const {
  const QItemSelectionModel* seleccion = ui_->VisorTabla->selectionModel();
  if (seleccion == nullptr) return 0;
  const QModelIndexList filas = seleccion->selectedRows();
  return filas.isEmpty() ? 0 : modelo_.FilaRejilla(filas.constFirst().row());
}

void frmTablas::senalar(int fila) {
  ui_->VisorTabla->selectRow(fila - rejilla_.FixedRows());
  ui_->VisorTabla->scrollTo(modelo_.index(fila - rejilla_.FixedRows(), 0));
  decir();
}

void frmTablas::marcar(bool modificado) {
  ui_->VisorTabla->setProperty("Tag", modificado ? u"MODIFICADO"_s : QString());
  setWindowModified(modificado);
}

void frmTablas::decir(const QString& texto) {
  const int primera = rejilla_.FixedRows();
  const int valores = sinValores_ ? 0 : rejilla_.Rows() - primera;
  const QString cuenta = valores == 1 ? u"1 valor"_s : u"%1 valores"_s.arg(valores);
  ui_->Estado->setText(texto.isEmpty() ? cuenta : texto);
  ui_->Estado->setToolTip(comunes::TextoLiteral(texto));
  ui_->Marco->setTitle(editada_ > 0 ? u"Cambiar la fila %1"_s.arg(editada_ - primera + 1) : u"Valor nuevo"_s);
  const int fila = filaSenalada();
  const bool hay = fila > 0 && !sinValores_;
  ui_->cmdQuitar->setEnabled(hay);
  ui_->cmdSubir->setEnabled(hay && fila > primera);
  ui_->cmdBajar->setEnabled(hay && fila < rejilla_.Rows() - 1);
}

}  // namespace herramientas
