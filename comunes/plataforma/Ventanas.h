#pragma once

#include <QColor>
#include <QString>

#include "comunes/plataforma/Escala.h"

class QPalette;
class QWidget;

namespace comunes {

/// Sustitutos de "MS Shell Dlg 2" (la letra de los diálogos del escritorio) y "Courier New" (la de ancho
/// fijo). Una vez, con la aplicación ya creada.
void PonerFuentes();

/// Regla común de letra: cada control de `ventana` cuya propiedad "Tag" no contiene "(FF)" toma la familia
/// "MS Shell Dlg 2", con su tamaño y su grosor; los demás guardan la suya.
void FuentesVentana(QWidget& ventana);

/// Disposición común, al cargarse la ventana: la encoge si no cabe en su pantalla y la centra sobre su dueña
/// o, sin ella, en la pantalla.
void DisponerVentana(QWidget& ventana);

/// La ventana activa, para poner una caja encima; nullptr si no la hay. De un menú desplegado, la que lo
/// abrió: él se destruye al cerrarse, y con él sus hijas.
QWidget* VentanaActiva();

/// Puntero de espera mientras viva ("reloj"); al destruirse vuelve el anterior ("Normal"), también si se sale
/// por un error.
class Reloj {
 public:
  Reloj();
  ~Reloj();
  Reloj(const Reloj&) = delete;
  Reloj& operator=(const Reloj&) = delete;
};

/// Color del texto que avisa, legible sobre el fondo de `paleta`, claro u oscuro.
QColor ColorAviso(const QPalette& paleta);

/// Texto de fuera para un título de botón, menú o etiqueta: "&" se ve y no subraya nada.
QString SinMnemonico(QString texto);
/// Texto de fuera para un control que interpretaría marcas por su cuenta (ayudas, "¿Qué es esto?"): se ve tal
/// cual.
QString TextoLiteral(const QString& texto);

}  // namespace comunes
