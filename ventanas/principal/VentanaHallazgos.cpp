#include "ventanas/principal/VentanaHallazgos.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>

#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/herramientas/Agenda.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"
#include "ui_VentanaHallazgos.h"
#include "ventanas/principal/ModeloHallazgos.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// De cada código. Más no los lee nadie, y una remesa enorme puede tener millones.
constexpr std::size_t kPrimeros = 1000;
constexpr std::chrono::milliseconds kEsperaBusqueda{250};  // tras la última letra de lo que se busca

constexpr const char* kColumnasHallazgos =
    "<Nivel#9;<Código#7;>Registro#8>;<Deudor#25;<Campo#25;<Valor#20;<Se esperaba#28;<Posiciones#11;"
    "<Referencia#18;<Qué pasa y qué hacer#60";
/// El tipo de cada columna, para ordenarla.
constexpr const char* kTiposHallazgos = "TT#TTTTTTT";

QString Posiciones(const remesa::Hallazgo& h) {
  if (h.donde.desde == 0) return {};
  return h.donde.desde == h.donde.hasta ? QString::number(h.donde.desde)
                                        : u"%1-%2"_s.arg(h.donde.desde).arg(h.donde.hasta);
}

QString CodigoEscrito(remesa::CodigoHallazgo codigo) {
  return QString::fromUtf8(remesa::TextoCodigo(codigo).data());
}

/// También la eñe, como al buscar en la remesa: en un fichero un nombre puede venir con ella o sin ella.
QString PlegadoEntero(const QString& texto) {
  return herramientas::Plegar(texto).replace(u'ñ', u'n');
}

}  // namespace

QStringList TitulosHallazgos() {
  return {u"Nivel"_s, u"Código"_s,      u"Registro"_s,   u"Deudor"_s,     u"Campo"_s,
          u"Valor"_s, u"Se esperaba"_s, u"Posiciones"_s, u"Referencia"_s, u"Qué pasa y qué hacer"_s};
}

QStringList CeldasHallazgo(const remesa::Hallazgo& h) {
  return {TextoNivel(h.codigo),
          CodigoEscrito(h.codigo),
          h.registro == 0 ? QString() : QString::number(h.registro),
          comunes::DesdeWindows1252(h.deudor),
          TextoCampo(h),
          TextoValor(h),
          TextoEsperado(h),
          Posiciones(h),
          comunes::DesdeWindows1252(h.referencia),
          TextoHallazgo(h)};
}

VentanaHallazgos::VentanaHallazgos(OrigenHallazgos comprobada, QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::VentanaHallazgos>()),
      comprobada_(std::move(comprobada)),
      rejilla_(u"Visor"_s) {
  ui_->setupUi(this);
  preparar();
  comunes::FuentesVentana(*this);
  comunes::DisponerVentana(*this);
  conectar();
}

VentanaHallazgos::~VentanaHallazgos() {
  ui_->Visor->setModel(nullptr);
}

void VentanaHallazgos::preparar() {
  comunes::PrepararRejilla(rejilla_, QString::fromUtf8(kColumnasHallazgos));
  rejilla_.PonerTag(QLatin1String(kTiposHallazgos));
  rejilla_.PonerRows(rejilla_.FixedRows());
  modelo_ = std::make_unique<ModeloHallazgos>(rejilla_);
  comunes::PrepararVistaRejilla(*ui_->Visor, *modelo_);
  ui_->Visor->horizontalHeader()->setSectionsClickable(true);
  ui_->Nivel->addItems({u"Errores y avisos"_s, u"Solo errores"_s, u"Solo avisos"_s});
  ui_->cmdCorregir->setVisible(comprobada_.corregir != nullptr);
  decir({});
}

