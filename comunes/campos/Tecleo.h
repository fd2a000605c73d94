#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

class QLineEdit;

namespace comunes {

/// Estado común a todas las cajas.
struct EstadoTecleo {
  bool reescribiendo = false;    ///< una rutina de foco está cambiando el texto
  bool sinFiltrar = false;       ///< el texto lo pone el programa: no se filtra
  bool noRecordarCaja = false;   ///< con true, `ultimaCaja` no se toca
  QPointer<QWidget> ultimaCaja;  ///< la última caja que se dejó
};
EstadoTecleo& Tecleo();

/// Descriptor de una caja: su propiedad dinámica "Tag".
QString Descriptor(const QWidget* caja);
void PonerDescriptor(QWidget* caja, const QString& descriptor);

/// Filtra un carácter tecleado en un QLineEdit, QCheckBox o QComboBox. `tecla` sale con el carácter que se ha
/// de escribir, o con 0 si no se escribe ninguno. Retroceso (8) pasa; Intro (13) y "+" mueven el foco.
void TagKeyPress(QWidget* caja, char32_t& tecla);

/// Al entrar: fondo de foco (el anterior queda en la clave P), texto en su forma de edición y seleccionado.
void TagGotFocus(QWidget* caja);
/// Al salir: el fondo de antes y el texto en la forma en que se muestra.
void TagLostFocus(QWidget* caja);

/// El texto de la caja como se edita, sin blancos a los lados.
QString FormaEdicion(const QLineEdit* linea);
/// Da al texto de la caja la forma en que se muestra.
void DarFormato(QLineEdit* linea);

/// Cambia desde el programa el texto de una caja, tenga o no el foco, sin filtrarlo.
void PonerTexto(QWidget* caja, const QString& texto);

}  // namespace comunes
