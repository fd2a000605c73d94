#pragma once

#include <QColor>
#include <QDialog>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <memory>
#include <vector>

class QLineEdit;
class QPushButton;

namespace comunes {

/// Códigos de resultado, según el texto del botón que se pulsó.
enum ResultadoCaja { kAceptar = 1, kCancelar, kAbortar, kReintentar, kIgnorar, kSi, kNo };

/// Iconos de uso corriente.
inline constexpr int kIconoAviso = 1;
inline constexpr int kIconoPregunta = 16;

/// Caja de mensajes del sistema. ";" en `Texto` es un cambio de línea. `Icono`: 1 aviso, 16 pregunta.
/// `Botones`: 1 Aceptar; 2 Aceptar, Cancelar; 3 Si, No; 4 Si, No, Cancelar; 5 Abortar, Reintentar, Ignorar; 6
/// Reintentar, Cancelar. `Defecto`, desde 1. `Top` y `Left` en twips, -1 centra en la pantalla. `Sobre`
/// centra sobre una ventana o control. Sin `Modal` vuelve enseguida con 0. Devuelve ResultadoCaja.
int MyMsgBox(const QString& Texto, const QString& Titulo, int Icono, int Botones, int Defecto, float Top = -1,
             float Left = -1, QWidget* Sobre = nullptr, bool Modal = true);

/// Un aviso: sin título y con "Aceptar".
void Avisar(const QString& Texto, QWidget* Sobre = nullptr);

/// Una pregunta sin título; true si se contesta "Si". `Defecto`: 1 es "Si" y 2, "No", que es también lo que
/// dice quien la cierra.
bool Confirmar(const QString& Texto, int Defecto, QWidget* Sobre = nullptr, int Icono = kIconoPregunta);

/// Lo que una petición dice de lo que se va escribiendo.
struct GuiaPeticion {
  QString ejemplo;  ///< la forma de escribirlo; siempre a la vista
  /// Lo que será lo escrito ("= 1.234,50 €"), o "".
  std::function<QString(const QString& escrito)> resultado;
  /// Por qué no vale lo escrito, o "". Con una objeción "Aceptar" no cierra: se vuelve a pedir.
  std::function<QString(const QString& escrito)> objecion;
};

/// Pide un valor (`Tipo` es un descriptor de campo), un intervalo (`Tipo` acaba en "(/)") o un elemento de
/// una lista ("TABLA"). `Tema` es la ruta de la ayuda o "". `Guia`, para un valor. Devuelve "" si se sale sin
/// "Aceptar".
QString MyInputBox(const QString& Texto, const QString& Titulo, int Icono, const QString& Tipo,
                   const QString& Defecto, float Top = -1, float Left = -1, QWidget* Sobre = nullptr,
                   const QString& Tema = {}, const GuiaPeticion& Guia = {});

/// Elige una fila de una rejilla; `Datos[fila][columna]`. Devuelve el texto de la columna titulada `Columna`.
QString MyVisorBox(const QString& Titulo, const QString& Columnas, const std::vector<QStringList>& Datos,
                   int Icono, const QString& Columna, float Top = -1, float Left = -1,
                   QWidget* Sobre = nullptr);

/// Encendida mientras se da formato al campo de una caja que se deja, para quien vigile sus cambios.
extern bool ValidandoCampo;

class ModeloRejilla;
class Rejilla;

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

  // Lo que se pregunta, a lo más una cosa por caja. `tipo` es el descriptor del campo.
  void PonerValor(const QString& tipo, const QString& defecto);
  /// `defecto`: los dos extremos unidos por "ƒ", o nada.
  void PonerIntervalo(const QString& tipo, const QString& defecto);
  /// `defecto`: como en ElementosLista.
  void PonerLista(const QString& defecto);
  void PonerRejilla(const QString& columnas, const std::vector<QStringList>& datos);
  /// Después de PonerValor.
  void PonerGuia(const GuiaPeticion& guia);
  /// Columna de la rejilla que da el texto del resultado; la primera si no se dice.
  void PonerColumna(const QString& titulo);
  /// El campo enseña asteriscos.
  void PonerSecreto();
  /// Ruta de la ayuda; si no existe, no hay ayuda que pulsar.
  void PonerTema(const QString& tema);
  /// Enseña la muestra de color; lo que se elija en ella va al campo como número azul-verde-rojo.
  void MostrarColor(const QColor& color);

  /// Si el intervalo tecleado vale: algún extremo en blanco, o el segundo no es menor que el primero según su
  /// tipo (F fechas, D y N números, otro por códigos de carácter).
  bool DesdeHastaOk() const;

  /// Código del botón que se pulsó; 0 mientras ninguno.
  int Resultado() const { return resultado_; }
  /// Lo tecleado o elegido, tal como se veía al pulsar el botón; el primer extremo de un intervalo.
  const QString& Texto() const { return texto_; }
  const QString& SegundoTexto() const { return segundoTexto_; }
  /// Ranura del botón que pulsa Escape en un campo de texto; -1 si el juego no tiene "Cancelar".
  int RanuraCancelar() const { return ranuraCancelar_; }

  void reject() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* suceso) override;
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
  void OrdenarFoco(const std::vector<QWidget*>& primeros);
  void DescribirCampo(QLineEdit* campo, const QString& tipo, const QString& texto);
  bool FiltrarEscape(QKeyEvent* tecla);
  void DecirMotivo(const QString& motivo);
  void MostrarResultado();
  bool Objetado();
  void CambiarColor();
  void ElegirFila(const QModelIndex& fila);
  void AceptarFila(const QModelIndex& fila);
  void AjustarMensaje(int anchoLibre, int altoLibre);

  std::unique_ptr<Ui::MyBox> ui_;
  std::unique_ptr<Rejilla> rejilla_;
  std::unique_ptr<ModeloRejilla> modelo_;  // se va antes que su rejilla
  std::array<QPushButton*, 3> botones_;
  QString texto_;
  QString segundoTexto_;
  GuiaPeticion guia_;
  QString escrito_;  // lo que había en el campo al dejarlo, antes de darle forma
  QColor color_;
  QPoint agarre_;          ///< dónde se pulsó su superficie
  bool agarrada_ = false;  ///< la mueve el ratón, y no el sistema
  int resultado_ = 0;
  int ranuraCancelar_ = -1;
  int columna_ = 0;
};

}  // namespace comunes
