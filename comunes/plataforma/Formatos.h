#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <chrono>
#include <optional>

#include "comunes/plataforma/Decimales.h"

namespace comunes {

/// Locale del usuario: el del sistema y, donde este no tiene ninguno ("C", "POSIX"), es_ES. Para números y
/// fechas úsense las funciones de aquí: `QLocale` no agrupa en español los números de cuatro cifras.
QLocale LocaleUsuario();
/// Pone otro locale; sin valor, vuelve al del sistema.
void PonerLocaleUsuario(const std::optional<QLocale>& locale);

QString SignoDecimal();
QString SignoGrupo();

/// Lectura benévola, con punto decimal: la misma que remesa::ValorNumerico.
double Val(const QString& texto);

/// Lee un número escrito con los signos del usuario ("1.234,50"): signo opcional, cifras con o sin grupos,
/// parte decimal opcional, blancos alrededor. Sin valor si sobra o falta algo.
std::optional<double> LeerNumero(const QString& texto);
/// Lo mismo, sin pasar por un binario.
std::optional<Cifras> LeerCifras(const QString& texto);

/// Format(valor, "#,##0.00…") con `decimales` ceros (0: "#,##0"): signos del usuario, grupos desde la cuarta
/// cifra. Redondea sobre el valor decimal más corto que da `valor` (1.005 es 1,01), la mitad hacia fuera del
/// cero; lo que queda en cero va sin signo. Lanza ErrorEjecucion 6 si `valor` no es finito.
QString FormatoNumero(double valor, int decimales);
/// Como FormatoNumero pero sin grupos y con punto: la forma de edición ("1234.50"; "0.50"; 0 da "0.00").
QString FormatoEdicion(double valor, int decimales);
/// Los mismos formatos, exactos.
QString FormatoNumero(const Cifras& valor, int decimales);
QString FormatoEdicion(const Cifras& valor, int decimales);
/// Céntimos como importe, "#,##0.00" con los signos del usuario. Exacto para cualquier entero.
QString FormatoCentimos(qint64 centimos);

enum class ModoFecha {
  Numerica,  ///< dd/mm/yyyy
  Corta,     ///< dd mmm yyyy: "05 mar 2026"
  DiaYMes,   ///< dd mmmm: "05 marzo"
};
/// Una fecha no válida da "".
QString FormatoFecha(const QDate& fecha, ModoFecha modo);
/// Nombre del mes `mes` (1 a 12) en el idioma del usuario. En español, sin punto y con "sep".
QString NombreMes(int mes, bool corto);

/// Fecha "d/m/aa" o "dd/mm/aaaa", blancos alrededor. Año de dos cifras: 00-29 es 2000-2029, 30-99 es
/// 1930-1999. Sin valor si no es una fecha que exista, o si el año es anterior al 100.
std::optional<QDate> LeerFecha(const QString& texto);

/// La fecha del sistema en cada uso, o la que ponga una prueba.
QDate FechaActual();
/// La misma, como la pide el núcleo.
std::chrono::year_month_day Hoy();
/// Ahora, en la hora local. Si una prueba puso la fecha, en ese día.
std::chrono::local_time<std::chrono::milliseconds> Ahora();
void PonerFechaActual(const std::optional<QDate>& fecha);

}  // namespace comunes
