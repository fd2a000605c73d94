#pragma once

#include <QDialog>
#include <memory>

#include "remesa/Separacion.h"

namespace Ui {
class VentanaSeparar;
}

namespace principal {

/// Pregunta cómo y dónde se separa una remesa y, al aceptar, escribe las partes. La remesa no cambia, y ha de
/// vivir más que la ventana.
class VentanaSeparar : public QDialog {
  Q_OBJECT

 public:
  explicit VentanaSeparar(const remesa::ListaRegistros& lista, QWidget* padre);
  ~VentanaSeparar() override;

  /// Por qué no puede separarse esta remesa; vacío si se puede.
  const QString& impedimento() const { return impedimento_; }
  bool sePuede() const { return impedimento_.isEmpty(); }
  /// Tras aceptar.
  std::size_t escritos() const { return partes_.size(); }
  QString carpeta() const;

  void accept() override;

 private:
  void repartir(const remesa::ListaRegistros& lista);
  remesa::Separacion como() const;
  void contar();
  void elegirCarpeta();

  std::unique_ptr<Ui::VentanaSeparar> ui_;
  remesa::FuenteLista fuente_;
  remesa::RepartoBloques reparto_;
  std::vector<remesa::Parte> partes_;
  QString impedimento_;
};

}  // namespace principal
