#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "remesa/ListaRegistros.h"

class QWidget;

namespace editor {

/// Lo que una comprobación dice de unas posiciones del registro, desde 1.
struct HallazgoCampo {
  int desde = 0;
  int hasta = 0;
  bool error = false;
  QString texto;
};

/// La lista que se edita, vista desde el editor. El editor cambia `registros` y `actual` (índice desde 0) y
/// avisa después de cada cambio, para que la ventana dueña de la lista se ponga al día.
struct ListaAcumulado {
  remesa::ListaRegistros& registros;
  int actual;
  std::function<void(int)> cambiado;  ///< El registro de ese índice se sustituyó por otro.
  std::function<void(int)> movido;    ///< Ese índice es ahora el actual, y el único seleccionado.
  std::function<void(const QString&)>
      aviso;                             ///< Frase para la línea de estado: se dejaron cambios sin aceptar.
  std::function<void()> cambiando = {};  ///< El registro actual va a sustituirse.
  int posicion = 0;                      ///< Se empieza en el campo que la tiene (desde 1); 0, en el primero.
  /// Pide lo que la comprobación dice del registro de ese índice. Se contesta cuando se sepa, en el hilo de
  /// las ventanas; si entretanto se pide otro, o se cierra el editor, nunca.
  using Contestar = std::function<void(const std::vector<HallazgoCampo>&)>;
  std::function<void(int, Contestar)> hallazgos = {};
};

/// Edita el registro actual en una ventana modal sobre `propietario`; vuelve al cerrarse. `tipo`: 19 o 34.
/// Los diseños de registro se leen de comunes::RutaAjustes. true si se sustituyó el registro actual.
bool EditarSEPA(ListaAcumulado& lista, int tipo, QWidget* propietario);

}  // namespace editor
