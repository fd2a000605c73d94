#pragma once

#include "comunes/rejilla/ModeloRejilla.h"

namespace principal {

/// La rejilla de los hallazgos, con la señal de su nivel delante.
class ModeloHallazgos : public comunes::ModeloRejilla {
  Q_OBJECT

 public:
  using ModeloRejilla::ModeloRejilla;

  /// La columna del nivel.
  static constexpr int kNivel = 0;

  QVariant data(const QModelIndex& indice, int papel) const override;
};

}  // namespace principal
