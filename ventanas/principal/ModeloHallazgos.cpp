#include "ventanas/principal/ModeloHallazgos.h"

#include "comunes/plataforma/Iconos.h"
#include "ventanas/principal/TextosComprobacion.h"

namespace principal {

QVariant ModeloHallazgos::data(const QModelIndex& indice, int papel) const {
  if (papel != Qt::DecorationRole || indice.column() != kNivel) return ModeloRejilla::data(indice, papel);
  const bool error =
      ModeloRejilla::data(indice, Qt::DisplayRole).toString() == TextoNivel(remesa::CodigoHallazgo::Longitud);
  return comunes::Icono(error ? comunes::Pictograma::Error : comunes::Pictograma::Aviso);
}

}  // namespace principal
