#pragma once

#include <QString>
#include <filesystem>
#include <string>

#include "remesa/ErrorEjecucion.h"
#include "remesa/Fichero.h"

namespace consola {

/// Una línea en la salida, o en la de errores con "q19: " delante; en UTF-8. false si no se pudo escribir: el
/// disco se llenó, o quien la leía se fue.
bool Decir(const QString& linea);
void Avisar(const QString& linea);

/// La ruta de un argumento, tal como la dio el sistema (aunque no sea UTF-8).
std::filesystem::path RutaDe(const std::string& argumento);

/// Ruta o texto ajenos, para mostrarlos en una línea: los caracteres de control pasan a U+FFFD.
QString Mostrable(const std::filesystem::path& ruta);
QString Mostrable(QString texto);

/// "ruta: texto (error N)"; `fichero` es el que se nombra si el error no trae el suyo.
QString Explicar(const remesa::ErrorEjecucion& error, const std::filesystem::path& fichero);

/// Por qué no se admite un fichero con esa cabeza; vacío si se admite.
QString ProblemaCabeza(remesa::Cabeza cabeza);

}  // namespace consola
