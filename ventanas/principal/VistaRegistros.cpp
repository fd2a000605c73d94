#include "ventanas/principal/VistaRegistros.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScrollBar>
#include <algorithm>

#include "ventanas/principal/DelegadoRegistro.h"
#include "ventanas/principal/MarcoFoco.h"
#include "ventanas/principal/ReglaPosiciones.h"

namespace principal {

VistaRegistros::VistaRegistros(QWidget* padre)
    : QListView(padre),
      modelo_(new ModeloRegistros(this)),
      columnas_(font()),
      regla_(new ReglaPosiciones(this)) {
  setUniformItemSizes(true);
  setHorizontalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
  setMouseTracking(true);
  setItemDelegate(new DelegadoRegistro(this));
  setModel(modelo_);
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
  const int x = columnas_.x(posicion);
  const int ancho = viewport()->width();
  if (x < desplazamiento() || x + columnas_.ancho() > desplazamiento() + ancho)
    horizontalScrollBar()->setValue(x - ancho / 3);
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
  emit bajoRaton(indice.row(), columnas_.posicionEn(punto.x() + desplazamiento()));
  QListView::mouseMoveEvent(evento);
}

void VistaRegistros::scrollContentsBy(int dx, int dy) {
  QListView::scrollContentsBy(dx, dy);
  if (dx != 0) regla_->update();
}

void VistaRegistros::updateGeometries() {
  const int alto = regla_->alto();
  if (viewportMargins().top() != alto) setViewportMargins(0, alto, 0, 0);
  QListView::updateGeometries();
  const QRect zona = viewport()->geometry();
  regla_->setGeometry(zona.left(), zona.top() - alto, zona.width(), alto);
  horizontalScrollBar()->setSingleStep(columnas_.ancho());
}

void VistaRegistros::dataChanged(const QModelIndex& desde, const QModelIndex& hasta,
                                 const QList<int>& papeles) {
  // QListView recolocaría todas las filas y su base mediría una a una las del intervalo; aquí miden siempre
  // lo mismo.
  if (desde == hasta)
    QAbstractItemView::dataChanged(desde, hasta, papeles);  // NOLINT(bugprone-parent-virtual-call)
  else
    viewport()->update();
}

void VistaRegistros::currentChanged(const QModelIndex& actual, const QModelIndex& anterior) {
  QListView::currentChanged(actual, anterior);
  // La marca de la fila actual es cosa del delegado: hay que repintar la que deja de serlo.
  if (anterior.isValid()) update(anterior);
  if (actual.isValid()) update(actual);
}

void VistaRegistros::selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) {
  QListView::selectionChanged(nueva, anterior);
  // Una ayuda técnica selecciona sin hacer actual; con el ratón y el teclado la fila ya lo es o va a serlo.
  if (nueva.size() == 1 && nueva.first().height() == 1) ponerActual(nueva.first().top());
}

}  // namespace principal
