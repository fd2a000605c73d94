#pragma once

#include <QString>

/// La línea de órdenes sin el programa y sin ninguna comilla doble: entera, es la ruta de un fichero o "".
/// Con la aplicación ya creada.
QString LineaOrdenes();
