#pragma once

#include <QObject>

#include "comunes/plataforma/Iconos.h"
#include "ventanas/editor/Descripciones.h"
#include "ventanas/editor/EditarSEPA.h"

namespace comunes {
class Enlace;
}

class QGridLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace editor {

/// Una fila de la ventana: rótulo, caja, marca "OP", ayuda y, debajo, la observación sobre lo escrito, con el
/// enlace que quita los acentos. Los controles se llaman eti, cpo, opc, edi, sen, obs y quitar, con el número
/// de la fila. Se crea una vez y sirve para cualquier campo.
class FilaCampo : public QObject {
  Q_OBJECT

 public:
  /// Pone los controles en la rejilla; `indice` desde 1.
  FilaCampo(int indice, QGridLayout& rejilla, QObject* padre);

  /// Prepara la fila para ese campo y la muestra.
  void Preparar(const CampoDescrito& campo);
  /// Pone el valor leído del registro, que queda como original.
  void Poner(const QString& valor);
  void Ocultar();
  /// Lo que la comprobación dice del valor leído; se ve mientras no se cambie.
  void PonerHallazgos(const std::vector<HallazgoCampo>& hallazgos);

  const CampoDescrito& Campo() const { return campo_; }
  const QString& Original() const { return original_; }
  QString Texto() const;
  QLineEdit* Caja() const { return caja_; }
  /// El enlace que quita los acentos, para el orden del tabulador: va detrás de la caja.
  QWidget* Quitar() const;
  /// true si el operador ha cambiado el dato; los blancos que completan el campo no cuentan.
  bool Cambiado() const;
  /// Pone un texto como si se hubiese tecleado.
  void Escribir(const QString& texto);
  /// Visible y editable.
  bool Usable() const;
  bool Correcto() const;
  /// Vuelve al original, y la observación dice qué se rechazó y por qué mientras no se cambie.
  void Restaurar();
  /// Pide el valor según la ayuda y, si se contesta, lo escribe y pasa al control siguiente.
  void Pedir();
  /// Vuelve a tomar los colores de la paleta.
  void PonerColores();

 signals:
  void haEntrado(editor::FilaCampo* fila);
  void haSalido(editor::FilaCampo* fila);
  /// Se pulsó la ayuda.
  void pedida(editor::FilaCampo* fila);

 private:
  void alEntrar();
  void alSalir();
  void refrescar();
  void decir(const QString& motivo);
  void accesible();
  comunes::Pictograma nivelVisto() const;
  void ajustarAncho();
  void quitarAcentos();

  CampoDescrito campo_;
  QString original_;
  QString rechazo_;    // lo que se rechazó al restaurar, y por qué
  QString hallazgos_;  // lo que la comprobación dice del original
  bool conError_ = false;
  bool conHallazgos_ = false;  // se ven
  bool dicho_ = false;         // la observación dice por qué no se escribió una tecla
  bool ocultada_ = true;
  bool pide_ = false;  // la ayuda admite pedir el valor
  QLabel* rotulo_;
  QLineEdit* caja_;
  QLabel* opcional_;
  QToolButton* ayuda_;
  QLabel* observacion_;
  QLabel* senal_;
  comunes::Enlace* quitar_;
};

}  // namespace editor
