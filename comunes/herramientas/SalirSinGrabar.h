#pragma once

#include <QString>

class QWidget;

namespace herramientas {

/// Pregunta si se cierra `ventana` sin grabar `fichero`, con ella delante: quien sale del programa puede
/// tenerla minimizada o tapada por otras, y entonces se dice también de qué fichero se habla.
bool SalirSinGrabar(QWidget& ventana, const QString& fichero, const QString& pregunta, int icono);

}  // namespace herramientas
