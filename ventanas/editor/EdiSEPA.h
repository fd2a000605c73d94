#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <vector>

#include "ventanas/editor/Descripciones.h"
#include "ventanas/editor/EditarSEPA.h"

namespace editor {

namespace Ui {
class EdiSEPA;
}
class FilaCampo;

/// Ventana que edita un registro campo por campo.
class EdiSEPA : public QDialog {
  Q_OBJECT

 public:
  /// `lista.actual` ha de ser un registro de la lista.
  EdiSEPA(ListaAcumulado& lista, int tipo, QWidget* propietario);
  ~EdiSEPA() override;

  /// true si se aceptó: el registro actual es otro.
  bool Sustituido() const { return sustituido_; }

  void done(int resultado) override;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void changeEvent(QEvent* evento) override;

 private:
  /// Cambios que no se aceptaron al pasar a otro registro.
  struct Perdido {
    int indice;
    std::vector<QString> textos;
    QString campos;  // cuáles, para decirlo
  };

  void conectar();
  void cargar();
  void preparar(Descripcion nueva);
  void mostrarHallazgos(const std::vector<HallazgoCampo>& hallazgos);
  void mostrarAviso();
  void mover(int paso);
  void aceptar();
  void pedir(FilaCampo* fila);
  void entrarEn(FilaCampo* fila);
  void anotarSalida(FilaCampo* fila);
  /// Sale del campo en que se esté y muestra lo que hubiera mal. false si algo lo estaba.
  bool dejarCampo();
  /// Dice qué campos dejados estaban mal y los restaura. false si había alguno.
  bool mostrarErroneas();
  /// Si el registro que se deja tiene cambios sin aceptar, los guarda por si se quieren recuperar.
  void apuntarPerdido();
  void mostrarPerdidos();
  void recuperar();
  QString frasePerdidos() const;
  void irA(int destino);
  void enfocarPrimero();
  /// El campo que tiene esa posición del registro, si se puede editar; si no, el primero.
  void enfocarPosicion(int posicion);
  FilaCampo* filaConFoco() const;
  std::vector<QString> textos() const;
  std::vector<QString> originales() const;

  std::unique_ptr<Ui::EdiSEPA> ui_;
  ListaAcumulado& lista_;
  int tipo_;
  bool sustituido_ = false;
  Descripcion descripcion_;
  std::vector<FilaCampo*> filas_;     // hijas de la ventana
  std::vector<FilaCampo*> erroneas_;  // dejadas con un dato que no vale, aún sin decirlo
  std::vector<Perdido> perdidos_;     // uno por registro; el último, el que se recupera
  QTimer mensajes_;                   // el mensaje espera a que el foco se haya movido
};

}  // namespace editor
