#include "comunes/herramientas/Telefonos.h"

#include <QAction>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QShortcut>

#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/herramientas/ListaContactos.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"
#include "ui_Telefonos.h"

namespace herramientas {

using namespace Qt::StringLiterals;

Telefonos::Telefonos(QWidget* padre, const QString& ruta)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::Telefonos>()),
      fichero_(ruta),
      modelo_(rejilla_) {
  fichero_.releer();
  ui_->setupUi(this);
  comunes::FuentesVentana(*this);
  mostrar();
  comunes::PrepararVistaRejilla(*ui_->Visor, modelo_);
  decir({});
  conectar();
  elegir({rejilla_.Rows() > 1 ? rejilla_.TextMatrix(1, kColumnaClave) : QString()});
  mostrarElegidos();
  comunes::DisponerVentana(*this);
}

Telefonos::~Telefonos() = default;

void Telefonos::conectar() {
  for (QWidget* control : {static_cast<QWidget*>(ui_->Buscado), static_cast<QWidget*>(ui_->Visor)})
    control->installEventFilter(this);
  connect(ui_->Buscado, &QLineEdit::textChanged, this, &Telefonos::mostrar);
  connect(ui_->Visor, &QTableView::doubleClicked, this, &Telefonos::cambiar);
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &Telefonos::mostrarElegidos);
  ui_->Visor->horizontalHeader()->setSectionsClickable(true);
  connect(ui_->Visor->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int columna) {
    orden_ = columna;
    mostrar();
  });
  connect(ui_->cmdAnadir, &QPushButton::clicked, this, &Telefonos::anadir);
  connect(ui_->cmdCambiar, &QPushButton::clicked, this, &Telefonos::cambiar);
  connect(ui_->cmdQuitar, &QPushButton::clicked, this, &Telefonos::quitar);
  connect(ui_->cmdImportar, &QPushButton::clicked, this, [this] {
    importar();
    ui_->Buscado->setFocus();
  });
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &Telefonos::imprimir);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->AbrirListado, &QPushButton::clicked, this, [this] {
    const QString fallo = comunes::AbrirDocumento(documento_);
    if (!fallo.isEmpty()) decir(fallo);
  });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    ui_->Buscado->setFocus();
    ui_->Buscado->selectAll();
  });
  vigia_.addPath(QFileInfo(fichero_.ruta()).path());
  connect(&vigia_, &QFileSystemWatcher::directoryChanged, this, &Telefonos::refrescar);
}

void Telefonos::reject() {
  // Escape deja antes de buscar que la ventana.
  if (ui_->Buscado->text().isEmpty()) return QDialog::reject();
  ui_->Buscado->clear();
  ui_->Buscado->setFocus();
}

void Telefonos::changeEvent(QEvent* suceso) {
  QDialog::changeEvent(suceso);
  if (suceso->type() == QEvent::ActivationChange && isActiveWindow()) refrescar();
}

void Telefonos::wheelEvent(QWheelEvent* suceso) {
  // La rueda mueve la lista esté donde esté el ratón.
  QCoreApplication::sendEvent(ui_->Visor->viewport(), suceso);
}

bool Telefonos::eventFilter(QObject* objeto, QEvent* suceso) {
  if (suceso->type() == QEvent::KeyPress) {
    auto& tecla = static_cast<QKeyEvent&>(*suceso);
    if (objeto == ui_->Buscado && teclaBusqueda(tecla)) return true;
    if (objeto == ui_->Visor && teclaVisor(tecla)) return true;
  }
  return QDialog::eventFilter(objeto, suceso);
}

bool Telefonos::teclaBusqueda(QKeyEvent& tecla) {
  switch (tecla.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QCoreApplication::sendEvent(ui_->Visor, &tecla);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      cambiar();
      return true;
    case Qt::Key_Insert:
      if (tecla.modifiers() != Qt::NoModifier) return false;
      anadir();
      return true;
    default:
      return false;
  }
}

bool Telefonos::teclaVisor(QKeyEvent& tecla) {
  if (tecla.matches(QKeySequence::Copy)) {
    copiar();
    return true;
  }
  switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      cambiar();
      return true;
    case Qt::Key_Insert:
      anadir();
      return true;
    case Qt::Key_Delete:
      quitar();
      return true;
    default:
      break;
  }
  // Lo que se teclea sobre la lista es lo que se busca.
  const QString texto = tecla.text();
  const bool escribe = (tecla.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  if (!escribe || texto.isEmpty() || !texto.front().isPrint() || texto == u" ") return false;
  ui_->Buscado->setFocus();
  ui_->Buscado->insert(texto);
  return true;
}

void Telefonos::refrescar() {
  try {
    if (fichero_.releer()) mostrar();
  } catch (const ficheros::ErrorEjecucion&) {
    // Puede estar a medio escribir por otro programa.
  }
}

void Telefonos::mostrar() {
  const QStringList claves = clavesElegidas();
  ListarContactos(rejilla_, fichero_.agenda(), ui_->Buscado->text(), orden_, true);
  const int visibles = rejilla_.Rows() - rejilla_.FixedRows();
  const int todos = static_cast<int>(fichero_.agenda().contactos.size());
  const QString contactos = todos == 1 ? u"1 contacto"_s : u"%1 contactos"_s.arg(todos);
  ui_->Cuenta->setText(visibles == todos ? contactos : u"%1 de %2"_s.arg(visibles).arg(contactos));
  ui_->cmdImprimir->setEnabled(visibles > 0);
  elegir(claves);
  mostrarElegidos();
}

void Telefonos::mostrarElegidos() {
  const auto elegidos = clavesElegidas().size();
  ui_->cmdCambiar->setEnabled(elegidos == 1);
  ui_->cmdQuitar->setEnabled(elegidos > 0);
}

void Telefonos::decir(const QString& texto, const QString& documento) {
  ui_->Mensaje->setText(texto);
  ui_->Mensaje->setToolTip(comunes::TextoLiteral(texto));
  documento_ = documento;
  ui_->AbrirListado->setVisible(!documento.isEmpty());
}

QStringList Telefonos::clavesElegidas() const {
  QStringList claves;
  if (!ui_->Visor->selectionModel()) return claves;
  const QModelIndexList elegidas = ui_->Visor->selectionModel()->selectedRows(kColumnaClave);
  for (const QModelIndex& fila : elegidas)
    claves += rejilla_.TextMatrix(modelo_.FilaRejilla(fila.row()), kColumnaClave);
  return claves;
}

void Telefonos::elegir(const QStringList& claves) {
  if (!ui_->Visor->selectionModel()) return;
  QItemSelection filas;
  for (int fila = rejilla_.FixedRows(); fila < rejilla_.Rows(); ++fila) {
    if (!claves.contains(rejilla_.TextMatrix(fila, kColumnaClave))) continue;
    const int suya = fila - rejilla_.FixedRows();
    filas.select(modelo_.index(suya, kColumnaClave), modelo_.index(suya, modelo_.columnCount() - 1));
  }
  // Buscando, el primero es el que se quiere casi siempre.
  if (filas.isEmpty() && !ui_->Buscado->text().isEmpty() && modelo_.rowCount() > 0)
    filas.select(modelo_.index(0, kColumnaClave), modelo_.index(0, modelo_.columnCount() - 1));
  if (filas.isEmpty()) return;
  const QModelIndex primera = modelo_.index(filas.front().top(), kColumnaClave + 1);
  ui_->Visor->setCurrentIndex(primera);
  ui_->Visor->selectionModel()->select(filas, QItemSelectionModel::ClearAndSelect);
  ui_->Visor->scrollTo(primera);
}

}  // namespace herramientas
