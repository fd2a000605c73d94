#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace comunes {

/// Forma en que se muestra `valor` según el descriptor (T, L y A; D decimales; "+" da el mes a una fecha de
/// un solo día). Una fecha de un carácter queda en `valor` con un cero delante. Lo que no es fecha da "".
QString FormatValue(QString& valor, const QString& descriptor);

/// Forma en que se edita lo que se muestra: números sin grupos y con punto, cuentas IBAN sin blancos, fechas
/// dd/mm/yyyy. Un número o una fecha que no se entienden quedan como están. Un punto solo, donde el punto es
/// signo de grupo y no separa grupos de tres cifras, se lee como decimal: "1234.5" no puede ser 12345.
QString UnformatValue(const QString& valor, const QString& descriptor);

/// Completa una fecha tecleada con la actual: "5" y "5/" son un día de este mes, "5/3" de este año, "050326"
/// va por posiciones. Sin valor si no resulta una fecha que exista.
std::optional<QDate> CompletarFecha(const QString& tecleado);

}  // namespace comunes
