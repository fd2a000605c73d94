#include "ventanas/principal/DelegadoColumnas.h"

#include <QPainter>

#include "ventanas/principal/CabeceraColumnas.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

QSize DelegadoColumnas::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  const CabeceraColumnas& cabecera = vista().cabecera();
  return {cabecera.length(), cabecera.altoFila()};
}

void DelegadoColumnas::pintarContenido(QPainter& pintor, const QRect& fila, const QRect& visible,
                                       const QColor& tinta, int indice) const {
  constexpr int kMargen = CabeceraColumnas::kMargen;
  const CabeceraColumnas& cabecera = vista().cabecera();
  const auto i = static_cast<std::size_t>(indice);
  const std::string_view registro = vista().lista()[i];
  const QFontMetrics medidas = cabecera.fontMetrics();
  pintor.setFont(cabecera.font());
  pintor.setPen(tinta);
  for (int columna = 0; columna < kColumnasRegistro; ++columna) {
    if (cabecera.isSectionHidden(columna)) continue;
    const QRect celda(fila.left() + cabecera.sectionPosition(columna) + kMargen, fila.top(),
                      cabecera.sectionSize(columna) - 2 * kMargen, fila.height());
    if (celda.left() > visible.right() || celda.right() < visible.left()) continue;
    const auto cual = static_cast<Columna>(columna);
    QString texto = TextoCelda(registro, i + 1, cual);
    if (texto.isEmpty()) continue;
    const bool derecha = VaALaDerecha(cual);
    // Un importe recortado se leería como otro.
    if (!derecha)
      texto = medidas.elidedText(texto, Qt::ElideRight, celda.width());
    else if (medidas.horizontalAdvance(texto) > celda.width())
      texto = u"…"_s;
    pintor.drawText(
        celda,
        static_cast<int>((derecha ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter) | Qt::TextSingleLine,
        texto);
  }
}

}  // namespace principal
