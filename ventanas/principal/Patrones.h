#pragma once

#include <QString>
#include <QStringList>

namespace principal {

/// Nombres de `carpeta` que cumplen alguno de los patrones, separados por ";", sin distinguir mayúsculas:
/// "*" es cualquier cosa, "?" un carácter y "*.*" todo. Solo ficheros corrientes y no ocultos, ordenados.
QStringList FicherosDe(const QString& carpeta, const QString& patrones);

/// ¿Cumple el nombre alguno de los patrones?
bool CumplePatron(const QString& nombre, const QString& patrones);

}  // namespace principal
