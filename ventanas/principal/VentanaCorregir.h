#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "remesa/Correcciones.h"

namespace Ui {
class VentanaCorregir;
}

namespace principal {

class ModeloCorrecciones;

/// Lo que se puede corregir en una remesa, con lo que había y lo que quedaría: el operador marca lo que
/// quiere. No cambia nada: al aceptar, `Corregir` hace lo marcado, y nada que no se haya visto.
class VentanaCorregir : public QDialog {
  Q_OBJECT

 public:
  /// Lo que la orden hace tras cerrarse: nada (QDialog::Rejected), corregir (Accepted) o conservar los
  /// bloques y volver a abrirla.
  static constexpr int kConservarBloques = 2;

  struct Peticion {
    remesa::Dia hoy{};
    /// Solo las de estos hallazgos de la lista; ninguno, todas.
    std::vector<remesa::Hallazgo> elegidos = {};
    /// Los totales de la norma no son los que la ventana recalcula: no se corrigen, y hay un enlace para
    /// ello.
    bool sinTotales = false;
  };

  VentanaCorregir(const remesa::ListaRegistros& lista, Peticion peticion, QWidget* padre);
  ~VentanaCorregir() override;

  /// Por qué no se puede corregir nada; vacío si se puede.
  const QString& impedimento() const { return impedimento_; }
  bool detenida() const { return detenida_; }
  /// No hay nada que ofrecer.
  bool vacia() const;

  /// Hace lo marcado en la lista con que se abrió.
  remesa::ResultadoCorreccion Corregir(remesa::ListaRegistros& lista) const;

 private:
  void buscar(const remesa::ListaRegistros& lista);
  void preparar();
  void conectar();
  void llenarClases();
  void contar();
  void detallar();
  /// Marca o desmarca lo que se ve.
  void marcarVisibles(bool si);
  void alternarSeleccion();

  std::unique_ptr<Ui::VentanaCorregir> ui_;
  Peticion peticion_;
  ModeloCorrecciones* modelo_;
  QString impedimento_;
  bool detenida_ = false;
  std::size_t totales_ = 0;  // los que no se ofrecen
};

}  // namespace principal
