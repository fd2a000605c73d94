#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "comunes/rejilla/Rejilla.h"
#include "remesa/Comprobacion.h"

namespace comunes {
class ModeloRejilla;
}

namespace Ui {
class VentanaHallazgos;
}

namespace principal {

/// Lo que una ventana de comprobaciones comprueba.
struct OrigenHallazgos {
  /// Cómo se llama, para el operador.
  std::function<QString()> titulo;
  /// La comprueba. Lanza ErrorEjecucion.
  std::function<remesa::ResultadoComprobacion(const remesa::ReceptorHallazgos&,
                                              const remesa::AvanceComprobacion&)>
      comprobar;
  /// Lleva al operador al registro y, si puede, al campo. false si ya no está.
  std::function<bool(const remesa::Hallazgo&)> ir;
  /// Algo más que decir detrás del recuento.
  std::function<QString()> nota = {};
};

/// Los hallazgos de una comprobación, en una rejilla; una doble pulsación o Intro van al registro. De los
/// muchos se enseñan los primeros. Si lo comprobado cambia, se vuelve a comprobar antes de ir a ningún sitio.
class VentanaHallazgos : public QDialog {
  Q_OBJECT

 public:
  VentanaHallazgos(OrigenHallazgos comprobada, QWidget* padre);
  ~VentanaHallazgos() override;

  void comprobar();
  /// Lo comprobado ha cambiado.
  void caducar();
  /// Deja ver `zona`, en coordenadas de la pantalla, si hay sitio encima o debajo.
  void Apartar(const QRect& zona);

 private:
  void preparar();
  void conectar();
  void llenar(const remesa::ResultadoComprobacion& resultado);
  void ordenar(int columna);
  /// Hace actual el primer hallazgo que cumpla `cual`; si no hay ninguno, nada cambia.
  void senalar(const std::function<bool(const remesa::Hallazgo&)>& cual);
  void detallar();
  void ir();
  /// El hallazgo de la fila actual; nullptr si no hay ninguna.
  const remesa::Hallazgo* actual() const;
  /// El de una fila del modelo.
  const remesa::Hallazgo* hallazgoDe(int fila) const;

  std::unique_ptr<Ui::VentanaHallazgos> ui_;
  OrigenHallazgos comprobada_;
  std::vector<remesa::Hallazgo> hallazgos_;
  comunes::Rejilla rejilla_;
  std::unique_ptr<comunes::ModeloRejilla> modelo_;  // se va antes que su rejilla
  bool caducada_ = false;
  int ordenada_ = -1;  ///< la columna por la que el operador ordenó
};

}  // namespace principal
