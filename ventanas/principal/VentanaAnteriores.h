#pragma once

#include <QDialog>
#include <QTimer>
#include <atomic>
#include <memory>

#include "anteriores/Apariciones.h"
#include "comunes/rejilla/Rejilla.h"
#include "ventanas/principal/HiloSuelto.h"

namespace comunes {
class ModeloRejilla;
}

namespace Ui {
class VentanaAnteriores;
}

namespace principal {

/// Los adeudos de un deudor en lo que se envió antes, y sus devoluciones, por fechas. Los busca en otro hilo
/// mientras está abierta.
class VentanaAnteriores : public QDialog {
  Q_OBJECT

 public:
  /// `quien`, de quién son, para el operador.
  VentanaAnteriores(QString quien, std::vector<anteriores::FicheroHallado> ficheros,
                    const anteriores::Filtro& filtro, QWidget* padre);
  ~VentanaAnteriores() override;

 private:
  struct Busqueda {
    std::atomic<std::uintmax_t> leidos = 0, total = 0;
    std::vector<anteriores::Aparicion> halladas;
    std::vector<anteriores::Omitido> omitidos;
  };
  void mirar();
  void detener();
  void terminar(const QString& comoAcaba);
  void imprimir();

  std::unique_ptr<Ui::VentanaAnteriores> ui_;
  QString quien_;
  comunes::Rejilla rejilla_;
  std::unique_ptr<comunes::ModeloRejilla> modelo_;  // se va antes que su rejilla
  std::shared_ptr<Busqueda> busqueda_;
  std::vector<anteriores::Aparicion> apariciones_;
  HiloSuelto buscador_;
  QTimer mirada_;
};

}  // namespace principal
