#pragma once

#include <QString>
#include <vector>

#include "comunes/plataforma/Codificacion.h"

class QWidget;

namespace comunes {
class Rejilla;
}

namespace herramientas {

/// CargarGrabar con una rejilla: un valor por línea en la columna 0, desde la primera fila de datos. Los
/// valores en blanco no se graban. `visor` es la vista de la rejilla. `codificacion`: la de lo cargado, con
/// la que se graba; sin ella, Windows-1252. Pregunta antes de cargar como CargarGrabarTexto.
bool CargarGrabarTabla(const QString& Accion, QString& Ruta, comunes::Rejilla& rejilla, QWidget* visor,
                       comunes::Codificacion* codificacion = nullptr);

/// Lee las líneas de un fichero en `Lineas[1]`, `Lineas[2]`…; la 0 no se usa. Con `Maximo` 1 o más, solo las
/// primeras. Al final quedan las leídas, salvo con `Maximo` -1, que conserva lo que hubiera detrás y las
/// plazas que sobren. `Ok`: el fichero existía; si no, no cambia nada más. Lanza ficheros::ErrorEjecucion.
void LeerLineas(const QString& Ruta, std::vector<QString>& Lineas, int Maximo, bool& Ok);

}  // namespace herramientas
