#pragma once

#include <QDialog>
#include <memory>

namespace herramientas {

namespace Ui {
class Presenta;
}

/// Acerca de: nombre, versión y licencia del programa, y versión del toolkit. El nombre, la versión y el
/// icono son los de la aplicación; `licencia` es la ruta de su texto.
class Presenta : public QDialog {
  Q_OBJECT

 public:
  explicit Presenta(const QString& licencia, QWidget* padre = nullptr);
  ~Presenta() override;

 private:
  std::unique_ptr<Ui::Presenta> ui_;
};

}  // namespace herramientas
