#pragma once

#include <QDialog>
#include <memory>

class QTreeWidgetItem;

namespace comunes {

namespace Ui {
class MiniHelp;
}

/// Ventana de ayuda: enseña un tema (texto llano, HTML o Markdown) y, si tiene títulos, su índice; deja
/// buscar en él (Ctrl+F), volver atrás (Alt+flecha izquierda) y cambiar el tamaño de la letra (Ctrl y +, -,
/// 0).
class MiniHelp : public QDialog {
  Q_OBJECT

 public:
  explicit MiniHelp(QWidget* padre = nullptr);
  ~MiniHelp() override;

  /// Ruta de un fichero o de un recurso (":/manual.md"). Si no se puede leer, la ventana lo dice.
  void Cargar(const QString& ruta);
  /// Va al título cuyo nombre de enlace es ese ("primer-uso"); si no lo hay, se queda.
  void IrASeccion(const QString& nombre);

 private:
  void Ampliar(int pasos);
  void LlenarIndice();
  void RepartirAncho();
  void MarcarIndice();
  void IrAlElegido(QTreeWidgetItem* entrada);

  std::unique_ptr<Ui::MiniHelp> ui_;
  int ampliado_ = 0;
};

}  // namespace comunes
