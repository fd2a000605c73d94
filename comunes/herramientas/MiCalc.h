#pragma once

#include <QWidget>
#include <memory>

#include "comunes/herramientas/Sumadora.h"

namespace herramientas {

namespace Ui {
class MiCalc;
}

/// Calculadora de sumar con cinta de papel. Todo se hace con el teclado numérico: Intro es =, subtotal y
/// total; ÷ dos veces seguidas es %, y × dos veces, borrar.
class MiCalc : public QWidget {
  Q_OBJECT

 public:
  explicit MiCalc(QWidget* padre = nullptr);
  ~MiCalc() override;

  const Sumadora& maquina() const { return maquina_; }

 protected:
  void keyPressEvent(QKeyEvent* suceso) override;
  void changeEvent(QEvent* suceso) override;

 private:
  void conectar();
  /// '0' a '9' y '.'; "+-*/=%" lo que son; 'S' subtotal, 'T' total, 'I' Intro, 'C' borrar, 'n' signo, '<'
  /// retroceso.
  void pulsar(char tecla);
  Sumadora::Fallo ejecutar(char tecla);
  void mostrar(Sumadora::Fallo fallo = Sumadora::Fallo::Ninguno);
  void decir(const QString& texto, const QString& documento = {});
  void mostrarCinta();
  int margenCinta() const;
  void escribirLinea(const Sumadora::Linea& linea);
  void copiar();
  void pegar();
  void imprimir();
  void cintaNueva();

  std::unique_ptr<Ui::MiCalc> ui_;
  Sumadora maquina_;
  Sumadora antes_;  ///< como estaba antes de la última tecla
  char ultima_ = 0;
  std::size_t enCinta_ = 0;  ///< líneas de la cinta que ya se ven
  QString documento_;
};

}  // namespace herramientas
