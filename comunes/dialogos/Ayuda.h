#pragma once

#include <QString>

class QWidget;

namespace comunes {

/// El manual del programa: ruta de un fichero o de un recurso. Desde entonces F1 lo enseña en cualquier
/// ventana que no use esa tecla para otra cosa.
void PonerAyuda(const QString& manual);

/// Enseña el manual, sin modo, en la sección que diga la propiedad "Ayuda" de `ventana`
/// ("la-ventana-principal"); sin ella, como estuviera o por el principio. No hay más que una ventana de
/// ayuda. Sin manual puesto no hace nada.
void MostrarAyuda(QWidget& ventana);

}  // namespace comunes
