#include "ventanas/principal/VistaRegistros.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "ventanas/principal/CabeceraColumnas.h"
#include "ventanas/principal/DelegadoColumnas.h"
#include "ventanas/principal/DelegadoRegistro.h"
#include "ventanas/principal/MarcoFoco.h"
#include "ventanas/principal/ReglaPosiciones.h"

namespace principal {

using namespace Qt::StringLiterals;

VistaRegistros::VistaRegistros(QWidget* padre)
    : QListView(padre),
      modelo_(new ModeloRegistros(this)),
      columnas_(font()),
      regla_(new ReglaPosiciones(this)),
      cabecera_(new CabeceraColumnas(this)) {
  setUniformItemSizes(true);
  setHorizontalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
  setMouseTracking(true);
  setItemDelegate(new DelegadoRegistro(this));
  setModel(modelo_);
  cabecera_->hide();
  connect(cabecera_, &QHeaderView::sectionResized, this, [this] {
    if (modo_ != Modo::Columnas) return;
    viewport()->update();
    scheduleDelayedItemsLayout();
  });
  connect(cabecera_, &CabeceraColumnas::ratonEncima, this, [this] { emit bajoRaton(-1, 0); });
  connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& i) { emit dobleClic(i.row()); });
  connect(regla_, &ReglaPosiciones::posicionBajoRaton, this, [this](int p) { emit bajoRaton(-1, p); });
  PrepararMarcoFoco(*this);
}

bool VistaRegistros::event(QEvent* evento) {
  const bool atendido = QListView::event(evento);
  AtenderMarcoFoco(*this, *evento);
  return atendido;
}

void VistaRegistros::reset() {
  // Lo que un registro lleve de más se perderá al guardar: ha de poder verse.
  std::size_t largo = 0;
  for (const std::string_view registro : lista())
    largo = std::max(largo, registro.size());
  columnas_.ponerUltima(largo);
  QListView::reset();
  emit actualCambiado();
}

void VistaRegistros::ponerModo(Modo modo) {
  if (modo == modo_) return;
  const int y = verticalScrollBar()->value();
  const int x = std::exchange(lateralDelOtro_, horizontalScrollBar()->value());
  modo_ = modo;
  const bool columnas = modo_ == Modo::Columnas;
  regla_->setVisible(!columnas);
  cabecera_->setVisible(columnas);
  QAbstractItemDelegate* anterior = itemDelegate();
  setItemDelegate(columnas ? new DelegadoColumnas(this) : new DelegadoRegistro(this));
  delete anterior;
  updateGeometries();
  executeDelayedItemsLayout();
  horizontalScrollBar()->setValue(x);
  verticalScrollBar()->setValue(y);
}

QString VistaRegistros::textoFila(int fila) const {
  if (modo_ == Modo::Texto) return modelo_->index(fila).data().toString();
  const auto i = static_cast<std::size_t>(fila);
  QStringList celdas;
  for (const Columna columna : cabecera_->visibles())
    if (const QString celda = TextoCelda(lista()[i], i + 1, columna); !celda.isEmpty()) celdas << celda;
  return celdas.join(u" · "_s);
}

void VistaRegistros::poner(remesa::ListaRegistros lista) {
  modelo_->cambiar([&](remesa::ListaRegistros& l) { l = std::move(lista); });
  scrollToTop();
}

void VistaRegistros::cambiar(const ModeloRegistros::Cambio& cambio) {
  const int y = verticalScrollBar()->value();
  const int x = horizontalScrollBar()->value();
  const auto alSalir = qScopeGuard([&] {
    executeDelayedItemsLayout();
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
  });
  modelo_->cambiar(cambio);
}

void VistaRegistros::ponerActual(int fila) {
  selectionModel()->setCurrentIndex(modelo_->index(fila), QItemSelectionModel::NoUpdate);
}

void VistaRegistros::seleccionarSolo(int fila) {
  selectionModel()->setCurrentIndex(modelo_->index(fila), QItemSelectionModel::ClearAndSelect);
}

void VistaRegistros::mostrarPosicion(int posicion) {
  int x = columnas_.x(posicion);
  int suyo = columnas_.ancho();
  if (modo_ == Modo::Columnas) {
    const int columna =
        actual() < 0 ? -1 : ColumnaDePosicion(lista()[static_cast<std::size_t>(actual())], posicion);
    if (columna < 0 || cabecera_->isSectionHidden(columna)) return;
    x = cabecera_->sectionPosition(columna);
    suyo = cabecera_->sectionSize(columna);
  }
  const int ancho = viewport()->width();
  if (x < desplazamiento() || x + suyo > desplazamiento() + ancho)
    horizontalScrollBar()->setValue(x - ancho / 3);
}

