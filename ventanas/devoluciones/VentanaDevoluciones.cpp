#include "ventanas/devoluciones/VentanaDevoluciones.h"

#include <QDragEnterEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QShortcut>
#include <algorithm>

#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/herramientas/Agenda.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"
#include "devoluciones/Textos.h"
#include "ui_VentanaDevoluciones.h"

namespace ventanas {

using namespace Qt::StringLiterals;

namespace {

using devoluciones::Intento;
using Marca = ModeloDevoluciones::Marca;

/// Anchos y alineación de la casilla y de cada columna, y sus tipos, para ordenarlas.
constexpr const char* kColumnas =
    "<Otra "
    "vez#7;<Nombre#25;>Importe#9>;<Cuenta#25;<Referencia#16;<Mandato#15;<Código#6;<Motivo#28;<Consejo#44;"
    "<Cobro#9;<Devolución#9;<En la remesa#30;<Concepto#34;<Acreedor#17;<Texto del banco#20;<Fichero "
    "original#26;"
    "<Fichero#22";
constexpr const char* kTipos = "TTITTTTTTFFTTTTTT";
constexpr int kCasilla = 0;
constexpr std::size_t kMuchas = 5000;
constexpr std::chrono::milliseconds kEspera{200};

QString Cuantas(std::size_t cuenta, const QString& una, const QString& varias) {
  return comunes::FormatoNumero(static_cast<double>(cuenta), 0) + u' ' + (cuenta == 1 ? una : varias);
}

void Llenar(QListWidget& lista, const QStringList& textos) {
  const int actual = std::max(lista.currentRow(), 0);
  const QSignalBlocker quieta(lista);
  lista.clear();
  lista.addItems(textos);
  for (int i = 0; i < lista.count(); ++i)
    lista.item(i)->setToolTip(comunes::TextoLiteral(textos[i]));
  lista.setCurrentRow(std::min(actual, lista.count() - 1));
}

}  // namespace

VentanaDevoluciones::VentanaDevoluciones(QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::VentanaDevoluciones>()),
      modelo_(rejilla_) {
  ui_->setupUi(this);
  QFont grande = ui_->Total->font();
  grande.setPointSizeF(grande.pointSizeF() * 1.3);
  grande.setBold(true);
  ui_->Total->setFont(grande);
  ui_->FechaCobro->setMinimumDate(QDate(2000, 1, 1));
  const remesa::Dia cobro = devoluciones::FechaPropuesta(comunes::Hoy());
  ui_->FechaCobro->setDate(QDate(static_cast<int>(cobro.year()),
                                 static_cast<int>(static_cast<unsigned>(cobro.month())),
                                 static_cast<int>(static_cast<unsigned>(cobro.day()))));
  comunes::PrepararRejilla(rejilla_, QString::fromUtf8(kColumnas));
  rejilla_.PonerTag(QLatin1String(kTipos));
  rejilla_.PonerRows(rejilla_.FixedRows());
  comunes::PrepararVistaRejilla(*ui_->Visor, modelo_);
  comunes::FuentesVentana(*this);
  conectar();
  rehacer();
  decir({});
  comunes::DisponerVentana(*this);
}

VentanaDevoluciones::~VentanaDevoluciones() {
  ui_->Visor->setModel(nullptr);
}

void VentanaDevoluciones::conectar() {
  for (QWidget* control : {static_cast<QWidget*>(ui_->Buscado), static_cast<QWidget*>(ui_->Visor)})
    control->installEventFilter(this);
  // Con muchas, al acabar de escribir.
  espera_.setSingleShot(true);
  connect(&espera_, &QTimer::timeout, this, &VentanaDevoluciones::filtrar);
  connect(ui_->Buscado, &QLineEdit::textChanged, this,
          [this] { lote_.size() < kMuchas ? filtrar() : espera_.start(kEspera); });
  for (QListWidget* lista : {ui_->PorMotivo, ui_->PorAcreedor})
    connect(lista, &QListWidget::currentRowChanged, this, &VentanaDevoluciones::filtrar);
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &VentanaDevoluciones::detallar);
  ui_->Visor->horizontalHeader()->setSectionsClickable(true);
  connect(ui_->Visor->horizontalHeader(), &QHeaderView::sectionClicked, this, &VentanaDevoluciones::ordenar);
  connect(&modelo_, &ModeloDevoluciones::marcasCambiadas, this, &VentanaDevoluciones::mostrarMarcadas);
  connect(ui_->cmdAnadir, &QPushButton::clicked, this, &VentanaDevoluciones::elegirFicheros);
  connect(ui_->cmdRemesa, &QPushButton::clicked, this, &VentanaDevoluciones::elegirRemesas);
  connect(ui_->cmdCarpeta, &QPushButton::clicked, this, &VentanaDevoluciones::elegirCarpeta);
  connect(ui_->cmdPresentar, &QPushButton::clicked, this, &VentanaDevoluciones::presentar);
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &VentanaDevoluciones::imprimir);
  connect(ui_->cmdCopiar, &QPushButton::clicked, this, &VentanaDevoluciones::copiar);
  connect(ui_->cmdCsv, &QPushButton::clicked, this, &VentanaDevoluciones::guardarCsv);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->AbrirListado, &QPushButton::clicked, this, [this] {
    const QString fallo = comunes::AbrirDocumento(documento_);
    if (!fallo.isEmpty()) decir(fallo);
  });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    ui_->Buscado->setFocus();
    ui_->Buscado->selectAll();
  });
}

