#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace comunes {

/// Lo anterior al último "." de toda la ruta; sin punto, el nombre entero.
QString QuitarExtension(const QString& Nombre);

/// Del nombre que eligió el operador, el nombre con que se escribirá de verdad.
using ReglaNombre = std::function<QString(const QString&)>;

/// Diálogo de abrir (`Abrir`) o guardar. `Filtro`: extensión sola ("q19"), "@" + patrones o "|" + parejas
/// descripción|patrón. Devuelve la ruta elegida o "" si se cancela; con `Multiple`, carpeta, NUL y nombres
/// separados por NUL. Con `Regla`, pregunta antes de sustituir un fichero que exista con el nombre final y
/// vuelve a abrirse si se responde "No"; lo devuelto es lo elegido, sin aplicar la regla.
QString DialogoFichero(bool Abrir, QWidget* Propietario, const QString& Carpeta, const QString& Filtro,
                       bool Multiple, const QString& Nombre, const ReglaNombre& Regla = {});

}  // namespace comunes
