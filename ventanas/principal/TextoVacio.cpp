#include "ventanas/principal/TextoVacio.h"

#include <QAbstractItemView>
#include <QEvent>

namespace principal {

TextoVacio::TextoVacio(QAbstractItemView& vista) : QLabel(vista.viewport()), vista_(vista) {
  constexpr int kMargen = 12;  // píxeles
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  setMargin(kMargen);
  setForegroundRole(QPalette::PlaceholderText);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
  vista.viewport()->installEventFilter(this);
  const QAbstractItemModel* modelo = vista.model();
  connect(modelo, &QAbstractItemModel::modelReset, this, &TextoVacio::mostrarSiVacia);
  connect(modelo, &QAbstractItemModel::rowsInserted, this, &TextoVacio::mostrarSiVacia);
  connect(modelo, &QAbstractItemModel::rowsRemoved, this, &TextoVacio::mostrarSiVacia);
}

void TextoVacio::poner(const QString& texto) {
  setText(texto);
  mostrarSiVacia();
}

bool TextoVacio::eventFilter(QObject*, QEvent* evento) {
  if (evento->type() == QEvent::Resize) resize(vista_.viewport()->size());
  return false;
}

void TextoVacio::mostrarSiVacia() {
  const bool vacia = vista_.model()->rowCount() == 0;
  vista_.setAccessibleDescription(vacia ? text() : QString());
  resize(vista_.viewport()->size());
  setVisible(vacia);
}

}  // namespace principal
