#include "ventanas/principal/TextosObservacion.h"

#include <limits>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"

namespace principal {
namespace {

using remesa::ClaseObservacion;
using remesa::Observacion;

QString Registros(const Observacion& o) {
  return TextoCuenta(o.cuenta, QStringLiteral("registro"), QStringLiteral("registros"));
}

/// Según el número: la primera forma para uno, la segunda para varios.
QString Segun(const Observacion& o, const char* uno, const char* varios) {
  return QString::fromUtf8(o.cuenta == 1 ? uno : varios);
}

/// " (el 12)", " (el primero, el 12)" o nada.
QString Donde(const Observacion& o) {
  if (o.primero == 0) return {};
  const QString numero = comunes::FormatoNumero(static_cast<double>(o.primero), 0);
  return (o.cuenta == 1 ? QStringLiteral(" (el %1)") : QStringLiteral(" (el primero, el %1)")).arg(numero);
}

QString Dato(const std::string& bytes) {
  return bytes.empty() ? QStringLiteral("en blanco") : comunes::DesdeWindows1252(bytes);
}

QString Fecha(const std::string& fecha) {
  if (fecha.size() != 8) return Dato(fecha);
  return comunes::DesdeWindows1252(remesa::FechaQ19(fecha));
}

QString Maximo() {
  return TextoEuros(std::numeric_limits<std::int32_t>::max());
}

QString TextoDeImportacion(const Observacion& o) {
  switch (o.clase) {
    case ClaseObservacion::SoloLF:
      return QStringLiteral(
          "Las líneas acaban solo en LF: todo el fichero es un único registro y se perderían sus adeudos. "
          "Pida el fichero con finales de línea CR LF.");
    case ClaseObservacion::ConLF:
      return QStringLiteral("%1 con un LF dentro%2: puede haber varios adeudos en una línea.")
          .arg(Registros(o), Donde(o));
    case ClaseObservacion::RegistrosLargos:
      return QStringLiteral("%1 de más de 600 posiciones%2: al guardar %3 lo que sobra.")
          .arg(Registros(o), Donde(o), Segun(o, "perderá", "perderán"));
    case ClaseObservacion::RegistrosCortos:
      return QStringLiteral("%1 de menos de 600 posiciones%2: al guardar se %3 con blancos.")
          .arg(Registros(o), Donde(o), Segun(o, "completará", "completarán"));
    case ClaseObservacion::CodigosDescartados:
      return QStringLiteral("%1 de código desconocido%2: no %3.")
          .arg(Registros(o), Donde(o), Segun(o, "se importará", "se importarán"));
    case ClaseObservacion::SinTotales:
      return o.cuenta > 0 ? QStringLiteral(
                                "Sin registros de totales: al importarlo la remesa perderá los suyos. "
                                "Importe después otro fichero que los tenga.")
                          : QStringLiteral("Sin registros de totales: la remesa se quedará sin ellos.");
    case ClaseObservacion::SinCabeceras:
      return (o.antes.size() > 2 ? QStringLiteral("Faltan las cabeceras %1: la remesa empezará sin ellas.")
                                 : QStringLiteral("Falta la cabecera %1: la remesa empezará sin ella."))
                 .arg(comunes::DesdeWindows1252(o.antes)) +
             QStringLiteral(" Importe antes un fichero completo.");
    case ClaseObservacion::Desbordamiento:
      return QStringLiteral("El total llegaría a %1 y el máximo es %2: los totales no se podrán calcular.")
          .arg(TextoEuros(o.importe), Maximo());
    case ClaseObservacion::OtroAcreedor:
      return QStringLiteral("Otro acreedor (%1): sus adeudos irán al de la remesa (%2).")
          .arg(Dato(o.ahora), Dato(o.antes));
    case ClaseObservacion::OtraFecha:
      return QStringLiteral("Otra fecha de cobro (%1): sus adeudos se cobrarán en la de la remesa (%2).")
          .arg(Fecha(o.ahora), Fecha(o.antes));
    default:
      return {};
  }
}

QString TextoDeAcumulado(const Observacion& o) {
  const QString recalculo = QStringLiteral("se recalculan al importar, insertar o eliminar.");
  switch (o.clase) {
    case ClaseObservacion::TotalesAusentes:
      return QStringLiteral("La remesa no tiene registros de totales. Importe un fichero que los tenga.");
    case ClaseObservacion::TotalesNoCuadran:
      return QStringLiteral("Los totales no cuadran con los adeudos: %1").arg(recalculo);
    case ClaseObservacion::TotalesPorBloque:
      return QStringLiteral(
          "Los totales son los de cada bloque; al importar, insertar o eliminar pasarán a correr de un "
          "bloque a otro.");
    case ClaseObservacion::TotalesDesbordados:
      return QStringLiteral("El total, %1, pasa del máximo, %2: los registros de totales no son válidos.")
          .arg(TextoEuros(o.importe), Maximo());
    case ClaseObservacion::TotalesCortos:
      return QStringLiteral("Un registro de totales es demasiado corto: los totales no se pueden calcular.");
    case ClaseObservacion::VariosBloques:
      return QStringLiteral("Hay %1: los totales corren de una a otra y no son los de cada bloque.")
          .arg(TextoCuenta(o.cuenta, QStringLiteral("cabecera de acreedor"),
                           QStringLiteral("cabeceras de acreedor")));
    case ClaseObservacion::CopiaIntercalada:
      return QStringLiteral("%1%2 %3 de su adeudo por una copia insertada.")
          .arg(TextoCuenta(o.cuenta, QStringLiteral("registro opcional"),
                           QStringLiteral("registros opcionales")),
               Donde(o), Segun(o, "separado", "separados"));
    case ClaseObservacion::OpcionalesSueltos:
      return QStringLiteral("%1%2 sin su adeudo delante: %3 también o recupere el adeudo.")
          .arg(TextoCuenta(o.cuenta, QStringLiteral("registro opcional"),
                           QStringLiteral("registros opcionales")),
               Donde(o), Segun(o, "elimínelo", "elimínelos"));
    default:
      return {};
  }
}

}  // namespace

QString TextoCuenta(std::size_t cuenta, const QString& uno, const QString& varios) {
  return comunes::FormatoNumero(static_cast<double>(cuenta), 0) + u' ' + (cuenta == 1 ? uno : varios);
}

QString TextoEuros(std::int64_t centimos) {
  return comunes::FormatoCentimos(centimos) + QStringLiteral(" €");
}

QString TextoObservacion(const Observacion& observacion) {
  const QString texto = TextoDeImportacion(observacion);
  return texto.isEmpty() ? TextoDeAcumulado(observacion) : texto;
}

QStringList TextosObservaciones(const std::vector<Observacion>& observaciones) {
  QStringList textos;
  for (const Observacion& observacion : observaciones)
    textos += TextoObservacion(observacion);
  return textos;
}

}  // namespace principal
