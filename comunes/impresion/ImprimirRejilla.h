#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "comunes/impresion/Trabajo.h"
#include "comunes/rejilla/Rejilla.h"

namespace comunes {

/// Se llama antes de cada fila y antes de cada página nueva con las filas hechas, las que hay y la página en
/// que se está o que va a empezar (desde 1). Si devuelve false, la impresión se detiene ahí.
using AvanceImpresion = std::function<bool(int hechas, int total, int pagina)>;

/// Imprime la rejilla en el trabajo `impresora`, que queda abierto salvo con `terminar`. `titulo` va centrado
/// en cada página, entre la fecha (con `conFecha`) y el número de página, que cuenta desde 1; `subtitulo`,
/// centrado o, si empieza por "<" o ">", a la izquierda o a la derecha. Con `marco` salen los colores de las
/// celdas; con `ajustar`, solo las columnas que caben enteras. `desde` y `hasta` son filas de la rejilla; -1,
/// la primera no fija y la última. Tras la tabla van los trozos de `lineas`, separados por ";", con un tope
/// de tabulación. Devuelve false si `avance` la detuvo. Lanza ErrorEjecucion si falla la impresora; la
/// rejilla queda entonces oculta.
bool ImprimirRejilla(TrabajoImpresion& impresora, Rejilla& rejilla, const QString& titulo, bool marco,
                     const QString& subtitulo, bool ajustar, int desde, int hasta, bool terminar,
                     bool conFecha, const QString& lineas, const AvanceImpresion& avance = {});

/// Unas filas de la rejilla con cabecera propia.
struct SeccionListado {
  QString titulo;  ///< de sus páginas
  QString lineas;  ///< delante de los títulos de sus columnas, separadas por ";"
  int desde = 0;   ///< filas de la rejilla, ambas incluidas
  int hasta = -1;
  bool otraPagina = false;  ///< no sigue en la página de la anterior
};

/// Imprime la rejilla por secciones, con marco, fecha y las columnas que caben enteras; tras la última,
/// `lineas`. El trabajo queda abierto. Lo demás, como ImprimirRejilla.
bool ImprimirSecciones(TrabajoImpresion& impresora, Rejilla& rejilla,
                       const std::vector<SeccionListado>& secciones, const QString& subtitulo,
                       const QString& lineas, const AvanceImpresion& avance = {});

}  // namespace comunes
