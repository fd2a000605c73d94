#pragma once

#include <QDialog>
#include <QTime>
#include <memory>

namespace Ui {
class Progreso;
}

namespace comunes {

/// La ventana `Progreso`; se usa por las funciones de Progreso.h.
class Progreso : public QDialog {
  Q_OBJECT
 public:
  Progreso();
  ~Progreso() override;

  void iniciar(float min, float max, const QString& titulo);
  void avanzar(float valor, bool forzar);
  bool detenido() const { return detenido_; }

 public slots:
  void reject() override;

 private:
  void redibujar(float valor);
  int enBarra(float valor) const;
  double transcurridos() const;

  std::unique_ptr<::Ui::Progreso> ui_;
  QString horaInicio_;  ///< segundos desde la medianoche
  float minimo_ = 0;
  float maximoBarra_ = 0;
  float maximo_ = 0;
  float pasos_ = 0;
  bool detenido_ = false;
};

/// Segundos desde la medianoche hasta ahora; una prueba puede poner los suyos (negativo: los del sistema).
double Temporizador();
void PonerTemporizador(double segundos);

}  // namespace comunes
