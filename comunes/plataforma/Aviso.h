#pragma once

#include <QString>
#include <functional>

namespace comunes {

enum class GradoAviso { SinIcono, Informacion, Exclamacion, Critico };

/// La caja de mensajes de la plataforma, con un solo botón "Aceptar". Las bibliotecas sin ventanas avisan por
/// aquí; quien tiene ventanas pone la caja y quien no, escribe en la salida de errores (lo inicial).
void AvisarPlataforma(GradoAviso grado, const QString& texto, const QString& titulo);

using Avisador = std::function<void(GradoAviso, const QString& texto, const QString& titulo)>;
/// Cambia quién avisa y devuelve el anterior.
Avisador PonerAvisador(Avisador nuevo);

}  // namespace comunes
