#pragma once

#include <QColor>
#include <functional>

class QWidget;

namespace comunes {

/// Color como número en el orden azul-verde-rojo: 0x00BBGGRR.
int NumeroDeColor(const QColor& color);
QColor ColorDeNumero(int numero);

/// El selector de color de la plataforma; un color no válido si se cancela.
QColor ElegirColor(const QColor& inicial, QWidget* padre);

using SelectorColor = std::function<QColor(const QColor& inicial, QWidget* padre)>;
/// Cambia quién elige y devuelve el anterior.
SelectorColor PonerSelectorColor(SelectorColor nuevo);

}  // namespace comunes
