#pragma once

#include <QDialog>
#include <QFileSystemWatcher>
#include <memory>

#include "comunes/herramientas/FicheroAgenda.h"
#include "comunes/rejilla/ModeloRejilla.h"

class QKeyEvent;

namespace herramientas {

namespace Ui {
class Telefonos;
}

/// La agenda de teléfonos. Cada cambio se guarda en el acto; lo que cambien otros programas se ve al momento.
class Telefonos : public QDialog {
  Q_OBJECT

 public:
  explicit Telefonos(QWidget* padre = nullptr, const QString& ruta = RutaAgenda());
  ~Telefonos() override;

  void reject() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* suceso) override;
  void changeEvent(QEvent* suceso) override;
  void wheelEvent(QWheelEvent* suceso) override;

 private:
  void conectar();
  bool teclaBusqueda(QKeyEvent& tecla);
  bool teclaVisor(QKeyEvent& tecla);

  /// Lee lo que otro programa haya guardado; lo que no se pueda leer ahora se dirá al cambiar algo.
  void refrescar();
  void mostrar();
  void mostrarElegidos();
  void decir(const QString& texto, const QString& documento = {});
  QStringList clavesElegidas() const;
  /// Deja elegidos esos contactos, si se ven, y a la vista el primero.
  void elegir(const QStringList& claves);

  void anadir();
  void cambiar();
  void quitar();
  void importar();
  void imprimir();
  void copiar();
  /// Cambia el fichero y enseña cómo queda; false, ya dicho, si otro programa no lo suelta.
  bool hacer(const std::function<void(Agenda&)>& cambio);
  /// Pregunta si ya hay otro igual y guarda; false si el operador se arrepiente.
  bool guardar(const std::optional<Contacto>& antes, const Contacto& despues);

  std::unique_ptr<Ui::Telefonos> ui_;
  FicheroAgenda fichero_;
  comunes::Rejilla rejilla_;
  comunes::ModeloRejilla modelo_;
  QFileSystemWatcher vigia_;
  QString documento_;  ///< último listado escrito
  int orden_ = 1;      ///< columna por la que se ordena
};

}  // namespace herramientas
