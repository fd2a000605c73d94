#pragma once

#include <QElapsedTimer>
#include <QString>

namespace comunes {

/// Muestra la ventana `Progreso` para un trabajo que va de `min` a `max`. Es modal para la aplicación:
/// mientras está, ninguna otra orden entra en medio. Con `max` no mayor que `min` la barra queda
/// indeterminada.
void IniciarProgreso(float min, float max, const QString& title);

/// El trabajo ha llegado a `value`. Redibuja cada centésima parte del máximo, en el último paso o con
/// `force`; en cada llamada deja pasar los sucesos pendientes. Nunca falla.
void BarraProgreso(float value, bool force);

/// Oculta la ventana.
void TerminarProgreso();

/// El operador la ha cerrado, o ha pulsado Esc, desde el último IniciarProgreso.
bool ProgresoDetenido();

/// Segundos como "h:mm:ss", o "mm:ss" sin horas.
QString TextoTiempo(double segundos);

/// El operador ha detenido el trabajo.
struct TrabajoDetenido {};

/// Avance de un trabajo que quizá no merezca ventana: `Progreso` solo aparece pasado medio segundo y
/// desaparece con el objeto. Hasta entonces no deja pasar sucesos, así que nada puede entrar en medio.
class Avance {
 public:
  explicit Avance(QString titulo);
  ~Avance();
  Avance(const Avance&) = delete;
  Avance& operator=(const Avance&) = delete;

  /// `hecho` de `total`, en la unidad que sea. Devuelve false si el operador ha pedido detener el trabajo.
  bool avanzar(double hecho, double total);
  /// Como avanzar, pero lanza TrabajoDetenido: para trabajos que solo se paran con una excepción.
  void avanzarODetener(double hecho, double total);

 private:
  QString titulo_;
  QElapsedTimer desdeInicio_;
  QElapsedTimer desdeAtencion_;
  int ultima_ = -1;
  bool visible_ = false;
};

}  // namespace comunes
