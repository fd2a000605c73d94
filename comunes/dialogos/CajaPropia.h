#pragma once

#include <QCoreApplication>
#include <QPointer>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Ventanas.h"

namespace comunes {

/// La caja de una pregunta. La destruye al acabar, si no se fue antes con la ventana que la tenía.
class CajaPropia {
 public:
  /// Encima de la ventana de `sobre`, si se ve: al pedirle que se ponga delante no es aún la activa.
  explicit CajaPropia(const QWidget* sobre = nullptr)
      : caja_(new MyBox(sobre != nullptr && sobre->isVisible() ? sobre->window() : VentanaActiva())) {}
  ~CajaPropia() { delete caja_.data(); }
  CajaPropia(const CajaPropia&) = delete;
  CajaPropia& operator=(const CajaPropia&) = delete;

  MyBox* operator->() const { return caja_.data(); }
  /// Deja la caja en manos de quien la enseña: se destruye sola al cerrarse.
  MyBox* Soltar() {
    MyBox* caja = caja_.data();
    caja_.clear();
    return caja;
  }
  /// La enseña modal y vuelve cuando se pulsa un botón, ya despachados los sucesos pendientes. 0 si la caja
  /// se fue sin respuesta.
  int Preguntar() {
    caja_->setWindowModality(Qt::ApplicationModal);
    caja_->exec();
    QCoreApplication::processEvents();
    return caja_.isNull() ? 0 : caja_->Resultado();
  }

 private:
  QPointer<MyBox> caja_;
};

}  // namespace comunes
