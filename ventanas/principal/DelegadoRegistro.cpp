#include "ventanas/principal/DelegadoRegistro.h"

#include <QGlyphRun>
#include <QPainter>
#include <algorithm>

#include "ventanas/principal/TextoVisible.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

DelegadoRegistro::DelegadoRegistro(VistaRegistros* vista) : QStyledItemDelegate(vista), vista_(vista) {}

QSize DelegadoRegistro::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return {vista_->columnas().anchoTotal(), vista_->columnas().alto()};
}

void DelegadoRegistro::paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
                             const QModelIndex& indice) const {
  const bool seleccionado = opcion.state & QStyle::State_Selected;
  const QPalette::ColorGroup grupo = vista_->isActiveWindow() ? QPalette::Active : QPalette::Inactive;
  // La parte que se ve: el rectángulo de la fila es tan ancho como todo el registro.
  const QRect visible = opcion.rect & vista_->viewport()->rect();
  if (seleccionado) pintor->fillRect(visible, opcion.palette.brush(grupo, QPalette::Highlight));
  pintarContenido(*pintor, opcion.rect, visible,
                  opcion.palette.color(grupo, seleccionado ? QPalette::HighlightedText : QPalette::Text),
                  indice.row());
  if (vista_->actual() != indice.row()) return;
  // La fila actual se distingue también cuando la lista no tiene el foco.
  const QColor resalte = opcion.palette.color(grupo, QPalette::Highlight);
  const QColor marca = seleccionado ? resalte.darker(180) : resalte;
  pintor->fillRect(QRect(visible.left(), visible.top(), 4, visible.height()), marca);
  pintor->setPen(QPen(marca, 1, vista_->hasFocus() ? Qt::SolidLine : Qt::DotLine));
  pintor->drawRect(visible.adjusted(0, 0, -1, -1));
}

void DelegadoRegistro::pintarContenido(QPainter& pintor, const QRect& fila, const QRect& visible,
                                       const QColor& tinta, int indice) const {
  const Columnas& columnas = vista_->columnas();
  const std::string_view registro = vista_->lista()[static_cast<std::size_t>(indice)];
  const int izquierda = fila.left();
  const int primera = std::max(1, (visible.left() - izquierda - Columnas::kMargen) / columnas.ancho() + 1);
  const int largo = static_cast<int>(std::min<std::size_t>(registro.size(), Columnas::kMaxima));
  const int ultima =
      std::min(largo, (visible.right() - izquierda - Columnas::kMargen) / columnas.ancho() + 1);

  QList<quint32> glifos;
  QList<QPointF> puntos;
  QColor tenue = tinta;
  tenue.setAlphaF(0.55F);
  pintor.setPen(tenue);
  for (int posicion = primera; posicion <= ultima; ++posicion) {
    const auto byte = static_cast<unsigned char>(registro[static_cast<std::size_t>(posicion - 1)]);
    const int x = izquierda + columnas.x(posicion);
    if (byte == ' ') continue;
    if (!EsVisible(byte)) {
      pintor.drawRect(x + 1, fila.top() + 4, columnas.ancho() - 3, columnas.alto() - 9);
      continue;
    }
    glifos.append(columnas.glifo(byte));
    puntos.append(QPointF(x, 0));
  }
  if (glifos.isEmpty()) return;
  QGlyphRun tirada;
  tirada.setRawFont(columnas.fuente());
  tirada.setGlyphIndexes(glifos);
  tirada.setPositions(puntos);
  pintor.setPen(tinta);
  pintor.drawGlyphRun(QPointF(0, fila.top() + columnas.base()), tirada);
}

}  // namespace principal
