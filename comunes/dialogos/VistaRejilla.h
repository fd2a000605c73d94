#pragma once

class QTableView;

namespace comunes {

class ModeloRejilla;

/// Pone la rejilla en la vista con el aspecto de todas: filas de una línea, columnas con su ancho y las de
/// ancho 0 ocultas, también cuando la rejilla cambia entera (entonces con el ancho que el operador les haya
/// dado). Devuelve los píxeles que ocupan las columnas.
int PrepararVistaRejilla(QTableView& vista, ModeloRejilla& modelo);

}  // namespace comunes