int VistaRegistros::columnaEn(int x) const {
  return cabecera_->logicalIndexAt(x);
}

int VistaRegistros::posicionBajo(const QModelIndex& indice, int x) const {
  if (modo_ == Modo::Texto) return columnas_.posicionEn(x + desplazamiento());
  const int columna = columnaEn(x);
  if (!indice.isValid() || columna < 0) return 0;
  const remesa::Campo* campo =
      CampoDe(lista()[static_cast<std::size_t>(indice.row())], static_cast<Columna>(columna));
  return campo ? campo->donde.desde : 0;
}

std::vector<VistaRegistros::Tramo> VistaRegistros::tramosSeleccionados() const {
  std::vector<Tramo> tramos;
  const QItemSelection intervalos = selectionModel()->selection();
  tramos.reserve(static_cast<std::size_t>(intervalos.size()));
  for (const QItemSelectionRange& intervalo : intervalos)
    if (intervalo.isValid()) tramos.emplace_back(intervalo.top(), intervalo.bottom());
  std::sort(tramos.begin(), tramos.end());
  std::size_t ultimo = 0;
  for (std::size_t i = 1; i < tramos.size(); ++i) {
    if (tramos[i].first <= tramos[ultimo].second + 1)
      tramos[ultimo].second = std::max(tramos[ultimo].second, tramos[i].second);
    else
      tramos[++ultimo] = tramos[i];
  }
  if (!tramos.empty()) tramos.resize(ultimo + 1);
  return tramos;
}

std::vector<std::size_t> VistaRegistros::seleccion() const {
  std::vector<std::size_t> filas;
  for (const auto& [primera, ultima] : tramosSeleccionados())
    for (int fila = primera; fila <= ultima; ++fila)
      filas.push_back(static_cast<std::size_t>(fila));
  return filas;
}

void VistaRegistros::seleccionarTramos(std::span<const Tramo> tramos) {
  // De una vez: Qt compara cada intervalo nuevo con todos los anteriores.
  QItemSelection seleccion;
  seleccion.reserve(static_cast<qsizetype>(tramos.size()));
  for (const auto& [primera, ultima] : tramos)
    seleccion.append(QItemSelectionRange(modelo_->index(primera), modelo_->index(ultima)));
  selectionModel()->select(seleccion, QItemSelectionModel::ClearAndSelect);
}

void VistaRegistros::seleccionar(std::span<const std::size_t> filas) {
  std::vector<Tramo> tramos;
  for (const std::size_t cual : filas) {
    const int fila = static_cast<int>(cual);
    if (!tramos.empty() && tramos.back().second + 1 == fila)
      tramos.back().second = fila;
    else
      tramos.emplace_back(fila, fila);
  }
  seleccionarTramos(tramos);
}

void VistaRegistros::changeEvent(QEvent* evento) {
  if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) {
    const int ultima = columnas_.ultima();
    columnas_ = Columnas(font());
    columnas_.ponerUltima(static_cast<std::size_t>(ultima));
    scheduleDelayedItemsLayout();
  }
  QListView::changeEvent(evento);
}

void VistaRegistros::contextMenuEvent(QContextMenuEvent* evento) {
  if (evento->reason() == QContextMenuEvent::Keyboard) return pedirMenuDeTeclado();
  const QModelIndex indice = indexAt(viewport()->mapFromGlobal(evento->globalPos()));
  if (indice.isValid() && !selectionModel()->isSelected(indice)) seleccionarSolo(indice.row());
  emit menuPedido(evento->globalPos());
}

void VistaRegistros::pedirMenuDeTeclado() {
  if (currentIndex().isValid() && !selectionModel()->hasSelection()) seleccionarSolo(actual());
  const QRect fila = visualRect(currentIndex()) & viewport()->rect();
  emit menuPedido(viewport()->mapToGlobal(fila.isEmpty() ? viewport()->rect().center() : fila.bottomLeft()));
}

void VistaRegistros::focusInEvent(QFocusEvent* evento) {
  // Recibir el foco no hace actual ningún registro: una inserción no debe caer donde nadie señaló.
  const bool habia = currentIndex().isValid();
  QListView::focusInEvent(evento);
  if (!habia && currentIndex().isValid()) selectionModel()->clearCurrentIndex();
}

