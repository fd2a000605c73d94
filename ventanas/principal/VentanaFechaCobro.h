#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "remesa/Calendario.h"
#include "remesa/ListaRegistros.h"

namespace Ui {
class VentanaFechaCobro;
}

namespace principal {

/// Pregunta de qué bloques se cambia la fecha de cobro y cuál es la nueva; propone el primer día en que se
/// puede cobrar.
class VentanaFechaCobro : public QDialog {
  Q_OBJECT

 public:
  /// `actual`, un registro del bloque que se propone; -1, el primero. La lista ha de tener alguna cabecera
  /// 02.
  VentanaFechaCobro(const remesa::ListaRegistros& lista, int actual, remesa::Dia hoy, QWidget* padre);
  ~VentanaFechaCobro() override;

  /// Índices de las cabeceras 02 elegidas.
  std::vector<std::size_t> cabeceras() const;
  /// AAAAMMDD.
  std::string fecha() const;

 private:
  void llenarBloques(const remesa::ListaRegistros& lista, int actual);
  void proponer();
  void advertir();

  std::unique_ptr<Ui::VentanaFechaCobro> ui_;
  remesa::Dia hoy_;
  std::vector<std::size_t> cabeceras_;
  std::vector<std::string> fechas_;  // la que lleva cada una
};

}  // namespace principal
