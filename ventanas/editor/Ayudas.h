#pragma once

#include <QString>
#include <optional>

#include "ventanas/editor/Descripciones.h"

namespace editor {

/// Si el texto del campo vale: una fecha AAAAMMDD que exista y no pase del año que viene, un IBAN de 24
/// caracteres con sus dígitos de control, un importe que no sea cero. Sin ayuda, o con NUMERO, siempre.
bool DatoCorrecto(Ayuda ayuda, const QString& texto);

/// Por qué no vale un texto que no es DatoCorrecto, para detrás de dos puntos: "el mes 13 no existe".
QString PorQueNoVale(Ayuda ayuda, const QString& texto);

/// El texto del campo interpretado: "15/03/2026", "IBAN ES91 2100…", céntimos como "1.234,50", "12.345".
/// Vacío sin ayuda, o si no es una fecha.
QString Interpretar(Ayuda ayuda, const QString& texto);

/// Descriptor con que se pide el valor de un campo de esa longitud.
QString DescriptorPeticion(Ayuda ayuda, int longitud);

/// Respuesta a la petición, en la forma del registro: fecha AAAAMMDD, IBAN sin blancos ni prefijo, céntimos
/// con ceros delante (las cifras que no caben se pierden por la izquierda: véase GuiaDe). Sin valor
/// si está vacía o no es una fecha.
std::optional<QString> ConvertirRespuesta(Ayuda ayuda, int longitud, const QString& respuesta);

}  // namespace editor
