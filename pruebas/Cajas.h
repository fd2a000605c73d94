#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

#include "comunes/dialogos/MyBox.h"

/// Contesta las cajas modales que se abran mientras vive: apunta lo que dicen y pulsa, una por una, lo que se
/// le encargó. Una caja que nadie esperaba hace fallar la prueba y se contesta como al cerrarla, para no
/// colgarla.
class Cajas {
 public:
  struct Vista {
    QString mensaje;
    QString titulo;
    QStringList botones;  // los visibles, de izquierda a derecha
    QString enfocado;     // el botón con el foco
    int icono = 0;
  };
  using Accion = std::function<void(comunes::MyBox&)>;

  Cajas(std::initializer_list<const char*> rotulos = {}) {
    for (const char* rotulo : rotulos) {
      Responder(QString::fromUtf8(rotulo));
    }
    Programar();
  }
  ~Cajas() { EXPECT_TRUE(pendientes_.empty()) << pendientes_.size() << " caja(s) que no se abrieron"; }

  /// La siguiente caja se contesta con el botón de este rótulo ("Aceptar").
  void Responder(const QString& rotulo) {
    pendientes_.push_back([rotulo](comunes::MyBox& caja) { Pulsar(caja, rotulo); });
  }
  /// La siguiente caja se entrega a `accion`, que debe acabar cerrándola.
  void Hacer(Accion accion) { pendientes_.push_back(std::move(accion)); }

  const std::vector<Vista>& Vistas() const { return vistas_; }
  QString Mensaje(std::size_t n) const { return n < vistas_.size() ? vistas_[n].mensaje : QString(); }

  static void Pulsar(QWidget& caja, const QString& rotulo) {
    for (auto* boton : caja.findChildren<QPushButton*>()) {
      if (boton->isVisible() && boton->text().remove(u'&') == rotulo) return boton->click();
    }
    ADD_FAILURE() << "La caja no tiene el botón " << rotulo.toStdString();
    caja.close();
  }

 private:
  // Un reloj nuevo cada vez: el que está sonando no vuelve a sonar dentro de una caja que se abra desde él.
  void Programar() {
    QTimer::singleShot(5, &reloj_, [this] {
      Programar();
      Mirar();
    });
  }

  void Mirar() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == mirada_) return;
    auto* caja = qobject_cast<comunes::MyBox*>(modal);
    auto* mensaje = qobject_cast<QMessageBox*>(modal);
    if (caja == nullptr && mensaje == nullptr) return;
    Apuntar(*modal, caja, mensaje);
    if (pendientes_.empty()) {
      ADD_FAILURE() << "Caja inesperada: " << vistas_.back().mensaje.toStdString();
      if (caja != nullptr && caja->Boton(2)->isVisible()) caja->Boton(2)->click();
      modal->close();
      return;
    }
    Accion accion = std::move(pendientes_.front());
    pendientes_.pop_front();
    // Mientras se actúa sobre una caja pueden abrirse otras encima: a esta no se vuelve.
    QPointer<QWidget> anterior = std::exchange(mirada_, modal);
    if (caja != nullptr) {
      accion(*caja);
    } else {
      mensaje->buttons().constFirst()->click();
    }
    mirada_ = anterior;
  }

  void Apuntar(QWidget& modal, const comunes::MyBox* caja, const QMessageBox* mensaje) {
    Vista vista;
    vista.titulo = modal.windowTitle();
    vista.mensaje =
        mensaje != nullptr ? mensaje->text() : modal.findChild<QLabel*>("Mensaje")->accessibleName();
    vista.icono = caja != nullptr ? modal.findChild<QWidget*>("Imagen")->property("Icono").toInt()
                                  : static_cast<int>(mensaje->icon());
    for (int ranura = 2; caja != nullptr && ranura >= 0; --ranura) {
      if (caja->Boton(ranura)->isVisible()) vista.botones << caja->Boton(ranura)->text().remove(u'&');
    }
    if (auto* boton = qobject_cast<QPushButton*>(modal.focusWidget()))
      vista.enfocado = boton->text().remove(u'&');
    vistas_.push_back(vista);
  }

  QObject reloj_;
  QPointer<QWidget> mirada_;
  std::deque<Accion> pendientes_;
  std::vector<Vista> vistas_;
};