void VentanaDevoluciones::reject() {
  // Escape deja antes de buscar que la ventana.
  if (ui_->Buscado->text().isEmpty()) return QDialog::reject();
  ui_->Buscado->clear();
  ui_->Buscado->setFocus();
}

bool VentanaDevoluciones::eventFilter(QObject* objeto, QEvent* suceso) {
  if (suceso->type() != QEvent::KeyPress) return QDialog::eventFilter(objeto, suceso);
  auto& tecla = static_cast<QKeyEvent&>(*suceso);
  if (objeto == ui_->Visor && tecla.matches(QKeySequence::Copy)) {
    copiar();
    return true;
  }
  if (objeto == ui_->Visor && tecla.key() == Qt::Key_Space) {
    marcarElegidas();
    return true;
  }
  const bool aLaLista = tecla.key() == Qt::Key_Down || tecla.key() == Qt::Key_Up ||
                        tecla.key() == Qt::Key_PageDown || tecla.key() == Qt::Key_PageUp;
  if (objeto != ui_->Buscado || !aLaLista) return QDialog::eventFilter(objeto, suceso);
  QCoreApplication::sendEvent(ui_->Visor, &tecla);
  return true;
}

void VentanaDevoluciones::dragEnterEvent(QDragEnterEvent* suceso) {
  if (suceso->mimeData()->hasUrls()) suceso->acceptProposedAction();
}

void VentanaDevoluciones::dropEvent(QDropEvent* suceso) {
  QStringList rutas;
  for (const QUrl& url : suceso->mimeData()->urls())
    if (url.isLocalFile()) rutas += url.toLocalFile();
  if (rutas.isEmpty()) return;
  suceso->acceptProposedAction();
  // Fuera de este evento: una caja modal dejaría esperando al programa del que viene.
  QMetaObject::invokeMethod(
      this, [this, rutas] { anadir(rutas); }, Qt::QueuedConnection);
}

void VentanaDevoluciones::rehacer() {
  const comunes::Reloj reloj;
  const devoluciones::Cotejo* cotejo = cotejo_ ? &*cotejo_ : nullptr;
  recuento_ = devoluciones::Recontar(lote_, cotejo);
  filas_.clear();
  plegadas_.clear();
  for (std::size_t i = 0; i < lote_.size(); ++i) {
    filas_.push_back(devoluciones::ValoresColumnas(lote_, cotejo, i));
    // La cuenta, también sin sus blancos.
    QString junta = filas_.back()[2];
    plegadas_.push_back(herramientas::Plegar(filas_.back().join(u'\n') + u'\n' + junta.remove(u' ')));
  }
  mostrarTotales();
  mostrarAvisos();
  filtrar();
  mostrarMarcadas();
}

void VentanaDevoluciones::mostrarTotales() {
  const QString total = devoluciones::TextoCuenta(recuento_.total);
  ui_->Total->setText(total);
  QStringList motivos{u"Todos los motivos: "_s + total}, acreedores{u"Todos los acreedores: "_s + total};
  for (const devoluciones::Grupo& grupo : recuento_.porMotivo)
    motivos += comunes::SinControles(devoluciones::TextoGrupoMotivo(grupo));
  for (const devoluciones::Grupo& grupo : recuento_.porAcreedor)
    acreedores += comunes::SinControles(devoluciones::TextoGrupoAcreedor(grupo));
  Llenar(*ui_->PorMotivo, motivos);
  Llenar(*ui_->PorAcreedor, acreedores);
}

void VentanaDevoluciones::mostrarAvisos() {
  const QStringList avisos = avisosNueva_ + avisosBusqueda_ + avisosLectura_;
  ui_->Avisos->setPlainText(comunes::SinControles(avisos.join(u"\uE000"_s)).replace(u"\uE000"_s, u"\n"_s));
  ui_->Avisos->setVisible(!avisos.isEmpty());
}

bool VentanaDevoluciones::cumple(std::size_t devolucion, const QStringList& palabras) const {
  const QStringList& fila = filas_[devolucion];
  const int motivo = ui_->PorMotivo->currentRow(), acreedor = ui_->PorAcreedor->currentRow();
  constexpr int kCodigo = 5, kAcreedor = 12;
  const auto esDe = [&](int cual, const std::vector<devoluciones::Grupo>& grupos, int columna) {
    return cual <= 0 || fila[columna] == grupos[static_cast<std::size_t>(cual - 1)].clave.texto();
  };
  if (!esDe(motivo, recuento_.porMotivo, kCodigo) || !esDe(acreedor, recuento_.porAcreedor, kAcreedor))
    return false;
  return std::ranges::all_of(palabras,
                             [&](const QString& palabra) { return plegadas_[devolucion].contains(palabra); });
}

