#pragma once

#include <QString>
#include <vector>

#include "comunes/herramientas/Agenda.h"
#include "comunes/rejilla/Rejilla.h"

namespace herramientas {

/// Columna de la rejilla, oculta, con la clave de cada contacto; los datos van en las siguientes.
inline constexpr int kColumnaClave = 0;

/// Llena la rejilla con los contactos que casan con `buscado`, ordenados por `columna` y, los que empatan,
/// por nombre. Con `marcar`, el título de esa columna queda señalado.
void ListarContactos(comunes::Rejilla& rejilla, const Agenda& agenda, const QString& buscado, int columna,
                     bool marcar);

}  // namespace herramientas
