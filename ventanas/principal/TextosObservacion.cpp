#include "ventanas/principal/TextosObservacion.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string_view>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using remesa::ClaseObservacion;
using remesa::Observacion;

QString Registros(const Observacion& o) {
  return TextoCuenta(o.cuenta, u"registro"_s, u"registros"_s);
}

/// Según el número: la primera forma para uno, la segunda para varios.
QString Segun(const Observacion& o, const char* uno, const char* varios) {
  return QString::fromUtf8(o.cuenta == 1 ? uno : varios);
}

QString Numero(std::size_t numero) {
  return comunes::FormatoNumero(static_cast<double>(numero), 0);
}

/// " (el 12)", " (el primero, el 12)" o nada.
QString Donde(const Observacion& o) {
  if (o.primero == 0) return {};
  const QString numero = Numero(o.primero);
  return (o.cuenta == 1 ? u" (el %1)"_s : u" (el primero, el %1)"_s).arg(numero);
}

/// `una` o `varias` con las cabeceras de que se trata.
QString SegunCabeceras(const Observacion& o, const QString& una, const QString& varias) {
  return (o.antes.size() > 2 ? varias : una).arg(comunes::DesdeWindows1252(o.antes));
}

/// Lo mismo, de una cabecera.
QString DondeCabecera(const Observacion& o) {
  return (o.cuenta == 1 ? u" (registro %1)"_s : u" (la primera, registro %1)"_s).arg(Numero(o.primero));
}

QString Dato(const std::string& bytes) {
  return bytes.empty() ? u"en blanco"_s : comunes::DesdeWindows1252(bytes);
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
      return u"Las líneas acaban solo en LF: todo el fichero es un único registro y se perderían sus "
             u"adeudos. "
             u"Pida el fichero con finales de línea CR LF."_s;
    case ClaseObservacion::ConLF:
      return u"%1 con un LF dentro%2: puede haber varios adeudos en una línea."_s.arg(Registros(o), Donde(o));
    case ClaseObservacion::Utf8:
      return u"El fichero está en UTF-8 (lo muestra «%1», en el registro %2): cada letra con acento ocupa dos posiciones y corre lo que la sigue. Pida el fichero en ANSI (Windows-1252)."_s
          .arg(Dato(o.ahora), Numero(o.primero));
    case ClaseObservacion::RegistrosLargos:
      return u"%1 de más de 600 posiciones%2: al guardar %3 lo que sobra."_s.arg(
          Registros(o), Donde(o), Segun(o, "perderá", "perderán"));
    case ClaseObservacion::RegistrosCortos:
      return u"%1 de menos de 600 posiciones%2: al guardar se %3 con blancos."_s.arg(
          Registros(o), Donde(o), Segun(o, "completará", "completarán"));
    case ClaseObservacion::CodigosDescartados:
      return u"%1 de código desconocido%2: no %3."_s.arg(Registros(o), Donde(o),
                                                         Segun(o, "se importará", "se importarán"));
    case ClaseObservacion::SinTotales:
      return o.cuenta > 0 ? u"Sin registros de totales: al importarlo la remesa perderá los suyos. "
                            u"Importe después otro fichero que los tenga."_s
                          : u"Sin registros de totales: la remesa se quedará sin ellos."_s;
    case ClaseObservacion::SinCabeceras:
      return SegunCabeceras(o, u"Falta la cabecera %1: la remesa empezará sin ella."_s,
                            u"Faltan las cabeceras %1: la remesa empezará sin ellas."_s) +
             u" Importe antes un fichero completo."_s;
    case ClaseObservacion::CabecerasPerdidas:
      return SegunCabeceras(o, u"La remesa no tiene la cabecera %1 y la de este fichero no entrará."_s,
                            u"La remesa no tiene las cabeceras %1 y las de este fichero no entrarán."_s) +
             u" Pulse Empezar e impórtelo el primero."_s;
    case ClaseObservacion::Desbordamiento:
      return (o.cuenta > 0 ? u"El total llegaría a %1 y el máximo es %2: los totales no se podrán calcular."_s
                           : u"El importe llegaría a %1 y el máximo es %2: haga dos remesas."_s)
          .arg(TextoEuros(o.importe), Maximo());
    case ClaseObservacion::TotalesSinSitio:
      return u"Un registro de totales%1 es demasiado corto: la importación dará un error y los totales "
             u"quedarán "
             u"sin calcular. Pida otra vez el fichero."_s.arg(Donde(o));
    case ClaseObservacion::TotalesInteriores:
      return u"La remesa tiene %1 entre sus adeudos: al importar se %2."_s.arg(
          TextoCuenta(o.cuenta, u"registro de totales"_s, u"registros de totales"_s),
          Segun(o, "quitará", "quitarán"));
    case ClaseObservacion::OtroAcreedor:
      return u"Otro acreedor (%1): sus adeudos irán al de la remesa (%2)."_s.arg(Dato(o.ahora),
                                                                                 Dato(o.antes));
    case ClaseObservacion::OtraFecha:
      return u"Otra fecha de cobro (%1): sus adeudos se cobrarán en la de la remesa (%2)."_s.arg(
          Fecha(o.ahora), Fecha(o.antes));
    case ClaseObservacion::OtraCuenta:
      return u"Otra cuenta (%1): sus adeudos se abonarán en la de la remesa (%2)."_s.arg(Dato(o.ahora),
                                                                                         Dato(o.antes));
    default:
      return {};
  }
}

