#include "comunes/dialogos/VistaRejilla.h"

#include <QHeaderView>
#include <QTableView>
#include <memory>
#include <vector>

#include "comunes/rejilla/ModeloRejilla.h"

namespace comunes {
namespace {

int PonerAnchos(QTableView& vista, const ModeloRejilla& modelo) {
  int total = 0;
  for (int columna = 0; columna < modelo.columnCount(); ++columna) {
    const int ancho = modelo.AnchoColumna(columna);
    vista.setColumnHidden(columna, ancho <= 0);
    if (ancho > 0) vista.setColumnWidth(columna, ancho);
    total += ancho;
  }
  return total;
}

}  // namespace

int PrepararVistaRejilla(QTableView& vista, ModeloRejilla& modelo) {
  vista.setModel(&modelo);
  QHeaderView* cabecera = vista.horizontalHeader();
  vista.verticalHeader()->hide();
  cabecera->setHighlightSections(false);
  cabecera->setStretchLastSection(true);
  vista.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  vista.verticalHeader()->setDefaultSectionSize(vista.fontMetrics().height() + 6);
  // La vista olvida los anchos con cada cambio entero de la rejilla.
  const auto anchos = std::make_shared<std::vector<int>>();
  QObject::connect(&modelo, &QAbstractItemModel::modelAboutToBeReset, cabecera, [cabecera, anchos] {
    anchos->clear();
    for (int columna = 0; columna < cabecera->count(); ++columna)
      anchos->push_back(cabecera->sectionSize(columna));
  });
  QObject::connect(&modelo, &QAbstractItemModel::modelReset, cabecera, [&vista, &modelo, anchos] {
    PonerAnchos(vista, modelo);
    if (static_cast<int>(anchos->size()) != modelo.columnCount()) return;
    for (int columna = 0; columna < modelo.columnCount(); ++columna)
      if (const int ancho = anchos->at(static_cast<std::size_t>(columna)); ancho > 0)
        vista.setColumnWidth(columna, ancho);
  });
  return PonerAnchos(vista, modelo);
}

}  // namespace comunes
