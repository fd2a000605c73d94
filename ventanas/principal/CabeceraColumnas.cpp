#include "ventanas/principal/CabeceraColumnas.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QStandardItemModel>
#include <algorithm>

#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// De partida, en cifras: lo que mide lo corriente en cada columna.
int Cifras(Columna columna) {
  switch (columna) {
    case Columna::Numero:
      return 5;
    case Columna::Tipo:
      return 17;
    case Columna::Nombre:
      return 28;
    case Columna::Importe:
      return 11;
    case Columna::Cuenta:
      return 29;
    case Columna::Referencia:
    case Columna::Mandato:
      return 17;
    case Columna::TipoAdeudo:
      return 6;
    case Columna::Fecha:
      return 20;  // "Creación: 24/11/2026"
    case Columna::Concepto:
      return 34;
  }
  return 10;
}

}  // namespace

CabeceraColumnas::CabeceraColumnas(VistaRegistros* vista)
    : QHeaderView(Qt::Horizontal, vista), vista_(vista) {
  auto* titulos = new QStandardItemModel(0, kColumnasRegistro, this);
  for (int i = 0; i < kColumnasRegistro; ++i) {
    const auto columna = static_cast<Columna>(i);
    titulos->setHeaderData(i, Qt::Horizontal, TituloColumna(columna));
    titulos->setHeaderData(i, Qt::Horizontal, ExplicacionColumna(columna), Qt::ToolTipRole);
    titulos->setHeaderData(
        i, Qt::Horizontal,
        static_cast<int>(Qt::AlignVCenter | (VaALaDerecha(columna) ? Qt::AlignRight : Qt::AlignLeft)),
        Qt::TextAlignmentRole);
  }
  setModel(titulos);
  setSectionsClickable(false);
  setHighlightSections(false);
  setMinimumSectionSize(24);
  setFocusPolicy(Qt::NoFocus);
  setAccessibleName(u"Columnas"_s);
  ponerAnchos();
  connect(this, &QHeaderView::sectionHandleDoubleClicked, this, &CabeceraColumnas::ajustar);
}

QList<Columna> CabeceraColumnas::visibles() const {
  QList<Columna> columnas;
  for (int i = 0; i < kColumnasRegistro; ++i)
    if (!isSectionHidden(i)) columnas << static_cast<Columna>(i);
  return columnas;
}

void CabeceraColumnas::llenarMenu(QMenu& menu) {
  const bool unaSola = hiddenSectionCount() == kColumnasRegistro - 1;
  for (int i = 0; i < kColumnasRegistro; ++i) {
    QAction* accion = menu.addAction(TituloColumna(static_cast<Columna>(i)));
    accion->setCheckable(true);
    accion->setChecked(!isSectionHidden(i));
    // Sin ninguna no quedaría cabecera en que pedirlas otra vez.
    accion->setEnabled(!unaSola || isSectionHidden(i));
    connect(accion, &QAction::toggled, this, [this, i](bool ver) { setSectionHidden(i, !ver); });
  }
  menu.addSeparator();
  connect(menu.addAction(u"Como al &principio"_s), &QAction::triggered, this, &CabeceraColumnas::ponerAnchos);
}

void CabeceraColumnas::igualar(CabeceraColumnas& otra) {
  seguir(otra);
  otra.seguir(*this);
}

void CabeceraColumnas::seguir(CabeceraColumnas& otra) {
  // Ocultar una columna es darle ancho cero. Lo que ya es igual no avisa otra vez.
  connect(&otra, &QHeaderView::sectionResized, this, [this](int i, int, int ancho) {
    setSectionHidden(i, ancho == 0);
    if (ancho > 0) resizeSection(i, ancho);
  });
}

void CabeceraColumnas::ponerAnchos() {
  const int cifra = fontMetrics().horizontalAdvance(u'0');
  for (int i = 0; i < kColumnasRegistro; ++i) {
    setSectionHidden(i, false);
    resizeSection(i, Cifras(static_cast<Columna>(i)) * cifra + 2 * kMargen);
  }
}

/// Al ancho de lo que se ve de ella.
void CabeceraColumnas::ajustar(int columna) {
  const auto cual = static_cast<Columna>(columna);
  int ancho = fontMetrics().horizontalAdvance(TituloColumna(cual));
  const int primera = vista_->indexAt(QPoint(0, 0)).row();
  const int ultima = std::min(static_cast<int>(vista_->lista().size()),
                              primera + vista_->viewport()->height() / altoFila() + 1);
  for (int fila = std::max(primera, 0); fila < ultima; ++fila) {
    const auto i = static_cast<std::size_t>(fila);
    ancho = std::max(ancho, fontMetrics().horizontalAdvance(TextoCelda(vista_->lista()[i], i + 1, cual)));
  }
  resizeSection(columna, ancho + 2 * kMargen + 2);
}

void CabeceraColumnas::changeEvent(QEvent* evento) {
  QHeaderView::changeEvent(evento);
  if (evento->type() == QEvent::FontChange) ponerAnchos();
}

void CabeceraColumnas::contextMenuEvent(QContextMenuEvent* evento) {
  QMenu menu(this);
  llenarMenu(menu);
  menu.exec(evento->globalPos());
}

void CabeceraColumnas::enterEvent(QEnterEvent* evento) {
  QHeaderView::enterEvent(evento);
  emit ratonEncima();
}

}  // namespace principal
