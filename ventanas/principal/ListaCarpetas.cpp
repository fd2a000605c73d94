#include "ventanas/principal/ListaCarpetas.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "comunes/plataforma/Iconos.h"
#include "ventanas/principal/MarcoFoco.h"

namespace principal {

using namespace Qt::StringLiterals;

using comunes::Pictograma;
namespace {

constexpr int kRuta = Qt::UserRole;
constexpr int kNivel = Qt::UserRole + 1;
constexpr int kSangria = 12;

class DelegadoSangrado : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    QStyleOptionViewItem sangrada = opcion;
    sangrada.rect.setLeft(opcion.rect.left() + kSangria * indice.data(kNivel).toInt());
    QStyledItemDelegate::paint(pintor, sangrada, indice);
  }
  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    return QStyledItemDelegate::sizeHint(opcion, indice) + QSize(kSangria * indice.data(kNivel).toInt(), 0);
  }
};

bool SePuedeAbrir(const QString& ruta) {
  const QFileInfo informe(ruta);
  return informe.isDir() && informe.isReadable();
}

}  // namespace

ListaCarpetas::ListaCarpetas(QWidget* padre) : QListWidget(padre) {
  setItemDelegate(new DelegadoSangrado(this));
  connect(this, &QListWidget::itemDoubleClicked, this, &ListaCarpetas::entrar);
  PrepararMarcoFoco(*this);
}

bool ListaCarpetas::event(QEvent* evento) {
  const bool atendido = QListWidget::event(evento);
  AtenderMarcoFoco(*this, *evento);
  return atendido;
}

QString ListaCarpetas::ruta() const {
  return QDir::toNativeSeparators(ruta_);
}

bool ListaCarpetas::ponerRuta(const QString& ruta) {
  if (ruta.isEmpty()) return false;
  // De QFileInfo y no de QDir, que deja "C:" como está.
  const QString nueva = QDir::cleanPath(QFileInfo(ruta).absoluteFilePath());
  if (!SePuedeAbrir(nueva)) return false;
  if (nueva == ruta_) return true;
  ruta_ = nueva;
  llenar();
  emit cambio();
  return true;
}

void ListaCarpetas::refrescar() {
  QString viva = ruta_;
  while (!SePuedeAbrir(viva) && !QDir(viva).isRoot())
    viva = QFileInfo(viva).path();
  if (viva != ruta_) {
    ponerRuta(viva);
    return;
  }
  const QString senalada = currentItem() ? currentItem()->data(kRuta).toString() : QString();
  const int altura = verticalScrollBar()->value();
  const QScopedValueRollback propio(aMano_, true);
  llenar();
  for (int i = 0; i < count(); ++i)
    if (item(i)->data(kRuta) == senalada) setCurrentRow(i);
  verticalScrollBar()->setValue(altura);
}

void ListaCarpetas::llenar() {
  const QScopedValueRollback propio(aMano_, true);
  clear();
  int nivel = 0;
  const auto poner = [&](const QString& texto, const QString& ruta, Pictograma icono) {
    auto* elemento = new QListWidgetItem(comunes::Icono(icono), texto, this);
    elemento->setData(kRuta, ruta);
    elemento->setData(kNivel, nivel);
    return elemento;
  };
  QStringList cadena;
  for (QString paso = ruta_;; paso = QFileInfo(paso).path()) {
    cadena.prepend(paso);
    if (QDir(paso).isRoot()) break;
  }
  QListWidgetItem* abierta = nullptr;
  for (const QString& paso : std::as_const(cadena)) {
    const QString nombre = QDir(paso).isRoot() ? QDir::toNativeSeparators(paso) : QFileInfo(paso).fileName();
    abierta = poner(nombre, paso, Pictograma::CarpetaAbierta);
    ++nivel;
  }
  QFont negrita = font();
  negrita.setBold(true);
  abierta->setFont(negrita);
  abierta->setData(Qt::AccessibleDescriptionRole, u"Carpeta abierta"_s);
  const QStringList hijas =
      QDir(ruta_).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
  const QString prefijo = ruta_.endsWith(u'/') ? ruta_ : ruta_ + u'/';
  for (const QString& hija : hijas)
    poner(hija, prefijo + hija, Pictograma::Carpeta);
  setCurrentItem(abierta);
}

void ListaCarpetas::entrar(const QListWidgetItem* elemento) {
  if (elemento) ponerRuta(QString(elemento->data(kRuta).toString()));
}

void ListaCarpetas::keyPressEvent(QKeyEvent* evento) {
  switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      entrar(currentItem());
      return;
    case Qt::Key_Backspace:
      ponerRuta(QFileInfo(ruta_).path());
      return;
    default:
      break;
  }
  if (evento->key() == Qt::Key_F10 && evento->modifiers() == Qt::ShiftModifier) return pedirMenu();
  const QScopedValueRollback propio(aMano_, true);
  QListWidget::keyPressEvent(evento);
}

void ListaCarpetas::focusInEvent(QFocusEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListWidget::focusInEvent(evento);
}

void ListaCarpetas::contextMenuEvent(QContextMenuEvent* evento) {
  if (evento->reason() == QContextMenuEvent::Keyboard) return pedirMenu();
  const QModelIndex cual = indexAt(evento->pos());
  emit menuPedido(cual.data(kRuta).toString(), evento->globalPos());
}

/// Con el teclado, el de la fila en que se está.
void ListaCarpetas::pedirMenu() {
  const QModelIndex cual = currentIndex();
  emit menuPedido(cual.data(kRuta).toString(), viewport()->mapToGlobal(visualRect(cual).bottomLeft()));
}

void ListaCarpetas::mouseMoveEvent(QMouseEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListWidget::mouseMoveEvent(evento);
}

void ListaCarpetas::mousePressEvent(QMouseEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListWidget::mousePressEvent(evento);
}

void ListaCarpetas::mouseReleaseEvent(QMouseEvent* evento) {
  const QScopedValueRollback propio(aMano_, true);
  QListWidget::mouseReleaseEvent(evento);
}

void ListaCarpetas::selectionChanged(const QItemSelection& nueva, const QItemSelection& anterior) {
  QListWidget::selectionChanged(nueva, anterior);
  // Una ayuda técnica no tiene doble clic: seleccionar es entrar.
  if (aMano_ || nueva.isEmpty()) return;
  const QString destino = nueva.first().topLeft().data(kRuta).toString();
  QMetaObject::invokeMethod(
      this, [this, destino] { ponerRuta(destino); }, Qt::QueuedConnection);
}

}  // namespace principal
