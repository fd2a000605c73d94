#include "ventanas/principal/MarcoFoco.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <initializer_list>

namespace principal {

void PrepararMarcoFoco(QAbstractScrollArea& lista) {
  lista.setFrameStyle(QFrame::Box | QFrame::Plain);
  lista.setLineWidth(2);
}

void AtenderMarcoFoco(QAbstractScrollArea& lista, const QEvent& evento) {
  if (evento.type() == QEvent::FocusIn || evento.type() == QEvent::FocusOut) lista.update();
  if (evento.type() != QEvent::Paint) return;
  QPainter pintor(&lista);
  const QPalette& colores = lista.palette();
  const bool foco = lista.hasFocus();
  // Rellenos y no líneas: al 200 % una línea no cubre el último píxel de la del marco.
  const auto cerco = [&](const QRect& r, QPalette::ColorRole papel) {
    for (const QRect& lado :
         {QRect(r.left(), r.top(), r.width(), 1), QRect(r.left(), r.bottom(), r.width(), 1),
          QRect(r.left(), r.top(), 1, r.height()), QRect(r.right(), r.top(), 1, r.height())})
      pintor.fillRect(lado, colores.color(foco ? QPalette::Highlight : papel));
  };
  cerco(lista.rect(), QPalette::Mid);
  cerco(lista.rect().adjusted(1, 1, -1, -1), QPalette::Base);
}

}  // namespace principal
