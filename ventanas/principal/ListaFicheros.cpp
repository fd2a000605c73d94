#include "ventanas/principal/ListaFicheros.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStringListModel>

#include "ventanas/principal/MarcoFoco.h"
#include "ventanas/principal/Patrones.h"
#include "ventanas/principal/TextoVacio.h"

namespace principal {

using namespace Qt::StringLiterals;

ListaFicheros::ListaFicheros(QWidget* padre) : QListView(padre), modelo_(new QStringListModel(this)) {
  setUniformItemSizes(true);
  setSpacing(1);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setModel(modelo_);
  vacio_ = new TextoVacio(*this);
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
  const QString resaltado = marcado();
  const int altura = verticalScrollBar()->value();
  {
    const QScopedValueRollback propio(aMano_, true);
    modelo_->setStringList(nombres);
  }
  marcar(actual);
  resaltar(resaltado);
  verticalScrollBar()->setValue(altura);
}

QModelIndex ListaFicheros::indice(const QString& nombre) const {
  return modelo_->index(static_cast<int>(modelo_->stringList().indexOf(nombre)), 0);
}

void ListaFicheros::marcar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->setCurrentIndex(indice(nombre), QItemSelectionModel::ClearAndSelect);
}

void ListaFicheros::resaltar(const QString& nombre) {
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->select(indice(nombre), QItemSelectionModel::ClearAndSelect);
}

QString ListaFicheros::marcado() const {
  const QModelIndexList resaltados = selectionModel()->selectedIndexes();
  return resaltados.isEmpty() ? QString() : resaltados.first().data().toString();
}

void ListaFicheros::elegir() {
  pendiente_ = false;
  if (currentIndex().isValid()) emit elegido(currentIndex().data().toString());
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
  const QString resaltado = marcado();
  {
    const QScopedValueRollback propio(aMano_, true);
    QListView::keyPressEvent(evento);
  }
  // cppcheck-suppress knownConditionTrueFalse ; la tecla puede haber movido el resalte
  if (currentIndex() == antes && marcado() == resaltado) return;
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
  // Una selección que no viene del ratón, del teclado ni de esta clase la hace una ayuda técnica: es un clic.
  if (aMano_ || nueva.isEmpty()) return;
  const QScopedValueRollback propio(aMano_, true);
  selectionModel()->setCurrentIndex(nueva.first().topLeft(), QItemSelectionModel::NoUpdate);
  QMetaObject::invokeMethod(this, &ListaFicheros::elegir, Qt::QueuedConnection);
}

}  // namespace principal
