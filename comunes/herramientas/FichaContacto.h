#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "comunes/herramientas/Agenda.h"

class QLineEdit;

namespace herramientas {

namespace Ui {
class FichaContacto;
}

/// Los datos de un contacto, para teclearlos.
class FichaContacto : public QDialog {
  Q_OBJECT

 public:
  /// Guarda el contacto tecleado; false, para que la ficha siga abierta. Si lanza, también sigue.
  using Guardar = std::function<bool(const Contacto&)>;

  FichaContacto(const Contacto& contacto, Guardar guardar, QWidget* padre);
  ~FichaContacto() override;

  void accept() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  std::unique_ptr<Ui::FichaContacto> ui_;
  std::array<QLineEdit*, kDatosContacto> cajas_;
  Contacto contacto_;
  Guardar guardar_;
};

}  // namespace herramientas