void VistaRegistros::keyPressEvent(QKeyEvent* evento) {
  switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
      if (currentIndex().isValid()) emit dobleClic(actual());
      return;
    case Qt::Key_Left:
    case Qt::Key_Right: {
      const int paso = ((evento->modifiers() & Qt::ControlModifier) ? 50 : 10) * columnas_.ancho();
      QScrollBar* barra = horizontalScrollBar();
      barra->setValue(barra->value() + (evento->key() == Qt::Key_Left ? -paso : paso));
      return;
    }
    case Qt::Key_C:
    case Qt::Key_Insert:
      if (evento->matches(QKeySequence::Copy)) return emit copiaPedida(false);
      if (evento->key() == Qt::Key_C && evento->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        return emit copiaPedida(true);
      return QListView::keyPressEvent(evento);
    case Qt::Key_F10:
      if (evento->modifiers() == Qt::ShiftModifier) return pedirMenuDeTeclado();
      [[fallthrough]];
    default:
      QListView::keyPressEvent(evento);
  }
}

void VistaRegistros::leaveEvent(QEvent* evento) {
  emit bajoRaton(-1, 0);
  QListView::leaveEvent(evento);
}

void VistaRegistros::mouseDoubleClickEvent(QMouseEvent* evento) {
  // Solo el botón izquierdo abre.
  if (evento->button() == Qt::LeftButton) QListView::mouseDoubleClickEvent(evento);
}

void VistaRegistros::mouseMoveEvent(QMouseEvent* evento) {
  const QPoint punto = evento->position().toPoint();
  const QModelIndex indice = indexAt(punto);
  emit bajoRaton(indice.row(), posicionBajo(indice, punto.x()));
  QListView::mouseMoveEvent(evento);
}

void VistaRegistros::scrollContentsBy(int dx, int dy) {
  QListView::scrollContentsBy(dx, dy);
  if (dx == 0) return;
  regla_->update();
  cabecera_->setOffset(desplazamiento());
}

void VistaRegistros::updateGeometries() {
  const bool columnas = modo_ == Modo::Columnas;
  const int alto = columnas ? cabecera_->alto() : regla_->alto();
  if (viewportMargins().top() != alto) setViewportMargins(0, alto, 0, 0);
  QListView::updateGeometries();
  const QRect zona = viewport()->geometry();
  (columnas ? static_cast<QWidget*>(cabecera_) : regla_)
      ->setGeometry(zona.left(), zona.top() - alto, zona.width(), alto);
  cabecera_->setOffset(desplazamiento());
  horizontalScrollBar()->setSingleStep(columnas_.ancho());
}

bool VistaRegistros::viewportEvent(QEvent* evento) {
  if (evento->type() != QEvent::ToolTip || modo_ != Modo::Columnas) return QListView::viewportEvent(evento);
  // La celda que no cabe se lee entera.
  const auto* ayuda = static_cast<QHelpEvent*>(evento);
  const QModelIndex indice = indexAt(ayuda->pos());
  const int columna = columnaEn(ayuda->pos().x());
  QString celda;
  if (indice.isValid() && columna >= 0) {
    const auto i = static_cast<std::size_t>(indice.row());
    celda = TextoCelda(lista()[i], i + 1, static_cast<Columna>(columna));
    if (cabecera_->fontMetrics().horizontalAdvance(celda) <=
        cabecera_->sectionSize(columna) - 2 * CabeceraColumnas::kMargen)
      celda.clear();
  }
  QToolTip::showText(ayuda->globalPos(),
                     celda.isEmpty() ? QString() : u"<span>"_s + celda.toHtmlEscaped() + u"</span>"_s,
                     viewport());
  return true;
}

void VistaRegistros::dataChanged(const QModelIndex& desde, const QModelIndex& hasta,
                                 const QList<int>& papeles) {
  // QListView recolocaría todas las filas y su base mediría una a una las del intervalo; aquí miden siempre
  // lo mismo.
  if (desde == hasta)
    QAbstractItemView::dataChanged(desde, hasta, papeles);  // NOLINT(bugprone-parent-virtual-call)
  else
    viewport()->update();
  if (actual() >= desde.row() && actual() <= hasta.row()) emit actualCambiado();
}

void VistaRegistros::currentChanged(const QModelIndex& actual, const QModelIndex& anterior) {
  QListView::currentChanged(actual, anterior);
  // La marca de la fila actual es cosa del delegado: hay que repintar la que deja de serlo.
  if (anterior.isValid()) update(anterior);
  if (actual.isValid()) update(actual);
  emit actualCambiado();
}

void VistaRegistros::selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) {
  QListView::selectionChanged(nueva, anterior);
  // Una ayuda técnica selecciona sin hacer actual; con el ratón y el teclado la fila ya lo es o va a serlo.
  if (nueva.size() == 1 && nueva.first().height() == 1) ponerActual(nueva.first().top());
}

}  // namespace principal
