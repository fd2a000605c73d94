#pragma once

#include <QDialog>
#include <memory>

#include "comunes/plataforma/Codificacion.h"
#include "comunes/rejilla/ModeloRejilla.h"

namespace herramientas {

namespace Ui {
class frmTablas;
}

/// Edita una tabla de valores, uno por línea de su fichero. El "Tag" de `VisorTabla` es "MODIFICADO" mientras
/// haya cambios sin grabar.
class frmTablas : public QDialog {
  Q_OBJECT

 public:
  explicit frmTablas(QWidget* padre = nullptr);
  ~frmTablas() override;

  /// El fichero de la tabla; con "", se pide al cargar o al grabar.
  void PonerRuta(const QString& ruta);
  const QString& Ruta() const { return ruta_; }

  /// Prepara la ventana antes de enseñarla: columnas de la rejilla, descriptor de `Elemento` y, con `Cargar`,
  /// los valores del fichero. Se pone debajo de `Origen`, con su ancho más `Ajuste` twips; sin él, centrada y
  /// con el ancho de las columnas más `Ajuste`. false si el operador no quiso cargar el fichero: no hay tabla
  /// que enseñar. Lanza ficheros::ErrorEjecucion.
  bool Dimensionar(const QWidget* Origen, int Ajuste, const QString& Columnas, const QString& Descriptor,
                   bool Cargar);

  /// Al cerrarse pregunta si hay cambios sin grabar.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* suceso) override;

 private:
  void conectar();
  void editar(int fila);
  void aceptar();
  void quitar();
  void mover(int pasos);
  bool grabar();
  bool avisarPerdida();

  /// Fila de la rejilla señalada en la vista; 0, ninguna.
  int filaSenalada() const;
  void senalar(int fila);
  /// Pone en `Elemento` el valor de esa fila, o nada con 0, sin que cuente como un cambio.
  void poner(int fila);
  void marcar(bool modificado);
  void decir(const QString& texto = {});

  std::unique_ptr<Ui::frmTablas> ui_;
  comunes::Rejilla rejilla_;
  comunes::ModeloRejilla modelo_;
  QString ruta_;
  comunes::Codificacion codificacion_;
  int editada_ = 0;         ///< fila cuyo valor está en `Elemento`; 0, uno nuevo
  bool sinValores_ = true;  ///< la única fila es la que la rejilla trae vacía
  bool poniendo_ = false;
};

}  // namespace herramientas