void VentanaHallazgos::conectar() {
  for (QWidget* control : {static_cast<QWidget*>(ui_->Buscado), static_cast<QWidget*>(ui_->Visor)})
    control->installEventFilter(this);
  espera_.setSingleShot(true);
  connect(&espera_, &QTimer::timeout, this, &VentanaHallazgos::filtrar);
  connect(ui_->Buscado, &QLineEdit::textChanged, this, [this] { espera_.start(kEsperaBusqueda); });
  for (const QComboBox* lista : {ui_->Nivel, ui_->Codigo})
    connect(lista, &QComboBox::currentIndexChanged, this, &VentanaHallazgos::filtrar);
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &VentanaHallazgos::detallar);
  // Lo que señala la propia ventana no lo ha elegido nadie.
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { elegidos_ = elegidos_ || !senalando_; });
  connect(ui_->Visor, &QTableView::clicked, this, [this] { elegidos_ = true; });
  connect(ui_->Visor, &QTableView::doubleClicked, this, &VentanaHallazgos::ir);
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(tecla, ui_->Visor, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, &VentanaHallazgos::ir);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    ui_->Buscado->setFocus();
    ui_->Buscado->selectAll();
  });
  connect(ui_->Visor->horizontalHeader(), &QHeaderView::sectionClicked, this, &VentanaHallazgos::ordenar);
  connect(ui_->cmdIr, &QPushButton::clicked, this, &VentanaHallazgos::ir);
  connect(ui_->cmdRepetir, &QPushButton::clicked, this, &VentanaHallazgos::comprobar);
  connect(ui_->cmdCorregir, &QPushButton::clicked, this, [this] {
    comprobada_.corregir(elegidos_ ? elegidos() : std::vector<remesa::Hallazgo>());
    if (caducada_) comprobar();
  });
  connect(ui_->cmdCopiar, &QPushButton::clicked, this, &VentanaHallazgos::copiar);
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &VentanaHallazgos::imprimir);
  connect(ui_->cmdCsv, &QPushButton::clicked, this, &VentanaHallazgos::guardarCsv);
  connect(ui_->cmdJson, &QPushButton::clicked, this, &VentanaHallazgos::guardarJson);
  connect(ui_->AbrirListado, &QPushButton::clicked, this, [this] {
    if (const QString fallo = comunes::AbrirDocumento(documento_); !fallo.isEmpty()) decir(fallo);
  });
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::accept);
}

void VentanaHallazgos::reject() {
  // Escape deja antes de buscar que la ventana.
  if (ui_->Buscado->text().isEmpty()) return QDialog::reject();
  ui_->Buscado->clear();
  ui_->Buscado->setFocus();
}

bool VentanaHallazgos::eventFilter(QObject* objeto, QEvent* suceso) {
  if (suceso->type() != QEvent::KeyPress) return QDialog::eventFilter(objeto, suceso);
  auto& tecla = static_cast<QKeyEvent&>(*suceso);
  if (objeto == ui_->Visor && tecla.matches(QKeySequence::Copy)) {
    copiarElegidos();
    return true;
  }
  const bool aLaLista = tecla.key() == Qt::Key_Down || tecla.key() == Qt::Key_Up ||
                        tecla.key() == Qt::Key_PageDown || tecla.key() == Qt::Key_PageUp;
  if (objeto != ui_->Buscado || !aLaLista) return QDialog::eventFilter(objeto, suceso);
  QCoreApplication::sendEvent(ui_->Visor, &tecla);
  return true;
}

bool VentanaHallazgos::Filtro::admite(remesa::CodigoHallazgo suyo) const {
  if (nivel != 0 && remesa::EsError(suyo) != (nivel == 1)) return false;
  return codigo < 0 || codigo == static_cast<int>(suyo);
}

bool VentanaHallazgos::Filtro::cumple(const QString& plegada) const {
  return std::ranges::all_of(palabras, [&](const QString& palabra) { return plegada.contains(palabra); });
}

VentanaHallazgos::Filtro VentanaHallazgos::filtro() const {
  return {ui_->Nivel->currentIndex(),
          ui_->Codigo->currentIndex() <= 0 ? -1 : ui_->Codigo->currentData().toInt(),
          PlegadoEntero(ui_->Buscado->text()).split(u' ', Qt::SkipEmptyParts)};
}

VentanaHallazgos::Recogida VentanaHallazgos::recoger(const Filtro& filtro) const {
  Recogida recogida;
  recogida.cuentas.resize(remesa::CodigosHallazgo().size());
  const auto recibir = [&](remesa::Hallazgo&& hallazgo) {
    if (!filtro.admite(hallazgo.codigo)) return;
    std::uint64_t& cuenta = recogida.cuentas[static_cast<std::size_t>(hallazgo.codigo)];
    const bool cabe = cuenta < kPrimeros;
    if (!cabe && filtro.palabras.isEmpty()) {
      ++cuenta;
      recogida.recortada = true;
      return;
    }
    QStringList celdas = CeldasHallazgo(hallazgo);
    QString plegada = PlegadoEntero(celdas.join(u'\n'));
    if (!filtro.cumple(plegada)) return;
    ++cuenta;
    recogida.recortada = recogida.recortada || !cabe;
    if (!cabe) return;
    recogida.hallazgos.push_back(std::move(hallazgo));
    recogida.celdas.push_back(std::move(celdas));
    recogida.plegadas.push_back(std::move(plegada));
  };
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Comprobando…"_s);
  recogida.resultado = comprobada_.comprobar(recibir, [&](std::uintmax_t mirados, std::uintmax_t total) {
    return avance.avanzar(static_cast<double>(mirados), static_cast<double>(total));
  });
  return recogida;
}

