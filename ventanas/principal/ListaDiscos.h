#pragma once

#include <QComboBox>
#include <QString>

namespace principal {

/// Unidades montadas con sitio para ficheros; las del propio sistema operativo no salen.
class ListaDiscos : public QComboBox {
  Q_OBJECT

 public:
  explicit ListaDiscos(QWidget* padre = nullptr);

  /// Muestra la unidad que contiene `carpeta`, sin avisar.
  void mostrarLaDe(const QString& carpeta);
  /// Raíz de la unidad mostrada.
  QString unidad() const { return mostrada_; }

  void showPopup() override;

 signals:
  /// El operador eligió otra unidad.
  void cambio();

 private:
  void llenar();

  QString mostrada_;
};

/// Carpeta a la que lleva una unidad: la actual de la unidad donde la hay ("D:"), o su raíz.
QString CarpetaDeUnidad(const QString& raiz);

/// Raíz de la unidad cuyo nombre empieza por `letra` ("C:"), o "" si no existe.
QString UnidadPorLetra(const QString& letra);

}  // namespace principal
