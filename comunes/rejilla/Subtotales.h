#pragma once

#include <QString>
#include <QStringList>

#include "comunes/rejilla/Rejilla.h"

namespace comunes {

/// Inserta subtotales al cambiar la columna `tituloGrupo` (sin ella, solo el total final) y suma las columnas
/// `titulosTotal`. En `plantilla`, "?" es el valor del grupo. `opcion`: "NOSORT" no ordena, "" ordena por el
/// tipo de la columna y otra cosa ordena por fechas y las enseña con ese formato. Repetirla da lo mismo.
void Subtotales(const QString& tituloGrupo, Rejilla& rejilla, const QString& plantilla,
                const QString& tituloEtiqueta, const QString& opcion, const QStringList& titulosTotal);

/// Añade al final una fila con el total de las que van desde `desde`: `etiqueta` en la columna
/// `tituloEtiqueta` y la suma en la columna `tituloTotal`.
void FilaTotal(Rejilla& rejilla, int desde, const QString& etiqueta, const QString& tituloEtiqueta,
               const QString& tituloTotal);

}  // namespace comunes