QString TextoDeBloques(const Observacion& o) {
  switch (o.clase) {
    case ClaseObservacion::SinDueno:
      return u"El registro %1 es un adeudo sin ninguna cabecera de acreedor (02) delante en su fichero: no "
             u"se "
             "sabe de quién es y no se puede importar."_s.arg(Numero(o.primero));
    case ClaseObservacion::BloquesNuevos: {
      const QString total = TextoCuenta(o.total, u"bloque"_s, u"bloques"_s);
      if (o.cuenta == 0) return u"Sus adeudos irán a bloques que ya están: %1 en total."_s.arg(total);
      if (o.cuenta == 1) return u"Su acreedor y su fecha tendrán bloque propio: %1 en total."_s.arg(total);
      return u"Sus acreedores y fechas tendrán %1 bloques propios: %2 en total."_s.arg(Numero(o.cuenta),
                                                                                       total);
    }
    case ClaseObservacion::OtroPresentador:
      return u"Otro presentador (%1): se queda el de la remesa (%2)."_s.arg(Dato(o.ahora), Dato(o.antes));
    case ClaseObservacion::CabeceraDistinta:
      return u"Otra dirección del acreedor %1, fecha %2%3: se queda la que ya está."_s.arg(
          Dato(o.antes), Fecha(o.fecha), DondeCabecera(o));
    case ClaseObservacion::CabeceraOtroNombre:
      return u"Otro nombre (%1) del acreedor %2, fecha %3%4: se queda el que ya está."_s.arg(
          Dato(o.ahora), Dato(o.antes), Fecha(o.fecha), DondeCabecera(o));
    case ClaseObservacion::CabeceraIncorrecta:
      return u"%1%2 de otra longitud, sin identificador o con una fecha que no existe: %3 antes de guardar."_s
          .arg(TextoCuenta(o.cuenta, u"cabecera de acreedor"_s, u"cabeceras de acreedor"_s), DondeCabecera(o),
               Segun(o, "corríjala", "corríjalas"));
    default:
      return {};
  }
}

