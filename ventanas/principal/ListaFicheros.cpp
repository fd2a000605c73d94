#include "ventanas/principal/ListaFicheros.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStringListModel>

#include "ventanas/principal/Patrones.h"

namespace principal {

ListaFicheros::ListaFicheros(QWidget* padre) : QListView(padre), modelo_(new QStringListModel(this)) {
  setUniformItemSizes(true);
  setSpacing(1);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setModel(modelo_);
}

void ListaFicheros::ponerCarpeta(const QString& carpeta) {
  carpeta_ = carpeta;
  leer();
  scrollToTop();
}

void ListaFicheros::ponerPatron(const QString& patron) {
  patron_ = patron;
  if (!carpeta_.isEmpty()) leer();
}

void ListaFicheros::leer() {
  const QScopedValueRollback propio(aMano_, true);
  modelo_->setStringList(FicherosDe(carpeta_, patron_));
}

void ListaFicheros::refrescar() {
  const QStringList nombres = FicherosDe(carpeta_, patron_);
  if (nombres == modelo_->stringList()) return;
  const QString nombre = marcado();
  const int altura = verticalScrollBar()->value();
  {
    const QScopedValueRollback propio(aMano_, true);
    modelo_->setStringList(nombres);
  }
  marcar(nombre);
  verticalScrollBar()->setValue(altura);
}

void ListaFicheros::marcar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  const QModelIndex indice = modelo_->index(static_cast<int>(modelo_->stringList().indexOf(nombre)), 0);
  selectionModel()->setCurrentIndex(indice, QItemSelectionModel::ClearAndSelect);
}

QString ListaFicheros::marcado() const {
  return currentIndex().data().toString();
}

void ListaFicheros::elegir() {
  pendiente_ = false;
  if (currentIndex().isValid()) emit elegido(marcado());
}

void ListaFicheros::focusInEvent(QFocusEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  const bool habia = currentIndex().isValid();
  QListView::focusInEvent(evento);
  if (!habia && currentIndex().isValid()) selectionModel()->clearCurrentIndex();
}

void ListaFicheros::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
    elegir();
    return;
  }
  const QModelIndex antes = currentIndex();
  {
    const QScopedValueRollback propio(aMano_, true);
    QListView::keyPressEvent(evento);
  }
  if (currentIndex() == antes) return;
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

void ListaFicheros::mousePressEvent(QMouseEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListView::mousePressEvent(evento);
  pendiente_ = evento->button() == Qt::LeftButton && indexAt(evento->pos()).isValid();
}

void ListaFicheros::mouseReleaseEvent(QMouseEvent* evento) {
  QListView::mouseReleaseEvent(evento);
  if (evento->button() != Qt::LeftButton || !pendiente_) return;
  // El segundo clic de un doble clic no llega como pulsación y no vuelve a cargar lo que cargó el primero.
  elegir();
}

void ListaFicheros::mouseDoubleClickEvent(QMouseEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListView::mouseDoubleClickEvent(evento);
}

void ListaFicheros::selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) {
  QListView::selectionChanged(nueva, anterior);
  // Una selección que no viene del ratón, del teclado ni de esta clase la hace una ayuda técnica: es un clic.
  if (aMano_ || nueva.isEmpty()) return;
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->setCurrentIndex(nueva.first().topLeft(), QItemSelectionModel::NoUpdate);
  QMetaObject::invokeMethod(this, &ListaFicheros::elegir, Qt::QueuedConnection);
}

}  // namespace principal
