#pragma once

#include <QApplication>
#include <functional>

namespace comunes {

/// Aplicación con el tratamiento único de errores: el que escapa de un controlador acaba ahí, se informa y el
/// programa sigue con sus datos tal como quedaron. Pone también el idioma, las letras y la caja de avisos.
class Aplicacion : public QApplication {
  Q_OBJECT
 public:
  Aplicacion(int& argc, char** argv);

  bool notify(QObject* receptor, QEvent* evento) override;

  /// Ejecuta `tarea` con el mismo tratamiento, para lo que ocurre fuera de un evento (el arranque). Devuelve
  /// false si falló.
  static bool Proteger(const std::function<void()>& tarea);
};

/// Textos del toolkit en español. Lo llama el constructor de Aplicacion.
void PonerIdioma(QApplication& aplicacion);

/// Desde ahora AvisarPlataforma muestra una caja; sin título, el de la aplicación.
void AvisosConCaja();

}  // namespace comunes
