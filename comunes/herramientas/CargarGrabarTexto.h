#pragma once

#include <QString>

#include "comunes/plataforma/Codificacion.h"

class QPlainTextEdit;

namespace herramientas {

/// CargarGrabar con una caja de texto. El fichero se graba con la codificación con que vino (véase
/// comunes::LeerTexto). Cada línea se escribe con CR LF, también la última. Una línea enorme, o millones de
/// ellas, se preguntan antes de cargarlas, y la carga se puede detener.
bool CargarGrabarTexto(const QString& Accion, QString& Ruta, QPlainTextEdit& Caja);

/// Texto de `caja` tal cual, con los espacios duros y "\n" entre líneas: sus posiciones son las de los
/// cursores.
QString TextoDe(const QPlainTextEdit& caja);

/// La del fichero que se cargó en `caja`; Windows-1252 si ninguno.
comunes::Codificacion CodificacionDe(const QPlainTextEdit& caja);

/// Posición del primer carácter que se perdería al grabar `caja`, porque su codificación no lo tiene; -1 si
/// ninguno.
qsizetype PrimeroSinGrabar(const QPlainTextEdit& caja);

}  // namespace herramientas