void VentanaDevoluciones::filtrar() {
  espera_.stop();
  const int actual = modelo_.devolucion(ui_->Visor->currentIndex().row());
  const QStringList palabras = herramientas::Plegar(ui_->Buscado->text()).split(u' ', Qt::SkipEmptyParts);
  {
    const comunes::SinRedibujo quieta(rejilla_);
    rejilla_.PonerRows(rejilla_.FixedRows());
    int fila = rejilla_.FixedRows();
    rejilla_.PonerRows(fila + static_cast<int>(lote_.size()));
    for (std::size_t i = 0; i < lote_.size(); ++i) {
      if (!cumple(i, palabras)) continue;
      for (int columna = 0; columna < filas_[i].size(); ++columna)
        rejilla_.PonerTextMatrix(fila, columna + 1, filas_[i][columna]);
      rejilla_.PonerRowItem(fila++, static_cast<int>(i));
    }
    rejilla_.PonerRows(fila);
  }
  if (ordenada_ >= 0) ordenar(ordenada_);
  const auto visibles = static_cast<std::size_t>(modelo_.rowCount());
  const QString todas = Cuantas(lote_.size(), u"devolución"_s, u"devoluciones"_s);
  ui_->Cuenta->setText(visibles == lote_.size() ? todas : u"%1 de %2"_s.arg(visibles).arg(todas));
  for (int fila = 0; fila < modelo_.rowCount(); ++fila) {
    if (modelo_.devolucion(fila) != actual && !(actual < 0 && fila == 0)) continue;
    ui_->Visor->setCurrentIndex(modelo_.index(fila, 1));
    break;
  }
  detallar();
}

void VentanaDevoluciones::ordenar(int columna) {
  ordenada_ = columna;
  const comunes::SinRedibujo quieta(rejilla_);
  for (int otra = 0; otra < rejilla_.Cols(); ++otra)
    rejilla_.PonerEstilo(0, otra, {});
  if (columna != kCasilla) return comunes::OrdenarColumna(rejilla_, columna, true);
  std::vector<int> orden;
  for (const Marca marca : {Marca::Puesta, Marca::Sin, Marca::NoAdmite})
    for (int fila = rejilla_.FixedRows(); fila < rejilla_.Rows(); ++fila)
      if (modelo_.marcas()[static_cast<std::size_t>(rejilla_.RowItem(fila))] == marca) orden.push_back(fila);
  rejilla_.Reordenar(orden);
}

void VentanaDevoluciones::mostrarMarcadas() {
  devoluciones::Cuenta cuenta;
  for (std::size_t i = 0; i < modelo_.marcas().size(); ++i)
    if (modelo_.marcas()[i] == Marca::Puesta) cuenta.sumar(completada(i));
  ui_->Marcadas->setText(u"Para otra vez: "_s + devoluciones::TextoCuenta(cuenta));
}

/// Un bloque entero, con lo que se sepa por su remesa; de un adeudo, su importe se sabe ya.
devoluciones::Devolucion VentanaDevoluciones::completada(std::size_t i) const {
  devoluciones::Devolucion d = lote_[i];
  const bool seSabe = d.alcance == devoluciones::Alcance::Adeudo && d.importe;
  return seSabe || !cotejo_ ? d : cotejo_->completada(i, cotejo_->hallazgo(i));
}

void VentanaDevoluciones::detallar() {
  const int cual = modelo_.devolucion(ui_->Visor->currentIndex().row());
  ui_->Detalle->setText(
      cual < 0 ? QString()
               : comunes::SinControles(devoluciones::TextoPorQue(lote_[static_cast<std::size_t>(cual)])));
}

void VentanaDevoluciones::decir(const QString& texto, const QString& documento) {
  ui_->Mensaje->setText(comunes::SinControles(texto));
  ui_->Mensaje->setToolTip(comunes::TextoLiteral(texto));
  documento_ = documento;
  ui_->AbrirListado->setVisible(!documento.isEmpty());
}

std::vector<int> VentanaDevoluciones::elegidasOTodas() const {
  std::vector<int> filas;
  for (const QModelIndex& indice : ui_->Visor->selectionModel()->selectedRows())
    filas.push_back(indice.row());
  if (filas.empty())
    for (int fila = 0; fila < modelo_.rowCount(); ++fila)
      filas.push_back(fila);
  std::ranges::sort(filas);
  return filas;
}

QStringList VentanaDevoluciones::celdas(int fila) const {
  return filas_[static_cast<std::size_t>(modelo_.devolucion(fila))];
}

}  // namespace ventanas
