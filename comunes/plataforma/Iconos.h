#pragma once

#include <QColor>
#include <QIcon>

class QPalette;

namespace comunes {

enum class Pictograma {
  Importar,
  Empezar,
  Guardar,
  Insertar,
  Eliminar,
  Imprimir,
  Salir,
  Anterior,
  Siguiente,
  Aceptar,
  Descartar,
  Carpeta,
  CarpetaAbierta,
  // El resultado de una comprobación: se distinguen también sin el color.
  Error,
  Aviso,
  Correcto,
};

/// Icono dibujado al tamaño y la escala que se le pidan, con los colores de la paleta en uso: se ve igual de
/// nítido al 200 % y sobre fondo claro u oscuro.
QIcon Icono(Pictograma pictograma);

/// El color de un texto que dice lo mismo que ese icono (Error, Aviso o Correcto; los demás, el del texto),
/// legible sobre el fondo de `paleta`.
QColor ColorDeIcono(Pictograma pictograma, const QPalette& paleta);

}  // namespace comunes
