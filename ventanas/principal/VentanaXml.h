#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "comunes/rejilla/Rejilla.h"
#include "iso20022/Exportacion.h"
#include "remesa/ListaRegistros.h"

namespace comunes {
class ModeloRejilla;
}

namespace Ui {
class VentanaXml;
}

namespace principal {

/// Paso de la remesa acumulada a mensajes pain.008. Antes de escribir nada enseña lo que se escribiría y lo
/// que lo impide, se cambia o se queda fuera; una doble pulsación o Intro van al registro. Si la remesa
/// cambia, se examina otra vez al volver a la ventana y, en todo caso, antes de escribir.
class VentanaXml : public QDialog {
  Q_OBJECT

 public:
  /// Lleva al operador a un registro de la lista (desde 1) y a una posición suya (desde 1; 0, ninguna).
  using Ir = std::function<void(std::uint64_t fila, int posicion)>;
  /// Recibe, ya escritos, lo que hay que decir.
  using AlEscribir = std::function<void(const QString& que)>;

  /// `lista` ha de vivir tanto como la ventana.
  VentanaXml(const remesa::ListaRegistros& lista, Ir ir, AlEscribir alEscribir, QWidget* padre);
  ~VentanaXml() override;

  void examinar();
  /// La remesa ha cambiado.
  void caducar();

 protected:
  bool event(QEvent* evento) override;

 private:
  void preparar();
  void conectar();
  iso20022::OpcionesExportacion opciones() const;
  void llenar();
  void contar();
  void detallar();
  void ir();
  void ordenar(int columna);
  const iso20022::Nota* actual() const;
  void exportar();
  QString destino();
  bool alDia();

  std::unique_ptr<Ui::VentanaXml> ui_;
  const remesa::ListaRegistros& lista_;
  Ir ir_;
  AlEscribir alEscribir_;
  std::function<std::string(std::string_view)> bicDe_;
  std::unique_ptr<iso20022::Exportacion> exportacion_;  ///< La examinada; nada si no se acabó de examinar.
  iso20022::ResumenExportacion resumen_;
  std::vector<iso20022::Nota> notas_;
  comunes::Rejilla rejilla_;
  std::unique_ptr<comunes::ModeloRejilla> modelo_;  // se va antes que su rejilla
  bool caducada_ = true;
};

}  // namespace principal