void VentanaHallazgos::comprobar() {
  const remesa::Hallazgo* senalado = actual();
  const remesa::Hallazgo anterior = senalado != nullptr ? *senalado : remesa::Hallazgo();
  caducar();  // si no se puede comprobar, lo que se ve sigue siendo lo de antes
  todos_ = recoger({});
  buscados_.reset();
  caducada_ = false;
  llenarCodigos();
  const Filtro pedido = filtro();
  if (todos_.recortada && !pedido.palabras.isEmpty()) buscados_ = recoger(pedido);
  llenar(pedido, anterior);
}

/// Los códigos que hay, con cuántos; sigue pedido el que lo estaba, si aún lo hay.
void VentanaHallazgos::llenarCodigos() {
  const QSignalBlocker quieta(ui_->Codigo);
  const QVariant pedido = ui_->Codigo->currentData();
  ui_->Codigo->clear();
  ui_->Codigo->addItem(u"Todos los códigos"_s);
  for (const remesa::CodigoHallazgo codigo : remesa::CodigosHallazgo())
    if (const std::uint64_t cuantos = todos_.cuentas[static_cast<std::size_t>(codigo)]; cuantos > 0)
      ui_->Codigo->addItem(
          u"%1 (%2)"_s.arg(CodigoEscrito(codigo), comunes::FormatoNumero(static_cast<double>(cuantos), 0)),
          static_cast<int>(codigo));
  if (pedido.isValid()) ui_->Codigo->setCurrentIndex(std::max(0, ui_->Codigo->findData(pedido)));
}

void VentanaHallazgos::filtrar() {
  espera_.stop();
  // De lo que ya no es así no se puede buscar más.
  if (caducada_ && todos_.recortada) return comprobar();
  const remesa::Hallazgo* senalado = actual();
  const remesa::Hallazgo anterior = senalado != nullptr ? *senalado : remesa::Hallazgo();
  const Filtro pedido = filtro();
  buscados_.reset();
  if (todos_.recortada && !pedido.palabras.isEmpty()) buscados_ = recoger(pedido);
  llenar(pedido, anterior);
}

void VentanaHallazgos::llenar(const Filtro& filtro, const remesa::Hallazgo& senalado) {
  const int fila = ui_->Visor->currentIndex().row();
  const Recogida& recogida = buscados_ ? *buscados_ : todos_;
  const std::vector<remesa::Hallazgo>& origen = recogida.hallazgos;
  std::vector<std::size_t> vistos;
  vistos.reserve(origen.size());
  for (std::size_t i = 0; i < origen.size(); ++i)
    if (filtro.admite(origen[i].codigo) && filtro.cumple(recogida.plegadas[i])) vistos.push_back(i);
  // Los errores, delante; en cada nivel, primero lo del fichero entero y luego por registros.
  std::ranges::stable_sort(vistos, {}, [&](std::size_t i) {
    return std::pair(!remesa::EsError(origen[i].codigo), origen[i].registro);
  });
  {
    const comunes::SinRedibujo quieta(rejilla_);
    rejilla_.PonerRows(rejilla_.FixedRows());
    rejilla_.PonerRows(rejilla_.FixedRows() + static_cast<int>(vistos.size()));
    int nueva = rejilla_.FixedRows();
    for (const std::size_t i : vistos) {
      int columna = 0;
      for (const QString& celda : recogida.celdas[i])
        rejilla_.PonerTextMatrix(nueva, columna++, celda);
      rejilla_.PonerRowItem(nueva, static_cast<int>(i));
      if (remesa::EsError(origen[i].codigo)) rejilla_.PonerEstilo(nueva, 0, {.Negrita = true});
      ++nueva;
    }
  }
  resumir();
  elegidos_ = false;
  const QScopedValueRollback senalando(senalando_, true);
  if (ordenada_ >= 0) ordenar(ordenada_);
  const int filas = modelo_->rowCount();
  if (filas > 0) ui_->Visor->setCurrentIndex(modelo_->index(std::clamp(fila, 0, filas - 1), 0));
  senalar([&](const remesa::Hallazgo& h) {
    return h.codigo == senalado.codigo && h.registro == senalado.registro &&
           h.donde.desde == senalado.donde.desde;
  });
  detallar();
}

void VentanaHallazgos::resumir() {
  const remesa::ResultadoComprobacion& resultado = todos_.resultado;
  QString resumen = u"%1: %2, %3."_s.arg(comunes::ConMarcasEscritas(comprobada_.titulo()),
                                         TextoCuenta(resultado.registros, u"registro"_s, u"registros"_s),
                                         TextoRecuento(resultado.errores, resultado.avisos));
  const Recogida& vista = buscados_ ? *buscados_ : todos_;
  if (vista.recortada)
    resumen += u" Se muestran los primeros %1 de cada código."_s.arg(
        comunes::FormatoNumero(static_cast<double>(kPrimeros), 0));
  if (const QString nota = comprobada_.nota ? comprobada_.nota() : QString(); !nota.isEmpty())
    resumen += u' ' + nota;
  if (!vista.resultado.completa) resumen += u" Comprobación detenida antes de acabar."_s;
  ui_->Resumen->setText(resumen);
  const auto filas = static_cast<std::uint64_t>(modelo_->rowCount());
  const std::uint64_t hay = resultado.errores + resultado.avisos;
  ui_->Cuenta->setText(filas == hay ? QString()
                                    : u"%1 de %2"_s.arg(comunes::FormatoNumero(static_cast<double>(filas), 0),
                                                        comunes::FormatoNumero(static_cast<double>(hay), 0)));
}

