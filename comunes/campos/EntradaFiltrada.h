#pragma once

#include <QValidator>

class QDropEvent;
class QInputMethodEvent;
class QKeyEvent;
class QLineEdit;
class QMouseEvent;

namespace comunes {

/// Todo el texto que entra en una línea de edición descrita pasa por aquí: teclas, pegado, soltado, métodos
/// de entrada y menú. Se escribe con `insert`, que conserva el deshacer. Lo que llegue por otro camino (las
/// ayudas técnicas cambian el texto entero) lo repasa como validador, a costa del deshacer; en una línea
/// deshabilitada no entra.
class EntradaFiltrada : public QValidator {
 public:
  explicit EntradaFiltrada(QLineEdit* linea);

  /// Atiende un evento de la línea; true si ya no le ha de llegar.
  bool Atender(QEvent* evento);

  State validate(QString& texto, int& cursor) const override;

 private:
  bool tecla(QKeyEvent* evento);
  bool metodoDeEntrada(QInputMethodEvent* evento);
  bool soltar(QDropEvent* evento);
  bool botonCentral(QMouseEvent* evento);
  void menu(const QPoint& lugar);
  void pegar(const QString& texto);
  void escribir(const QString& filtrado);
  void escribirTecla(char32_t tecla);
  void rechazar(const QString& motivo) const;
  void deshacer();
  void rehacer();
  void filtrarEntero(QString& texto) const;
  void filtrarLoNuevo(QString& texto, int& cursor) const;

  QLineEdit* linea_;
  mutable QString ultimo_;  ///< el último texto aceptado
};

}  // namespace comunes
