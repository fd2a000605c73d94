#pragma once

#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QString>

class QKeyEvent;
class QLineEdit;

namespace comunes {

class EntradaFiltrada;

/// Da a una caja (QLineEdit, QCheckBox o QComboBox de lista) el comportamiento de su descriptor. Es hija de
/// la caja. Se crea con Describir.
///
/// Que la ventana pierda la activación, o que se abra un menú, no es salir de la caja. Ocultarla, o cerrar su
/// ventana, la cierra sin avisar por `haSalido`.
class CajaDescrita : public QObject {
  Q_OBJECT

 public:
  ~CajaDescrita() override;

  /// La de `caja`, o nullptr si no está descrita.
  static CajaDescrita* De(const QWidget* caja);

  QWidget* caja() const { return caja_; }
  /// true entre la entrada y la salida: el texto está en su forma de edición.
  bool dentro() const { return dentro_; }

  /// Entra o sale sin esperar al foco. No hacen nada si ya se estaba dentro o fuera.
  void Entrar();
  void Salir();

 signals:
  void haEntrado();
  /// Antes y después de dar formato al texto que se deja, o que una ayuda técnica puso sin entrar. Un mensaje
  /// que se muestre por ello ha de esperar a que el foco se haya movido (QTimer::singleShot o una conexión en
  /// cola).
  void vaASalir();
  void haSalido();
  /// No se ha escrito una tecla, o lo que se pegó o se puso de una vez: `motivo` dice por qué.
  void rechazada(const QString& motivo);

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  explicit CajaDescrita(QWidget* caja);
  friend CajaDescrita* Describir(QWidget*, const QString&);

  void cerrar();
  bool tecla(QKeyEvent* evento);
  void seleccionarTras(QEvent* evento);
  void cambiadaDesdeFuera(QLineEdit* linea);
  void apagarDefecto();
  void encenderDefecto();

  QWidget* caja_;
  EntradaFiltrada* entrada_ = nullptr;  ///< solo en las líneas de edición
  bool dentro_ = false;
  bool conRaton_ = false;          ///< se está entrando con el ratón
  QPointer<QPushButton> defecto_;  ///< el botón que dejó de parecer el que Intro pulsa
};

/// Convierte `caja` en una caja descrita (o le cambia el descriptor si ya lo era). Sin `descriptor` vale el
/// de su propiedad "Tag".
CajaDescrita* Describir(QWidget* caja, const QString& descriptor = {});

/// Sale de la caja descrita en la que se esté en `ventana`, que conserva el foco: lo primero que hace toda
/// orden. Tras ella, EntrarCampo o lo siguiente que se teclee vuelve a entrar.
void DejarCampo(QWidget* ventana);
/// Entra en la caja descrita que tenga el foco en `ventana`.
void EntrarCampo(QWidget* ventana);

}  // namespace comunes
