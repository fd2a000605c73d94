#pragma once

#include <QString>

class QPlainTextEdit;

namespace herramientas {

/// CargarGrabar con una caja de texto. El fichero es Windows-1252, o UTF-8 si empieza por su marca: como vino
/// se graba. Cada línea se escribe con CR LF, también la última. Una línea enorme se pregunta antes de
/// cargarla.
bool CargarGrabarTexto(const QString& Accion, QString& Ruta, QPlainTextEdit& Caja);

/// Texto de `caja` tal cual, con los espacios duros y "\n" entre líneas: sus posiciones son las de los
/// cursores.
QString TextoDe(const QPlainTextEdit& caja);

/// true si lo que se cargó en `caja` era UTF-8.
bool EsUtf8(const QPlainTextEdit& caja);

/// Posición del primer carácter que se perdería al grabar `caja`, porque su página de códigos no lo tiene; -1
/// si ninguno.
qsizetype PrimeroSinGrabar(const QPlainTextEdit& caja);

}  // namespace herramientas
