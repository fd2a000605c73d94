#include "ventanas/principal/AccesibleLista.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>
#include <algorithm>

#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaFicheros.h"
#include "ventanas/principal/RegistroEnPalabras.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {
namespace {

bool VariosSeleccionables(const QAbstractItemView& vista) {
  return vista.selectionMode() == QAbstractItemView::ExtendedSelection;
}

class AccesibleFila : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  AccesibleFila(QAbstractItemView* vista, const QModelIndex& indice) : vista_(vista), indice_(indice) {}

  int fila() const { return indice_.row(); }

  bool isValid() const override { return vista_ && indice_.isValid(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return parent() ? parent()->window() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(vista_); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  void setText(QAccessible::Text, const QString&) override {}
  QAccessible::Role role() const override { return QAccessible::ListItem; }

  QString text(QAccessible::Text que) const override {
    const auto* registros = qobject_cast<const VistaRegistros*>(vista_.data());
    if (registros && indice_.isValid() && que == QAccessible::Name) return registros->textoFila(fila());
    if (registros && indice_.isValid() && que == QAccessible::Description)
      return EnPalabras(registros->lista()[static_cast<std::size_t>(fila())]);
    if (que == QAccessible::Name) {
      const QString suyo = indice_.data(Qt::AccessibleTextRole).toString();
      return suyo.isEmpty() ? indice_.data().toString() : suyo;
    }
    return que == QAccessible::Description ? indice_.data(Qt::AccessibleDescriptionRole).toString()
                                           : QString();
  }

  // A lo ancho, solo lo que se ve: el centro de un registro de 600 posiciones caería fuera de la ventana.
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect fila = vista_->visualRect(indice_);
    const QRect zona = vista_->viewport()->rect();
    return QRect(QPoint(std::max(fila.left(), zona.left()), fila.top()),
                 QPoint(std::min(fila.right(), zona.right()), fila.bottom()))
        .translated(vista_->viewport()->mapToGlobal(QPoint(0, 0)));
  }

  QAccessible::State state() const override {
    QAccessible::State estado;
    if (!isValid()) {
      estado.invalid = true;
      return estado;
    }
    estado.focusable = estado.selectable = true;
    estado.multiSelectable = VariosSeleccionables(*vista_);
    estado.disabled = !vista_->isEnabled();
    estado.selected = vista_->selectionModel()->isSelected(indice_);
    estado.focused = vista_->hasFocus() && vista_->currentIndex() == indice_;
    estado.invisible =
        !vista_->isVisible() || !vista_->viewport()->rect().intersects(vista_->visualRect(indice_));
    return estado;
  }

  void* interface_cast(QAccessible::InterfaceType tipo) override {
    return tipo == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }
  QStringList actionNames() const override {
    if (vista_ && VariosSeleccionables(*vista_)) return {toggleAction(), pressAction(), setFocusAction()};
    return {pressAction(), setFocusAction()};
  }
  void doAction(const QString& accion) override {
    if (!isValid() || !vista_->isEnabled()) return;
    QItemSelectionModel& seleccion = *vista_->selectionModel();
    if (accion == setFocusAction()) {
      vista_->setFocus();
      seleccion.setCurrentIndex(indice_, QItemSelectionModel::NoUpdate);
    } else if (accion == toggleAction()) {
      seleccion.select(indice_, QItemSelectionModel::Toggle);
    } else if (accion == pressAction()) {
      // También si ya lo estaba: las listas de carpetas y ficheros toman el cambio por un clic.
      seleccion.clearSelection();
      seleccion.select(indice_, QItemSelectionModel::Select);
      if (auto* registros = qobject_cast<VistaRegistros*>(vista_))
        QMetaObject::invokeMethod(
            registros, [registros, fila = fila()] { emit registros->dobleClic(fila); }, Qt::QueuedConnection);
    }
  }

 private:
  QPointer<QAbstractItemView> vista_;
  QPersistentModelIndex indice_;
};

/// Una lista y sus filas, que se crean cuando alguien las pide.
class AccesibleLista : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit AccesibleLista(QWidget* lista) : QAccessibleWidget(lista, QAccessible::List) {}
  ~AccesibleLista() override { olvidar(); }

