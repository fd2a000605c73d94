#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>
#include <vector>

class QPushButton;

namespace comunes {

/// Códigos de resultado, según el texto del botón que se pulsó.
enum ResultadoCaja { kAceptar = 1, kCancelar, kAbortar, kReintentar, kIgnorar, kSi, kNo };

/// Caja de mensajes del sistema. ";" en `Texto` es un cambio de línea. `Icono`: 1 aviso, 16 pregunta.
/// `Botones`: 1 Aceptar; 2 Aceptar, Cancelar; 3 Si, No; 4 Si, No, Cancelar; 5 Abortar, Reintentar, Ignorar; 6
/// Reintentar, Cancelar. `Defecto`, desde 1. `Top` y `Left` en twips, -1 centra en la pantalla. `Sobre`
/// centra sobre una ventana o control. Sin `Modal` vuelve enseguida con 0. Devuelve ResultadoCaja.
int MyMsgBox(const QString& Texto, const QString& Titulo, int Icono, int Botones, int Defecto, float Top = -1,
             float Left = -1, QWidget* Sobre = nullptr, bool Modal = true);

/// Pide un valor (`Tipo` es un descriptor de campo), un intervalo (`Tipo` acaba en "(/)") o un elemento de
/// una lista ("TABLA"). `Tema` es la ruta de la ayuda o "". Devuelve "" si se sale sin "Aceptar".
QString MyInputBox(const QString& Texto, const QString& Titulo, int Icono, const QString& Tipo,
                   const QString& Defecto, float Top = -1, float Left = -1, QWidget* Sobre = nullptr,
                   const QString& Tema = {});

/// Elige una fila de una rejilla; `Datos[fila][columna]`. Devuelve el texto de la columna titulada `Columna`.
QString MyVisorBox(const QString& Titulo, const QString& Columnas, const std::vector<QStringList>& Datos,
                   int Icono, const QString& Columna, float Top = -1, float Left = -1,
                   QWidget* Sobre = nullptr);

namespace Ui {
class MyBox;
}

/// La ventana de todos los mensajes y preguntas. Cada uso crea una y la destruye; las operaciones de arriba
/// la preparan, la enseñan y leen de ella el resultado.
class MyBox : public QDialog {
  Q_OBJECT

 public:
  explicit MyBox(QWidget* padre = nullptr);
  ~MyBox() override;

  /// Botón de la ranura 0 (el de la derecha) a la 2 (el de la izquierda).
  QPushButton* Boton(int ranura) const { return botones_.at(static_cast<std::size_t>(ranura)); }

  void PonerTitulo(const QString& titulo, int icono);
  void PonerMensaje(const QString& texto);
  /// Textos, visibilidad, ranura de cancelar y botón por defecto. Un juego desconocido deja los del diseño.
  void PonerBotones(int juego, int defecto);
  /// Da su tamaño a la caja y la lleva a su sitio.
  void Colocar(float Top, float Left, QWidget* Sobre);
  /// La enseña modal y vuelve cuando se pulsa un botón, ya despachados los sucesos pendientes.
  void Preguntar();

  /// Código del botón que se pulsó; 0 mientras ninguno.
  int Resultado() const { return resultado_; }
  /// Ranura del botón que pulsa Escape en un campo de texto; -1 si el juego no tiene "Cancelar".
  int RanuraCancelar() const { return ranuraCancelar_; }

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* suceso) override;
  void showEvent(QShowEvent* suceso) override;
  void keyPressEvent(QKeyEvent* suceso) override;
  void mousePressEvent(QMouseEvent* suceso) override;
  void mouseMoveEvent(QMouseEvent* suceso) override;

 private:
  void Pulsar(QPushButton* boton);
  QPushButton* BotonDeCierre() const;
  std::vector<QPushButton*> BotonesVisibles() const;
  QScreen* Pantalla(const QWidget* sobre) const;
  void AjustarMensaje(int anchoLibre, int altoLibre);

  std::unique_ptr<Ui::MyBox> ui_;
  std::array<QPushButton*, 3> botones_;
  QPoint agarre_;
  int resultado_ = 0;
  int ranuraCancelar_ = -1;
};

}  // namespace comunes
