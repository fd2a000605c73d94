#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "devoluciones/Recuento.h"
#include "devoluciones/RemesaNueva.h"
#include "ventanas/devoluciones/ModeloDevoluciones.h"

namespace ventanas {

namespace Ui {
class VentanaDevoluciones;
}

/// Lo que el banco rechaza o devuelve, de uno o varios ficheros: por qué, qué hacer, de qué remesas salió y
/// la remesa siguiente con lo que el operador marque.
class VentanaDevoluciones : public QDialog {
  Q_OBJECT

 public:
  /// Recibe la remesa nueva; false si el operador no la quiere al final.
  using AlPresentar = std::function<bool(remesa::ListaRegistros)>;

  explicit VentanaDevoluciones(QWidget* padre = nullptr);
  ~VentanaDevoluciones() override;

  void ponerAlPresentar(AlPresentar alPresentar) { alPresentar_ = std::move(alPresentar); }
  /// Lee más ficheros; de los que no son de devoluciones, o no se pueden leer, lo dice.
  void anadir(const QStringList& rutas);

  void reject() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* suceso) override;
  void dragEnterEvent(QDragEnterEvent* suceso) override;
  void dropEvent(QDropEvent* suceso) override;

 private:
  void conectar();

  // Lo que se ve (VentanaDevoluciones.cpp)
  /// Otra vez todo: han cambiado las devoluciones o lo buscado.
  void rehacer();
  void mostrarTotales();
  void mostrarAvisos();
  /// Las filas que cumplen lo que se pide, en el orden que tuvieran.
  void filtrar();
  bool cumple(std::size_t devolucion, const QStringList& palabras) const;
  void ordenar(int columna);
  void mostrarMarcadas();
  devoluciones::Devolucion completada(std::size_t i) const;
  void detallar();
  void decir(const QString& texto, const QString& documento = {});
  /// Filas elegidas del modelo, en su orden; si no hay ninguna, todas.
  std::vector<int> elegidasOTodas() const;
  QStringList celdas(int fila) const;

  // Órdenes (OrdenesDevoluciones.cpp)
  void elegirFicheros();
  void mostrarDesde(std::size_t antes);
  void elegirRemesas();
  void elegirCarpeta();
  void buscar(const std::function<QStringList(devoluciones::Cotejo&)>& donde);
  void marcarElegidas();
  void presentar();
  void imprimir();
  void copiar();
  void guardarCsv();
  QString tablaCsv() const;

  std::unique_ptr<Ui::VentanaDevoluciones> ui_;
  devoluciones::Lote lote_;
  std::optional<devoluciones::Cotejo> cotejo_;
  devoluciones::Recuento recuento_;
  std::vector<QStringList> filas_;  ///< Las celdas de cada devolución.
  std::vector<QString> plegadas_;   ///< Lo mismo, para buscar.
  QStringList avisosLectura_, avisosBusqueda_, avisosNueva_;
  comunes::Rejilla rejilla_;
  ModeloDevoluciones modelo_;  // se va antes que su rejilla
  QTimer espera_;
  AlPresentar alPresentar_;
  QString documento_;  ///< último listado escrito
  int ordenada_ = -1;  ///< columna por la que el operador ordenó
};

}  // namespace ventanas
