#pragma once

#include <QDialog>
#include <memory>

#include "comunes/herramientas/ImportacionClientes.h"
#include "comunes/rejilla/ModeloRejilla.h"

namespace herramientas {

namespace Ui {
class Clientes;
}

/// Enseña lo que se va a importar, línea por línea, antes de añadir nada.
class Clientes : public QDialog {
  Q_OBJECT

 public:
  /// `fichero` es el nombre que se enseña.
  Clientes(const ImportacionClientes& importacion, const QString& fichero, QWidget* padre);
  ~Clientes() override;

 private:
  std::unique_ptr<Ui::Clientes> ui_;
  comunes::Rejilla rejilla_;
  comunes::ModeloRejilla modelo_;
};

}  // namespace herramientas
