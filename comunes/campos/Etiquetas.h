#pragma once

#include <QString>
#include <optional>

namespace comunes {

/// Valor de `clave` en un descriptor como "T(M) A(I) L(15)". `par`: los dos signos que lo encierran; vacío,
/// "[]" para la clave "+" y "()" para las demás. Vale la primera aparición, y no se recortan blancos. Sin la
/// clave no hay valor (que no es lo mismo que ""), y si era T, A o L se muestra un aviso crítico.
std::optional<QString> GetTag(const QString& descriptor, const QString& clave, const QString& par = {});

/// El descriptor con `valor` en `clave`, que se añade al final si no estaba. `valor` no puede llevar el signo
/// de cierre.
QString SetTag(const QString& descriptor, const QString& clave, const QString& valor,
               const QString& par = {});

}  // namespace comunes
