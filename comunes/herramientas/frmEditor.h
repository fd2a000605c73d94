#pragma once

#include <QDialog>
#include <memory>

class QListWidgetItem;

namespace herramientas {

namespace Ui {
class frmEditor;
}

/// El MicroEditor: edita un fichero de texto corto. El "Tag" de `txtEditor` es "MODIFICADO" mientras haya
/// cambios sin grabar.
class frmEditor : public QDialog {
  Q_OBJECT

 public:
  explicit frmEditor(QWidget* padre = nullptr);
  ~frmEditor() override;

  /// Carga `ruta` (si no existe, un texto vacío que la creará; si es "", se pide) y ofrece `valores` en el
  /// panel: los que acaban en "=" se insertan tal cual y los demás como líneas enteras. false si no se eligió
  /// ruta. Lanza ficheros::ErrorEjecucion.
  bool Cargar(const QString& ruta, const QStringList& valores = {});
  const QString& Ruta() const { return ruta_; }

  /// Al cerrarse pregunta si hay cambios sin grabar.
  void reject() override;

 private:
  bool Grabar();
  void AvisarPerdida(qsizetype posicion);
  void Marcar(bool modificado);
  void AlternarPanel();
  void Insertar(const QListWidgetItem* linea);
  void InsertarColor();
  void EncriptarSeleccion();
  void MostrarPosicion();

  std::unique_ptr<Ui::frmEditor> ui_;
  QString ruta_;
};

}  // namespace herramientas
