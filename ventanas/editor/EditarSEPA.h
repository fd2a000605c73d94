#pragma once

#include <QString>
#include <functional>

#include "remesa/ListaRegistros.h"

class QWidget;

namespace editor {

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
};

/// Edita el registro actual en una ventana modal sobre `propietario`; vuelve al cerrarse. `tipo`: 19 o 34.
/// Los diseños de registro se leen de comunes::RutaAjustes. true si se sustituyó el registro actual.
bool EditarSEPA(ListaAcumulado& lista, int tipo, QWidget* propietario);

}  // namespace editor
