#pragma once

#include <QDialog>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
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
  /// El fichero, si lo es: lo dice el JSON.
  QString fichero = {};
  /// Si se puede corregir: recibe los hallazgos elegidos, en el orden en que se ven; ninguno, todos.
  std::function<void(const std::vector<remesa::Hallazgo>&)> corregir = {};
  /// Algo más que decir detrás del recuento.
  std::function<QString()> nota = {};
};

/// Los hallazgos de una comprobación, en una rejilla que se filtra; una doble pulsación o Intro van al
/// registro. De los muchos de un código se enseñan los primeros; se copian, se imprimen y se guardan todos.
/// Si lo comprobado cambia, se vuelve a comprobar antes de ir a ningún sitio.
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

  void reject() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* suceso) override;

 private:
  /// Lo que se guarda de una comprobación, en el orden en que se dio.
  struct Recogida {
    std::vector<remesa::Hallazgo> hallazgos;
    std::vector<QStringList> celdas;  ///< las de cada uno, y plegadas para buscar
    std::vector<QString> plegadas;
    std::vector<std::uint64_t> cuentas;  ///< de cada código, todos
    remesa::ResultadoComprobacion resultado;
    bool recortada = false;  ///< de algún código hay más de los que se guardan
  };
  /// Lo que se pide ver.
  struct Filtro {
    int nivel = 0;    ///< 0, todos; 1, errores; 2, avisos
    int codigo = -1;  ///< del enumerado; -1, todos
    QStringList palabras;
    bool admite(remesa::CodigoHallazgo suyo) const;
    bool cumple(const QString& plegada) const;
  };

  void preparar();
  void conectar();
  /// Comprueba y guarda lo que cumpla el filtro.
  Recogida recoger(const Filtro& filtro) const;
  Filtro filtro() const;
  void llenarCodigos();
  void filtrar();
  /// Otra vez lo que se ve, con la fila de `senalado` como actual.
  void llenar(const Filtro& filtro, const remesa::Hallazgo& senalado);
  void resumir();
  void ordenar(int columna);
  /// Hace actual el primer hallazgo que cumpla `cual`; si no hay ninguno, nada cambia.
  void senalar(const std::function<bool(const remesa::Hallazgo&)>& cual);
  void detallar();
  void ir();
  /// El hallazgo de la fila actual; nullptr si no hay ninguna.
  const remesa::Hallazgo* actual() const;
  /// El de una fila del modelo.
  const remesa::Hallazgo* hallazgoDe(int fila) const;
  std::vector<remesa::Hallazgo> elegidos() const;
  void decir(const QString& texto, const QString& documento = {});

  // Lo que sale de la ventana (SalidasHallazgos.cpp)
  /// Da todos los hallazgos, también los que no se guardan. false si el operador lo detiene.
  bool recorrer(const std::function<void(const remesa::Hallazgo&)>& recibir) const;
  void copiarElegidos();
  void copiar();
  void imprimir();
  void guardarCsv();
  void guardarJson();
  /// Guarda en el fichero que elija el operador lo que `linea` dé de cada hallazgo, detrás de `cabeza`.
  void guardar(const QString& extension, const std::string& cabeza,
               const std::function<void(std::string&, const remesa::Hallazgo&)>& linea);

  std::unique_ptr<Ui::VentanaHallazgos> ui_;
  OrigenHallazgos comprobada_;
  Recogida todos_;
  /// Los que cumplen lo que se busca, si no bastaba con los guardados.
  std::optional<Recogida> buscados_;
  comunes::Rejilla rejilla_;
  std::unique_ptr<comunes::ModeloRejilla> modelo_;  // se va antes que su rejilla
  QTimer espera_;
  QString documento_;  ///< último listado escrito
  bool caducada_ = false;
  bool elegidos_ = false;   ///< lo seleccionado lo eligió el operador
  bool senalando_ = false;  ///< la ventana señala por su cuenta
  int ordenada_ = -1;       ///< la columna por la que el operador ordenó
};

/// Título de cada columna y las celdas de un hallazgo, en el mismo orden.
QStringList TitulosHallazgos();
QStringList CeldasHallazgo(const remesa::Hallazgo& hallazgo);

}  // namespace principal
