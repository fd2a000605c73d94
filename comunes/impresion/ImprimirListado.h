#pragma once

#include <QString>
#include <functional>

#include "comunes/impresion/ImprimirRejilla.h"

class QWidget;

namespace comunes {

struct RotulosListado {
  QString titulo;   ///< del documento PDF
  QString trabajo;  ///< en la cola de la impresora
  QString fichero;  ///< con él empieza el nombre que se propone para el PDF
};

/// Un listado que se imprime donde elija el operador. Las funciones no se llaman hasta que hacen falta.
struct ListadoImprimible {
  QWidget* padre = nullptr;
  int anchoTabla = 0;  ///< twips
  QString carpeta;     ///< donde se propone dejar el PDF
  std::function<RotulosListado()> rotulos;
  /// Devuelve false si `avance` lo detuvo; el trabajo queda abierto.
  std::function<bool(TrabajoImpresion& trabajo, const AvanceImpresion& avance)> imprimir;
};

struct FinListado {
  QString mensaje;    ///< qué ha pasado, para el operador; vacío si canceló
  QString documento;  ///< ruta del PDF escrito, si lo hay
};

/// Deja elegir impresora, con vista previa, e imprime en papel o en un PDF. Lanza ErrorEjecucion.
FinListado ImprimirListado(const ListadoImprimible& listado);

/// Abre un PDF con el programa del escritorio. Devuelve por qué no se pudo, o "".
QString AbrirDocumento(const QString& ruta);

}  // namespace comunes
