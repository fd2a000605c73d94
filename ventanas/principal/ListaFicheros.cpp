#include "ventanas/principal/ListaFicheros.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSet>
#include <QStringListModel>
#include <algorithm>
#include <utility>

#include "comunes/plataforma/Iconos.h"
#include "ventanas/principal/MarcoFoco.h"
#include "ventanas/principal/Patrones.h"
#include "ventanas/principal/TextoVacio.h"

namespace principal {

using namespace Qt::StringLiterals;

/// Los nombres, con su señal los importados.
class ModeloFicheros : public QStringListModel {
 public:
  using QStringListModel::QStringListModel;

  QVariant data(const QModelIndex& indice, int papel) const override {
    const bool deSenal = papel == Qt::DecorationRole || papel == Qt::AccessibleTextRole;
    if (!deSenal || !indice.isValid()) return QStringListModel::data(indice, papel);
    const QString nombre = QStringListModel::data(indice, Qt::DisplayRole).toString();
    const bool suyo = importado && importado(nombre);
    if (papel == Qt::DecorationRole) return suyo ? QVariant(senal_) : QVariant();
    return suyo ? nombre + u", importado"_s : nombre;
  }

  std::function<bool(const QString& nombre)> importado;

 private:
  QIcon senal_ = comunes::Icono(comunes::Pictograma::Correcto);
};

ListaFicheros::ListaFicheros(QWidget* padre) : QListView(padre), modelo_(new ModeloFicheros(this)) {
  setUniformItemSizes(true);
  setSpacing(1);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setModel(modelo_);
  vacio_ = new TextoVacio(*this);  // NOLINT(cppcoreguidelines-prefer-member-initializer): mira el modelo
  PrepararMarcoFoco(*this);
}

bool ListaFicheros::event(QEvent* evento) {
  const bool atendido = QListView::event(evento);
  AtenderMarcoFoco(*this, *evento);
  return atendido;
}

void ListaFicheros::ponerCarpeta(const QString& carpeta) {
  carpeta_ = carpeta;
  leer();
  scrollToTop();
}

void ListaFicheros::ponerPatron(const QString& patron) {
  patron_ = patron;
  vacio_->poner(u"Ningún fichero cumple %1"_s.arg(patron));
  if (!carpeta_.isEmpty()) leer();
}

void ListaFicheros::leer() {
  const QScopedValueRollback propio(aMano_, true);
  modelo_->setStringList(FicherosDe(carpeta_, patron_));
}

void ListaFicheros::refrescar() {
  const QStringList nombres = FicherosDe(carpeta_, patron_);
  if (nombres == modelo_->stringList()) return;
  const QString actual = currentIndex().data().toString();
  const QStringList resaltados = marcados();
  const int altura = verticalScrollBar()->value();
  const QScopedValueRollback propio(aMano_, true);
  modelo_->setStringList(nombres);
  selectionModel()->setCurrentIndex(indice(actual), QItemSelectionModel::NoUpdate);
  seleccionar(resaltados);
  verticalScrollBar()->setValue(altura);
}

QModelIndex ListaFicheros::indice(const QString& nombre) const {
  return modelo_->index(static_cast<int>(modelo_->stringList().indexOf(nombre)), 0);
}

void ListaFicheros::marcar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->setCurrentIndex(indice(nombre), QItemSelectionModel::ClearAndSelect);
}

void ListaFicheros::seleccionar(const QStringList& nombres) {
  const QSet<QString> cuales(nombres.begin(), nombres.end());
  const QStringList todos = modelo_->stringList();
  QItemSelection seleccion;
  for (int fila = 0; fila < todos.size(); ++fila)
    if (cuales.contains(todos[fila])) seleccion.select(modelo_->index(fila, 0), modelo_->index(fila, 0));
  selectionModel()->select(seleccion, QItemSelectionModel::ClearAndSelect);
}

void ListaFicheros::marcarVarios(const QStringList& nombres) {
  const QScopedValueRollback propio(aMano_, true);
  seleccionar(nombres);
  if (!marcados().isEmpty())
    selectionModel()->setCurrentIndex(indice(marcados().last()), QItemSelectionModel::NoUpdate);
}

void ListaFicheros::desmarcar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->select(indice(nombre), QItemSelectionModel::Deselect);
}

void ListaFicheros::resaltar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  const QModelIndex cual = indice(nombre);
  if (!selectionModel()->isSelected(cual))
    selectionModel()->select(cual, QItemSelectionModel::ClearAndSelect);
}

QString ListaFicheros::marcado() const {
  return marcados().value(0);
}

QStringList ListaFicheros::marcados() const {
  QModelIndexList indices = selectionModel()->selectedIndexes();
  std::ranges::sort(indices, {}, &QModelIndex::row);
  QStringList nombres;
  nombres.reserve(indices.size());
  for (const QModelIndex& cual : std::as_const(indices))
    nombres << cual.data().toString();
  return nombres;
}

void ListaFicheros::ponerImportado(std::function<bool(const QString& nombre)> importado) {
  modelo_->importado = std::move(importado);
}