void VentanaHallazgos::ordenar(int columna) {
  const remesa::Hallazgo* senalado = actual();
  const QScopedValueRollback senalando(senalando_, true);
  {
    const comunes::SinRedibujo quieta(rejilla_);
    for (int otra = 0; otra < rejilla_.Cols(); ++otra)
      rejilla_.PonerEstilo(0, otra, {});
    comunes::OrdenarColumna(rejilla_, columna, true);
  }
  ordenada_ = columna;
  // Ordenar no deja ninguna fila actual: lo es la del mismo hallazgo, esté ahora donde esté.
  senalar([&](const remesa::Hallazgo& h) { return &h == senalado; });
  detallar();
}

void VentanaHallazgos::senalar(const std::function<bool(const remesa::Hallazgo&)>& cual) {
  for (int fila = 0; fila < modelo_->rowCount(); ++fila)
    if (const remesa::Hallazgo* h = hallazgoDe(fila); h != nullptr && cual(*h))
      return ui_->Visor->setCurrentIndex(modelo_->index(fila, 0));
}

void VentanaHallazgos::Apartar(const QRect& zona) {
  const QRect libre = screen()->availableGeometry();
  const QRect marco = frameGeometry();
  if (!marco.intersects(zona)) return;
  if (zona.bottom() + marco.height() <= libre.bottom())
    move(marco.left(), zona.bottom() + 1);
  else if (zona.top() - marco.height() >= libre.top())
    move(marco.left(), zona.top() - marco.height());
}

const remesa::Hallazgo* VentanaHallazgos::hallazgoDe(int fila) const {
  const std::vector<remesa::Hallazgo>& origen = buscados_ ? buscados_->hallazgos : todos_.hallazgos;
  const int cual = modelo_->index(fila, 0).data(comunes::ModeloRejilla::kElemento).toInt();
  return cual >= 0 && cual < std::ssize(origen) ? &origen[static_cast<std::size_t>(cual)] : nullptr;
}

const remesa::Hallazgo* VentanaHallazgos::actual() const {
  const QModelIndex indice = ui_->Visor->currentIndex();
  return indice.isValid() ? hallazgoDe(indice.row()) : nullptr;
}

std::vector<remesa::Hallazgo> VentanaHallazgos::elegidos() const {
  std::vector<int> filas;
  for (const QModelIndex& indice : ui_->Visor->selectionModel()->selectedRows())
    filas.push_back(indice.row());
  std::ranges::sort(filas);
  std::vector<remesa::Hallazgo> hallazgos;
  hallazgos.reserve(filas.size());
  for (const int fila : filas)
    if (const remesa::Hallazgo* hallazgo = hallazgoDe(fila)) hallazgos.push_back(*hallazgo);
  return hallazgos;
}

void VentanaHallazgos::detallar() {
  const remesa::Hallazgo* hallazgo = actual();
  ui_->cmdIr->setEnabled(hallazgo != nullptr && hallazgo->registro > 0);
  ui_->Detalle->setText(hallazgo == nullptr ? QString() : TextoHallazgo(*hallazgo));
}

void VentanaHallazgos::decir(const QString& texto, const QString& documento) {
  ui_->Mensaje->setText(comunes::SinControles(texto));
  ui_->Mensaje->setToolTip(comunes::TextoLiteral(texto));
  documento_ = documento;
  ui_->AbrirListado->setVisible(!documento.isEmpty());
}

void VentanaHallazgos::caducar() {
  if (caducada_) return;
  caducada_ = true;
  ui_->Resumen->setText(ui_->Resumen->text() + u" Ha cambiado desde entonces."_s);
}

void VentanaHallazgos::ir() {
  if (caducada_) {
    comprobar();
    ui_->Resumen->setText(ui_->Resumen->text() + u" Había cambiado y se ha comprobado otra vez."_s);
    return;
  }
  const remesa::Hallazgo* hallazgo = actual();
  if (hallazgo == nullptr || hallazgo->registro == 0) return;
  if (!comprobada_.ir(*hallazgo)) {
    ui_->Detalle->setText(u"Ese registro ya no está: el fichero ha cambiado. Compruébelo de nuevo."_s);
    return;
  }
  if (caducada_) comprobar();
}

}  // namespace principal
