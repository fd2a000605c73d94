#pragma once

#include <QString>
#include <string_view>

namespace principal {

/// ¿Tiene el byte de Windows-1252 un dibujo que ocupa su columna? No lo tienen los de control, los cinco sin
/// asignar ni el guion opcional.
bool EsVisible(unsigned char byte);

/// Bytes de un registro como texto, carácter a carácter: lo que no es visible, con un signo del bloque
/// "Imágenes de control" de Unicode. Ni cambios de línea ni tabuladores quedan en él.
QString TextoVisible(std::string_view bytes);

}  // namespace principal
