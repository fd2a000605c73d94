#include "ventanas/principal/VentanaHallazgos.h"

#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <algorithm>

#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "comunes/rejilla/Orden.h"
#include "ui_VentanaHallazgos.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// Más no los lee nadie, y una remesa enorme puede tener millones.
constexpr std::size_t kMaximo = 5000;

constexpr const char* kColumnas =
    "<Nivel#7;<Código#7;>Registro#9>;<Posiciones#11;<Campo#28;<Valor#24;<Se esperaba#30;<Deudor#24;"
    "<Referencia#18;<Qué pasa y qué hacer#60";
/// El tipo de cada columna, para ordenarla.
constexpr const char* kTipos = "TT#TTTTTTT";

QString Posiciones(const remesa::Hallazgo& h) {
  if (h.donde.desde == 0) return {};
  return h.donde.desde == h.donde.hasta ? QString::number(h.donde.desde)
                                        : u"%1-%2"_s.arg(h.donde.desde).arg(h.donde.hasta);
}

}  // namespace

VentanaHallazgos::VentanaHallazgos(OrigenHallazgos comprobada, QWidget* padre)
    : QDialog(padre),
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
  comunes::PrepararRejilla(rejilla_, QString::fromUtf8(kColumnas));
  rejilla_.PonerTag(QLatin1String(kTipos));
  rejilla_.PonerRows(rejilla_.FixedRows());
  modelo_ = std::make_unique<comunes::ModeloRejilla>(rejilla_);
  QTableView& visor = *ui_->Visor;
  visor.setModel(modelo_.get());
  visor.verticalHeader()->hide();
  visor.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  visor.verticalHeader()->setDefaultSectionSize(visor.fontMetrics().height() + 6);
  visor.horizontalHeader()->setHighlightSections(false);
  visor.horizontalHeader()->setSectionsClickable(true);
  for (int columna = 0; columna < rejilla_.Cols(); ++columna) {
    const int ancho = modelo_->AnchoColumna(columna);
    visor.setColumnHidden(columna, ancho <= 0);
    if (ancho > 0) visor.setColumnWidth(columna, ancho);
  }
}

void VentanaHallazgos::conectar() {
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &VentanaHallazgos::detallar);
  connect(ui_->Visor, &QTableView::doubleClicked, this, &VentanaHallazgos::ir);
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(tecla, ui_->Visor, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, &VentanaHallazgos::ir);
  connect(ui_->Visor->horizontalHeader(), &QHeaderView::sectionClicked, this, &VentanaHallazgos::ordenar);
  connect(ui_->cmdIr, &QPushButton::clicked, this, &VentanaHallazgos::ir);
  connect(ui_->cmdRepetir, &QPushButton::clicked, this, &VentanaHallazgos::comprobar);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
}

void VentanaHallazgos::comprobar() {
  const int fila = ui_->Visor->currentIndex().row();
  const remesa::Hallazgo* senalado = actual();
  const remesa::Hallazgo anterior = senalado ? *senalado : remesa::Hallazgo();
  caducar();  // si no se puede comprobar, lo que se ve sigue siendo lo de antes
  std::vector<remesa::Hallazgo> nuevos;
  std::size_t errores = 0, avisos = 0;
  const auto recoger = [&](remesa::Hallazgo&& hallazgo) {
    std::size_t& cuantos = remesa::EsError(hallazgo.codigo) ? errores : avisos;
    if (cuantos == kMaximo) return;
    ++cuantos;
    nuevos.push_back(std::move(hallazgo));
  };
  remesa::ResultadoComprobacion resultado;
  {
    const comunes::Reloj reloj;
    comunes::Avance avance(u"Comprobando…"_s);
    resultado = comprobada_.comprobar(recoger, [&](std::uintmax_t mirados, std::uintmax_t total) {
      return avance.avanzar(static_cast<double>(mirados), static_cast<double>(total));
    });
  }
  // Los errores, delante; en cada nivel, primero lo del fichero entero y luego por registros.
  std::ranges::stable_sort(nuevos, {}, [](const remesa::Hallazgo& h) {
    return std::pair(!remesa::EsError(h.codigo), h.registro);
  });
  hallazgos_ = std::move(nuevos);
  caducada_ = false;
  llenar(resultado);
  if (ordenada_ >= 0) ordenar(ordenada_);
  const int filas = modelo_->rowCount();
  if (filas > 0) ui_->Visor->setCurrentIndex(modelo_->index(std::clamp(fila, 0, filas - 1), 0));
  senalar([&](const remesa::Hallazgo& h) {
    return h.codigo == anterior.codigo && h.registro == anterior.registro &&
           h.donde.desde == anterior.donde.desde;
  });
  detallar();
}

void VentanaHallazgos::llenar(const remesa::ResultadoComprobacion& resultado) {
  {
    const comunes::SinRedibujo quieta(rejilla_);
    rejilla_.PonerRows(rejilla_.FixedRows());
    rejilla_.PonerRows(rejilla_.FixedRows() + static_cast<int>(hallazgos_.size()));
    int fila = rejilla_.FixedRows();
    for (const remesa::Hallazgo& h : hallazgos_) {
      const QString celdas[] = {TextoNivel(h.codigo),
                                QString::fromUtf8(remesa::TextoCodigo(h.codigo).data()),
                                h.registro == 0 ? QString() : QString::number(h.registro),
                                Posiciones(h),
                                TextoCampo(h),
                                TextoValor(h),
                                TextoEsperado(h),
                                comunes::DesdeWindows1252(h.deudor),
                                comunes::DesdeWindows1252(h.referencia),
                                TextoHallazgo(h)};
      int columna = 0;
      for (const QString& celda : celdas)
        rejilla_.PonerTextMatrix(fila, columna++, celda);
      rejilla_.PonerRowItem(fila, fila - rejilla_.FixedRows());
      if (remesa::EsError(h.codigo)) rejilla_.PonerEstilo(fila, 0, {.Negrita = true});
      ++fila;
    }
  }
  QString resumen = u"%1: %2, %3."_s.arg(comunes::ConMarcasEscritas(comprobada_.titulo()),
                                         TextoCuenta(resultado.registros, u"registro"_s, u"registros"_s),
                                         TextoRecuento(resultado.errores, resultado.avisos));
  if (resultado.errores + resultado.avisos > hallazgos_.size())
    resumen += u" Se muestran los primeros %1 de cada nivel."_s.arg(kMaximo);
  if (const QString nota = comprobada_.nota ? comprobada_.nota() : QString(); !nota.isEmpty())
    resumen += u' ' + nota;
  if (!resultado.completa) resumen += u" Comprobación detenida antes de acabar."_s;
  ui_->Resumen->setText(resumen);
}

void VentanaHallazgos::ordenar(int columna) {
  const remesa::Hallazgo* senalado = actual();
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
  const int cual = modelo_->index(fila, 0).data(comunes::ModeloRejilla::kElemento).toInt();
  return cual >= 0 && cual < std::ssize(hallazgos_) ? &hallazgos_[static_cast<std::size_t>(cual)] : nullptr;
}

const remesa::Hallazgo* VentanaHallazgos::actual() const {
  const QModelIndex indice = ui_->Visor->currentIndex();
  return indice.isValid() ? hallazgoDe(indice.row()) : nullptr;
}

void VentanaHallazgos::detallar() {
  const remesa::Hallazgo* hallazgo = actual();
  ui_->cmdIr->setEnabled(hallazgo != nullptr && hallazgo->registro > 0);
  ui_->Detalle->setText(hallazgo == nullptr ? QString() : TextoHallazgo(*hallazgo));
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