  int childCount() const override { return vista().model() ? vista().model()->rowCount() : 0; }
  QAccessibleInterface* child(int i) const override {
    if (i < 0 || i >= childCount()) return nullptr;
    if (const auto hallada = filas_.constFind(i); hallada != filas_.cend()) {
      auto* fila = static_cast<AccesibleFila*>(QAccessible::accessibleInterface(*hallada));
      if (fila && fila->isValid() && fila->fila() == i) return fila;
      QAccessible::deleteAccessibleInterface(*hallada);
    }
    auto* fila = new AccesibleFila(&vista(), vista().model()->index(i, 0));
    filas_.insert(i, QAccessible::registerAccessibleInterface(fila));
    return fila;
  }
  int indexOfChild(const QAccessibleInterface* hijo) const override {
    return hijo && hijo->role() == QAccessible::ListItem ? static_cast<const AccesibleFila*>(hijo)->fila()
                                                         : -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    return child(vista().indexAt(vista().viewport()->mapFromGlobal(QPoint(x, y))).row());
  }
  QAccessibleInterface* focusChild() const override {
    return vista().hasFocus() ? child(vista().currentIndex().row()) : QAccessibleWidget::focusChild();
  }
  void* interface_cast(QAccessible::InterfaceType tipo) override {
    if (tipo == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(tipo);
  }

  // Una tabla de una columna, que es como Qt da a conocer la selección de una lista.
  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int fila, int columna) const override {
    return columna == 0 ? child(fila) : nullptr;
  }
  QString columnDescription(int) const override { return {}; }
  QString rowDescription(int) const override { return {}; }
  int columnCount() const override { return 1; }
  int rowCount() const override { return childCount(); }
  int selectedColumnCount() const override { return 0; }
  QList<int> selectedColumns() const override { return {}; }
  bool isColumnSelected(int) const override { return false; }
  bool selectColumn(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  int selectedCellCount() const override { return selectedRowCount(); }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  QList<int> selectedRows() const override {
    QList<int> filas;
    const QItemSelection intervalos = vista().selectionModel()->selection();
    for (const QItemSelectionRange& intervalo : intervalos)
      for (int fila = intervalo.top(); fila <= intervalo.bottom(); ++fila)
        filas.append(fila);
    std::sort(filas.begin(), filas.end());
    return filas;
  }
  QList<QAccessibleInterface*> selectedCells() const override {
    QList<QAccessibleInterface*> celdas;
    const QList<int> filas = selectedRows();
    for (const int fila : filas)
      celdas.append(child(fila));
    return celdas;
  }
  bool isRowSelected(int fila) const override {
    return vista().selectionModel()->isSelected(vista().model()->index(fila, 0));
  }
  bool selectRow(int fila) override {
    return seleccionar(fila, VariosSeleccionables(vista()) ? QItemSelectionModel::Select
                                                           : QItemSelectionModel::ClearAndSelect);
  }
  bool unselectRow(int fila) override { return seleccionar(fila, QItemSelectionModel::Deselect); }
  void modelChange(QAccessibleTableModelChangeEvent* evento) override {
    if (evento->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged) olvidar();
  }

 private:
  QAbstractItemView& vista() const { return *static_cast<QAbstractItemView*>(widget()); }
  bool seleccionar(int fila, QItemSelectionModel::SelectionFlags como) {
    const QModelIndex indice = vista().model()->index(fila, 0);
    if (indice.isValid()) vista().selectionModel()->select(indice, como);
    return indice.isValid();
  }
  void olvidar() {
    for (const QAccessible::Id id : std::as_const(filas_))
      QAccessible::deleteAccessibleInterface(id);
    filas_.clear();
  }

  mutable QHash<int, QAccessible::Id> filas_;
};

QAccessibleInterface* FabricaLista(const QString& clase, QObject* objeto) {
  for (const QMetaObject* suya : {&ListaCarpetas::staticMetaObject, &ListaFicheros::staticMetaObject,
                                  &VistaRegistros::staticMetaObject})
    if (clase == QLatin1String(suya->className())) return new AccesibleLista(static_cast<QWidget*>(objeto));
  return nullptr;
}

}  // namespace

void PrepararAccesibilidadListas() {
  QAccessible::installFactory(&FabricaLista);
}

}  // namespace principal
