#pragma once

#include <QIcon>

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
};

/// Icono dibujado al tamaño y la escala que se le pidan, con los colores de la paleta en uso: se ve igual de
/// nítido al 200 % y sobre fondo claro u oscuro.
QIcon Icono(Pictograma pictograma);

}  // namespace comunes
