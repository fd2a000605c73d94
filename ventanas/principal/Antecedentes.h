#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <mutex>
#include <optional>

#include "anteriores/Cruce.h"
#include "ventanas/principal/HiloSuelto.h"

namespace principal {

class ModeloRegistros;

/// Lo que se envió antes, que se lee en otro hilo, y la comparación con ello de la remesa acumulada, que se
/// hace en otro cada vez que cambia. Nada de esto para la ventana: una carpeta que no contesta se dice y se
/// deja.
class Antecedentes : public QObject {
  Q_OBJECT

 public:
  enum class Estado : std::uint8_t { Apagado, Leyendo, Detenido, Leido };

  /// `modelo`, el de la acumulación, vive más que esto.
  Antecedentes(const ModeloRegistros& modelo, QObject* padre);
  ~Antecedentes() override;

  /// Lee las carpetas de los ajustes.
  void iniciar();
  /// Mira qué ha cambiado en ellas. Si el operador lo detuvo, o la carpeta no contestaba, vuelve a
  /// intentarlo.
  void refrescar();
  void detener();

  Estado estado() const noexcept { return estado_; }
  /// De 0 a 100.
  int porCiento() const;
  /// Lleva un rato sin avanzar: una unidad de red que no está, quizá.
  bool noContesta() const;
  /// Lo último leído; nulo si nada.
  const std::shared_ptr<const anteriores::Indice>& indice() const noexcept { return indice_; }

  /// Lo que la remesa acumulada tiene que ver con lo enviado antes.
  struct Comparada {
    std::uint64_t errores = 0, avisos = 0;
    QString guardada = {};  ///< Donde están sus mismos adeudos; vacío si en ningún sitio.
  };
  const Comparada& comparada() const noexcept { return comparada_; }

  /// Compara una remesa, en otro hilo, y añade lo hallado al resultado. `cruzar` no ha de mirar nada que
  /// cambie en este. Si no hay con qué comparar, nada.
  using Cruzar = std::function<anteriores::ResultadoCruce(
      const anteriores::Indice&, const remesa::ReceptorHallazgos&, const anteriores::Seguir&)>;
  void anadir(remesa::ResultadoComprobacion& resultado, const Cruzar& cruzar,
              const remesa::ReceptorHallazgos& recibir, const remesa::AvanceComprobacion& avance);
  /// Lo que hay que saber de la última comparación de anadir(), en una frase; vacío si nada.
  const QString& nota() const noexcept { return nota_; }

 signals:
  /// El estado, o por dónde va.
  void avanza();
  /// Hay otro índice.
  void leido();
  /// Hay otra comparada().
  void comparado();

 private:
  struct Lectura {
    std::atomic<std::uintmax_t> leidos = 0, total = 0;
    std::atomic<std::uint64_t> pasos = 0;  // también los que no leen: recorrer carpetas
    std::mutex cerrojo;
    std::shared_ptr<const anteriores::Indice> hecho;
  };
  void empezarLectura();
  void mirar();
  void anticuar();
  void comparar();

  const ModeloRegistros& modelo_;
  std::vector<std::filesystem::path> carpetas_;
  Estado estado_ = Estado::Apagado;
  std::shared_ptr<const anteriores::Indice> indice_;
  std::shared_ptr<Lectura> lectura_;
  std::uint64_t antes_ = 0;  // los pasos de la última vez que se miró
  QElapsedTimer quieta_;     // desde que no avanza
  HiloSuelto lector_, comparador_;
  QTimer mirada_, espera_;
  std::shared_ptr<std::optional<Comparada>> comparando_;
  Comparada comparada_;
  QString nota_;
};

}  // namespace principal
