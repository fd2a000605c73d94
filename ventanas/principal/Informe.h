#pragma once

#include <QString>
#include <vector>

#include "comunes/impresion/ImprimirRejilla.h"
#include "comunes/rejilla/Rejilla.h"
#include "remesa/ListaRegistros.h"

namespace principal {

/// Lo que acompaña a las filas del listado de una remesa.
struct Informe {
  QString titulo;     ///< nombre del acreedor
  QString subtitulo;  ///< "Remesa al Cobro"
  QString lineas;     ///< bloque de emisor, fichero, fechas, cuenta y total
  /// Un bloque de la remesa cada una, y entonces en `lineas` está solo lo de toda ella; ninguna, si va
  /// seguida.
  std::vector<comunes::SeccionListado> secciones;
};

/// Twips que ocupan las columnas del listado.
int AnchoInforme(bool conReferencia);

/// Llena `visor` con los adeudos de `acumulado` y su total. `ficheroActual` es la ruta que se nombra en el
/// bloque. Con `porBloques`, una remesa de varios va bloque a bloque. Sin `conReferencia`, la columna
/// "Referencia" queda oculta. Sin `soloAdeudos` salen también los registros opcionales, con su importe, y el
/// bloque acaba diciéndolo. Lanza ErrorEjecucion 6 si el total no cabe.
Informe PrepararInforme(comunes::Rejilla& visor, const remesa::ListaRegistros& acumulado,
                        const QString& ficheroActual, bool conReferencia, bool soloAdeudos = false,
                        bool porBloques = false);

/// El de una remesa de varios bloques: cada uno con su acreedor, su cuenta, su fecha y su total, en otra
/// página si es de otro acreedor, y al final el total de la remesa. Lanza como PrepararInforme.
Informe PrepararInformePorBloques(comunes::Rejilla& visor, const remesa::ListaRegistros& acumulado,
                                  const QString& ficheroActual, bool conReferencia, bool soloAdeudos);

/// Imprime el informe preparado, con el visor a su tamaño de diseño mientras dura; el trabajo queda abierto.
/// Devuelve false si `avance` lo detuvo.
bool ImprimirInforme(comunes::TrabajoImpresion& impresora, comunes::Rejilla& visor, const Informe& informe,
                     const comunes::AvanceImpresion& avance = {});

}  // namespace principal
