#pragma once

#include <functional>

class QPrinter;
class QWidget;

namespace comunes {

/// Enseña, en una ventana modal, las primeras 200 páginas tal como se imprimirán en `impresora`. Si hay más,
/// lo dice. `dibujar` recibe el máximo de páginas y devuelve false si quedaron más.
void MostrarVistaPrevia(QPrinter& impresora, const std::function<bool(QPrinter&, int)>& dibujar,
                        QWidget* padre);

}  // namespace comunes