void ListaFicheros::renovarSenales() {
  if (modelo_->rowCount() == 0) return;
  emit modelo_->dataChanged(modelo_->index(0, 0), modelo_->index(modelo_->rowCount() - 1, 0),
                            {Qt::DecorationRole, Qt::AccessibleTextRole});
}

void ListaFicheros::initViewItemOption(QStyleOptionViewItem* opcion) const {
  QListView::initViewItemOption(opcion);
  // Detrás del nombre, que no se corre; y sin hacer la fila más alta.
  opcion->decorationPosition = QStyleOptionViewItem::Right;
  const int lado = fontMetrics().ascent();
  opcion->decorationSize = {lado, lado};
}

void ListaFicheros::elegir() {
  pendiente_ = false;
  const QModelIndex actual = currentIndex();
  if (!actual.isValid()) return;
  QString ver = actual.data().toString();
  if (!selectionModel()->isSelected(actual)) {
    // Se ha quitado de los elegidos: se ve el último de los que quedan. El único no se puede quitar.
    const QStringList quedan = marcados();
    if (quedan.isEmpty())
      marcar(ver);
    else
      ver = quedan.last();
  }
  emit elegido(ver);
}

void ListaFicheros::focusInEvent(QFocusEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  const bool habia = currentIndex().isValid();
  QListView::focusInEvent(evento);
  if (!habia && currentIndex().isValid()) selectionModel()->clearCurrentIndex();
}

void ListaFicheros::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
    resaltar(currentIndex().data().toString());
    elegir();
    return;
  }
  if (evento->key() == Qt::Key_F10 && evento->modifiers() == Qt::ShiftModifier) return pedirMenu();
  const QModelIndex antes = currentIndex();
  const QStringList resaltados = marcados();
  {
    const QScopedValueRollback propio(aMano_, true);
    QListView::keyPressEvent(evento);
  }
  // Con Ctrl, las flechas se mueven sin elegir.
  const bool alli = currentIndex() != antes && selectionModel()->isSelected(currentIndex());
  // cppcheck-suppress knownConditionTrueFalse ; la tecla los cambia
  if (!alli && marcados() == resaltados) return;
  if (evento->isAutoRepeat()) {
    pendiente_ = true;
  } else {
    elegir();
  }
}

void ListaFicheros::keyReleaseEvent(QKeyEvent* evento) {
  QListView::keyReleaseEvent(evento);
  if (!evento->isAutoRepeat() && pendiente_) elegir();
}

void ListaFicheros::contextMenuEvent(QContextMenuEvent* evento) {
  if (evento->reason() == QContextMenuEvent::Keyboard) return pedirMenu();
  const QModelIndex cual = indexAt(evento->pos());
  emit menuPedido(cual.data().toString(), evento->globalPos());
}

/// Con el teclado, el de la fila en que se está.
void ListaFicheros::pedirMenu() {
  const QModelIndex cual = currentIndex();
  emit menuPedido(cual.data().toString(), viewport()->mapToGlobal(visualRect(cual).bottomLeft()));
}

void ListaFicheros::mousePressEvent(QMouseEvent* evento) {
  // Con otro botón la marca se movería sin elegir, y se importaría un fichero distinto del resaltado.
  if (evento->button() != Qt::LeftButton) return;
  pendiente_ = indexAt(evento->pos()).isValid();
  if (!pendiente_) return;
  const QScopedValueRollback propio(aMano_, true);
  QListView::mousePressEvent(evento);
}

void ListaFicheros::mouseMoveEvent(QMouseEvent* evento) {
  if (evento->buttons() != Qt::NoButton && !pendiente_) return;
  const QScopedValueRollback propio(aMano_, true);
  QListView::mouseMoveEvent(evento);
}

void ListaFicheros::mouseReleaseEvent(QMouseEvent* evento) {
  if (evento->button() != Qt::LeftButton) return;
  QListView::mouseReleaseEvent(evento);
  // El segundo clic de un doble clic no llega como pulsación y no vuelve a cargar lo que cargó el primero.
  if (pendiente_) elegir();
}

void ListaFicheros::mouseDoubleClickEvent(QMouseEvent* evento) {
  if (evento->button() != Qt::LeftButton) return;
  const QScopedValueRollback propio(aMano_, true);
  QListView::mouseDoubleClickEvent(evento);
}

void ListaFicheros::selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) {
  QListView::selectionChanged(nueva, anterior);
  // Una selección que no viene del ratón, del teclado ni de esta clase la hace una ayuda técnica: es un clic,
  // o añadir uno a los elegidos o quitarlo.
  if (aMano_ || (nueva.isEmpty() && marcados().isEmpty())) return;
  if (!nueva.isEmpty()) {
    const QScopedValueRollback propio(aMano_, true);
    selectionModel()->setCurrentIndex(nueva.first().topLeft(), QItemSelectionModel::NoUpdate);
  }
  if (std::exchange(porElegir_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        porElegir_ = false;
        elegir();
      },
      Qt::QueuedConnection);
}

}  // namespace principal
