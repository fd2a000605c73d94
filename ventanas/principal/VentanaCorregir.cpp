#include "ventanas/principal/VentanaCorregir.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_VentanaCorregir.h"
#include "ventanas/principal/ModeloCorrecciones.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosCorreccion.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using C = remesa::CodigoHallazgo;

/// Las de los que un registro solo tiene una, sea cual sea el campo que se dijo.
bool UnaPorRegistro(C codigo) {
  return codigo == C::Longitud || codigo == C::FueraDeOrden || codigo == C::RegistroSinUso ||
         codigo == C::Direccion || codigo == C::SinOrdenar;
}

using ClaveHallazgo = std::tuple<std::uint64_t, C, const remesa::Campo*>;

ClaveHallazgo Clave(std::uint64_t registro, C codigo, const remesa::Campo* campo) {
  return {registro, codigo, UnaPorRegistro(codigo) ? nullptr : campo};
}

/// Lo que se ha visto de una corrección: solo eso se hace.
auto Vista(const remesa::Correccion& c) {
  return std::tuple(c.registro, c.codigo, c.donde.desde, c.despues);
}

bool EsTotal(const remesa::Correccion& c) {
  const bool deTotales = c.clase == remesa::ClaseRegistro::TotalesFecha ||
                         c.clase == remesa::ClaseRegistro::TotalesAcreedor ||
                         c.clase == remesa::ClaseRegistro::TotalesGenerales;
  return deTotales && c.campo != nullptr &&
         (c.campo->valor == remesa::ValorCampo::Importe || c.campo->valor == remesa::ValorCampo::Numero);
}

}  // namespace

VentanaCorregir::VentanaCorregir(const remesa::ListaRegistros& lista, Peticion peticion, QWidget* padre)
    : QDialog(padre),
      ui_(std::make_unique<Ui::VentanaCorregir>()),
      peticion_(std::move(peticion)),
      modelo_(new ModeloCorrecciones(this)) {
  buscar(lista);
  ui_->setupUi(this);
  preparar();
  comunes::FuentesVentana(*this);
  comunes::DisponerVentana(*this);
  conectar();
  llenarClases();
  contar();
  ui_->Visor->setCurrentIndex(modelo_->index(0, 0));
  ui_->Visor->setFocus();
}

VentanaCorregir::~VentanaCorregir() {
  ui_->Visor->setModel(nullptr);
}

void VentanaCorregir::buscar(const remesa::ListaRegistros& lista) {
  std::set<ClaveHallazgo> elegidos;
  for (const remesa::Hallazgo& h : peticion_.elegidos)
    elegidos.insert(Clave(h.fila, h.codigo, h.campo));
  remesa::ListaRegistros copia = lista;
  remesa::PeticionCorreccion busqueda{.hoy = peticion_.hoy};
  if (!elegidos.empty())
    busqueda.admitir = [&](const remesa::Correccion& c) {
      return elegidos.contains(Clave(c.registro, c.codigo, c.campo));
    };
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Buscando qué se puede corregir…"_s);
  remesa::ResultadoCorreccion resultado =
      remesa::Corregir(copia, busqueda, [&](std::uintmax_t mirados, std::uintmax_t total) {
        return avance.avanzar(static_cast<double>(mirados), static_cast<double>(total));
      });
  detenida_ = !resultado.quedan.completa;
  if (resultado.impide) impedimento_ = TextoHallazgo(*resultado.impide);
  if (peticion_.sinTotales) totales_ = std::erase_if(resultado.hechas, EsTotal);
  // Las de un registro, en el orden en que se hacen.
  std::ranges::stable_sort(resultado.hechas, {}, &remesa::Correccion::registro);
  modelo_->poner(std::move(resultado.hechas));
}

bool VentanaCorregir::vacia() const {
  return modelo_->correcciones().empty() && totales_ == 0;
}

void VentanaCorregir::preparar() {
  QTableView& visor = *ui_->Visor;
  visor.setModel(modelo_);
  visor.verticalHeader()->hide();
  visor.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  visor.verticalHeader()->setDefaultSectionSize(visor.fontMetrics().height() + 6);
  visor.horizontalHeader()->setHighlightSections(false);
  const int letra = visor.fontMetrics().averageCharWidth();
  constexpr int kLetras[] = {14, 9, 24, 31, 31, 22, 18, 34};
  for (int columna = 0; columna < ModeloCorrecciones::kColumnas; ++columna)
    visor.setColumnWidth(columna, letra * kLetras[columna]);
  for (QWidget* control : {static_cast<QWidget*>(ui_->Totales), static_cast<QWidget*>(ui_->Conservar)})
    control->setVisible(totales_ > 0);
}

