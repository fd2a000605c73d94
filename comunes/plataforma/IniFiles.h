#pragma once

#include <QString>

namespace comunes {

/// Ruta del fichero de ajustes: carpeta del programa + separador + "Tarvo.INI". Es una global que fija la
/// ventana principal al cargarse.
extern QString RutaAjustes;

/// Valor de `Clave` en `Seccion` del fichero INI `Fichero`, o `Defecto` si no hay fichero, sección o clave o
/// el valor está vacío. Lee como GetPrivateProfileStringA: 2047 bytes a lo más.
QString ReadINI(const QString& Fichero, const QString& Seccion, const QString& Clave, const QString& Defecto);

/// Si la clave está, aunque sea vacía.
bool EstaEnINI(const QString& Fichero, const QString& Seccion, const QString& Clave);

}  // namespace comunes