QString TextoDeAcumulado(const Observacion& o) {
  const QString recalculo = u"se recalculan al importar, insertar o eliminar."_s;
  switch (o.clase) {
    case ClaseObservacion::TotalesAusentes:
      return u"La remesa no tiene registros de totales. Importe un fichero que los tenga."_s;
    case ClaseObservacion::TotalesNoCuadran:
      return u"Los totales no cuadran con los adeudos: %1"_s.arg(recalculo);
    case ClaseObservacion::TotalesPorBloque:
      return u"Los totales son los de cada bloque. Al importar, insertar o eliminar pasarán a correr de un "
             u"bloque a otro."_s;
    case ClaseObservacion::FaltanCabeceras:
      return SegunCabeceras(o, u"La remesa no tiene la cabecera %1."_s,
                            u"La remesa no tiene las cabeceras %1."_s) +
             u" Pulse Empezar e importe antes un fichero completo."_s;
    case ClaseObservacion::TotalesDesbordados:
      return (o.cuenta > 0 ? u"El total, %1, pasa del máximo, %2: los registros de totales no son válidos."_s
                           : u"El importe, %1, pasa del máximo, %2: haga dos remesas."_s)
          .arg(TextoEuros(o.importe), Maximo());
    case ClaseObservacion::TotalesCortos:
      return u"Un registro de totales es demasiado corto: los totales no se pueden calcular."_s;
    case ClaseObservacion::VariosBloques:
      return u"Hay %1: los totales corren de una a otra y no son los de cada bloque."_s.arg(
          TextoCuenta(o.cuenta, u"cabecera de acreedor"_s, u"cabeceras de acreedor"_s));
    case ClaseObservacion::CopiaIntercalada:
      return u"%1%2 %3 de su adeudo por una copia insertada."_s.arg(
          TextoCuenta(o.cuenta, u"registro opcional"_s, u"registros opcionales"_s), Donde(o),
          Segun(o, "separado", "separados"));
    case ClaseObservacion::OpcionalesSueltos:
      return u"%1%2 sin su adeudo delante: %3 también o recupere el adeudo."_s.arg(
          TextoCuenta(o.cuenta, u"registro opcional"_s, u"registros opcionales"_s), Donde(o),
          Segun(o, "elimínelo", "elimínelos"));
    default:
      return {};
  }
}

}  // namespace

QString TextoCuenta(std::size_t cuenta, const QString& uno, const QString& varios) {
  return comunes::FormatoNumero(static_cast<double>(cuenta), 0) + u' ' + (cuenta == 1 ? uno : varios);
}

QString TextoEuros(std::int64_t centimos) {
  return comunes::FormatoCentimos(centimos) + u" €"_s;
}

QString TextoObservacion(const Observacion& observacion) {
  for (const auto texto : {TextoDeImportacion, TextoDeBloques})
    if (const QString dicho = texto(observacion); !dicho.isEmpty()) return dicho;
  return TextoDeAcumulado(observacion);
}

QStringList TextosObservaciones(const std::vector<Observacion>& observaciones) {
  QStringList textos;
  for (const Observacion& observacion : observaciones)
    textos += TextoObservacion(observacion);
  return textos;
}

QString TextoMezcla(const std::vector<Observacion>& observaciones) {
  QStringList partes;
  for (const Observacion& o : observaciones) {
    if (o.clase == ClaseObservacion::OtroAcreedor) partes += u"otro acreedor (%1)"_s.arg(Dato(o.ahora));
    if (o.clase == ClaseObservacion::OtraFecha) partes += u"otra fecha de cobro (%1)"_s.arg(Fecha(o.ahora));
    if (o.clase == ClaseObservacion::OtraCuenta) partes += u"otra cuenta (%1)"_s.arg(Dato(o.ahora));
  }
  return partes.join(u" y "_s);
}

QString TextoFichero(const QString& nombre, const remesa::Resumen& resumen) {
  QStringList partes{comunes::ConMarcasEscritas(nombre)};
  if (resumen.adeudos == 0) {
    partes += TextoCuenta(resumen.registros, u"registro"_s, u"registros"_s);
  } else {
    partes += TextoCuenta(resumen.adeudos, u"adeudo"_s, u"adeudos"_s);
    partes += TextoEuros(resumen.importe);
  }
  const auto distintos = [&](std::string remesa::Bloque02::*dato) {
    std::set<std::string_view> datos;
    for (const remesa::Bloque02& bloque : resumen.bloques)
      datos.insert(bloque.*dato);
    return datos.size();
  };
  const std::size_t acreedores = distintos(&remesa::Bloque02::acreedor);
  const std::size_t fechas = distintos(&remesa::Bloque02::fecha);
  if (acreedores == 1 && !resumen.nombreAcreedor.empty())
    partes += comunes::SinControles(comunes::DesdeWindows1252(resumen.nombreAcreedor));
  if (acreedores > 1) partes += TextoCuenta(acreedores, u"acreedor"_s, u"acreedores"_s);
  if (fechas == 1) partes += Fecha(resumen.bloques.front().fecha);
  if (fechas > 1) partes += TextoCuenta(fechas, u"fecha de cobro"_s, u"fechas de cobro"_s);
  return partes.join(u" · "_s);
}

}  // namespace principal