void VentanaCorregir::conectar() {
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &VentanaCorregir::detallar);
  connect(modelo_, &QAbstractItemModel::modelReset, this, &VentanaCorregir::detallar);
  connect(modelo_, &QAbstractItemModel::dataChanged, this, &VentanaCorregir::contar);
  connect(new QShortcut(Qt::Key_Space, ui_->Visor, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, this, &VentanaCorregir::alternarSeleccion);
  connect(ui_->Clase, &QComboBox::currentIndexChanged, this, [this](int cual) {
    const QVariant codigo = ui_->Clase->itemData(cual);
    modelo_->ver(codigo.isValid() ? std::optional(static_cast<C>(codigo.toInt())) : std::nullopt);
  });
  connect(ui_->cmdMarcar, &QPushButton::clicked, this, [this] { marcarVisibles(true); });
  connect(ui_->cmdQuitar, &QPushButton::clicked, this, [this] { marcarVisibles(false); });
  connect(ui_->Conservar, &QPushButton::clicked, this, [this] { done(kConservarBloques); });
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

void VentanaCorregir::llenarClases() {
  std::map<C, std::pair<std::size_t, QString>> clases;
  for (const remesa::Correccion& c : modelo_->correcciones()) {
    auto& clase = clases[c.codigo];
    if (clase.first++ == 0) clase.second = TextoCorreccion(c);
  }
  ui_->Clase->addItem(
      u"Todo: %1"_s.arg(TextoCuenta(modelo_->correcciones().size(), u"corrección"_s, u"correcciones"_s)));
  for (const auto& [codigo, clase] : clases)
    ui_->Clase->addItem(u"%1, %2: %3"_s.arg(QString::fromUtf8(remesa::TextoCodigo(codigo).data()),
                                            clase.second, QString::number(clase.first)),
                        static_cast<int>(codigo));
}

void VentanaCorregir::contar() {
  const std::size_t hay = modelo_->correcciones().size(), marcadas = modelo_->marcadas();
  QString texto =
      u"Se puede corregir esto, y nada más: lo que puede ser de dos maneras se queda como está."_s;
  if (hay == 0)
    texto = u"Aparte de los totales, no hay nada que tenga una sola respuesta."_s;
  else if (marcadas < hay)
    texto += u" Marcadas: %1 de %2."_s.arg(marcadas).arg(hay);
  ui_->Resumen->setText(texto);
  ui_->cmdAceptar->setEnabled(marcadas > 0);
}

void VentanaCorregir::detallar() {
  const QModelIndex indice = ui_->Visor->currentIndex();
  if (!indice.isValid()) return ui_->Detalle->clear();
  const remesa::Correccion& c = modelo_->enFila(indice.row());
  ui_->Detalle->setText(comunes::SinControles(u"Había: "_s + TextoAntes(c)) + u'\n' +
                        comunes::SinControles(u"Queda: "_s + TextoDespues(c)));
}

void VentanaCorregir::marcarVisibles(bool si) {
  modelo_->marcar(0, modelo_->rowCount() - 1, si);
}

void VentanaCorregir::alternarSeleccion() {
  const QModelIndex actual = ui_->Visor->currentIndex();
  if (!actual.isValid()) return;
  const bool si = !modelo_->marcadaEnFila(actual.row());
  for (const QItemSelectionRange& filas : ui_->Visor->selectionModel()->selection())
    modelo_->marcar(filas.top(), filas.bottom(), si);
}

remesa::ResultadoCorreccion VentanaCorregir::Corregir(remesa::ListaRegistros& lista) const {
  std::set<decltype(Vista({}))> vistas;
  const auto& correcciones = modelo_->correcciones();
  for (std::size_t i = 0; i < correcciones.size(); ++i)
    if (modelo_->marcada(i)) vistas.insert(Vista(correcciones[i]));
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Corrigiendo…"_s);
  return remesa::Corregir(lista,
                          {.hoy = peticion_.hoy,
                           .admitir = [&](const remesa::Correccion& c) { return vistas.contains(Vista(c)); },
                           .totales = !peticion_.sinTotales},
                          [&](std::uintmax_t mirados, std::uintmax_t total) {
                            return avance.avanzar(static_cast<double>(mirados), static_cast<double>(total));
                          });
}

}  // namespace principal
