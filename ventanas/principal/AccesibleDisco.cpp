#include "ventanas/principal/AccesibleDisco.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>

#include "ventanas/principal/ListaDiscos.h"

namespace principal {
namespace {

class AccesibleDisco : public QAccessibleWidget {
 public:
  explicit AccesibleDisco(QWidget* disco) : QAccessibleWidget(disco, QAccessible::ComboBox) {}

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int i) const override {
    return i == 0 ? QAccessible::queryAccessibleInterface(disco()->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* hijo) const override {
    return hijo->object() == disco()->view() ? 0 : -1;
  }
  QString text(QAccessible::Text que) const override {
    return que == QAccessible::Value ? disco()->currentText() : QAccessibleWidget::text(que);
  }
  QStringList actionNames() const override { return {showMenuAction(), pressAction(), setFocusAction()}; }
  void doAction(const QString& accion) override {
    if (accion == setFocusAction()) {
      QAccessibleWidget::doAction(accion);
    } else if (disco()->view()->isVisible()) {
      disco()->hidePopup();
    } else {
      disco()->showPopup();
    }
  }

 private:
  ListaDiscos* disco() const { return static_cast<ListaDiscos*>(widget()); }
};

QAccessibleInterface* Fabrica(const QString& clase, QObject* objeto) {
  if (clase != QLatin1String(ListaDiscos::staticMetaObject.className())) return nullptr;
  return new AccesibleDisco(static_cast<QWidget*>(objeto));
}

}  // namespace

void PrepararAccesibilidadDisco() {
  QAccessible::installFactory(&Fabrica);
}

}  // namespace principal
