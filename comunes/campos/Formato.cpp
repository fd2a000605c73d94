#include "comunes/campos/Formato.h"

#include <algorithm>

#include "comunes/campos/Blancos.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Identificadores.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/SEPA.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMaxDecimales = 30;

int decimalesDe(const QString& descriptor) {
  const QString d = GetTag(descriptor, u"D"_s).value_or(QString());
  return d.isEmpty() ? 2 : static_cast<int>(std::clamp(Val(d), 0.0, double{kMaxDecimales}));
}

/// Las cifras que leería Val, todas.
Cifras cifrasConPunto(const QString& texto) {
  return LeerDecimal(SinBlancosDelante(texto), {.signos = u"+-", .decimal = u"."}).cifras;
}

/// Lo que es un número con un solo punto que no puede separar grupos de tres cifras: está en la forma de
/// edición y no en la que se muestra.
std::optional<Cifras> cifrasDeEdicion(const QString& texto) {
  const QString limpio = SinBlancos(texto);
  const auto [c, grupos, conPunto, cola] = LeerDecimal(limpio, {.signos = u"-", .decimal = u"."});
  if (!conPunto || !cola.isEmpty() || c.vacias()) return std::nullopt;
  const bool deGrupo =
      SignoGrupo() == "."_L1 && !c.enteras.empty() && c.enteras.size() <= 3 && c.decimales.size() == 3;
  return deGrupo ? std::nullopt : std::optional(c);
}

QString mostrarFijo(const QString& valor, const QString& ajuste, qsizetype longitud) {
  if (SinBlancos(valor).isEmpty()) return {};
  QString sinPrimeros = valor;
  while (sinPrimeros.startsWith(u' '))
    sinPrimeros.remove(0, 1);
  if (ajuste == "D"_L1) return (QString(longitud, u' ') + sinPrimeros).right(longitud);
  if (ajuste == "C"_L1) return (QString(longitud, u'0') + sinPrimeros).right(longitud);
  if (ajuste == "I"_L1) return (SinBlancos(valor) + QString(longitud, u' ')).left(longitud);
  return {};
}

QString mostrarFecha(QString& valor, const QString& descriptor, ModoFecha modo) {
  const QString defecto = GetTag(descriptor, u"+"_s).value_or(QString());
  if (valor.size() == 1) valor.prepend(u'0');
  const bool conMes = !defecto.isEmpty() && valor.size() == 2;
  const auto fecha = CompletarFecha(conMes ? valor + defecto.mid(3, 2) : valor);
  return fecha ? FormatoFecha(*fecha, modo) : QString();
}

QString mostrarHora(const QString& valor) {
  qsizetype separador = valor.indexOf(u':');
  if (separador < 0) separador = valor.size();
  const auto dosCifras = [](const QString& parte) {
    const Cifras leidas = cifrasConPunto(parte);
    return QString::fromStdString("00" + leidas.enteras).right(2);
  };
  return dosCifras(valor.left(separador)) + u':' + dosCifras(valor.mid(separador + 1));
}

QString mostrarIban(const QString& valor) {
  QString cuenta = valor;
  cuenta.remove(u' ');
  return DesdeWindows1252(remesa::FormatoIBAN(AWindows1252(cuenta), true));
}

/// Mes con ese nombre, corto o largo; 0 si no lo hay.
int mesLlamado(const QString& nombre) {
  for (int mes = 1; mes <= 12; ++mes)
    for (const bool corto : {true, false})
      if (NombreMes(mes, corto).compare(nombre, Qt::CaseInsensitive) == 0) return mes;
  return 0;
}

/// Lee lo que FormatValue muestra: "05 mar 2026", o "05 marzo", que es de este año.
std::optional<QDate> leerMostrada(const QString& texto) {
  QStringList partes = texto.split(u' ', Qt::SkipEmptyParts);
  if (partes.size() < 2) return std::nullopt;
  bool esNumero = false;
  const int dia = partes.takeFirst().toInt(&esNumero);
  if (!esNumero) return std::nullopt;
  int ano = partes.last().toInt(&esNumero);
  if (esNumero) partes.removeLast();
  const int mes = mesLlamado(partes.join(u' '));
  if (!esNumero) {
    ano = FechaActual().year();
    // El 29 de febrero que se tecleó con su año no se pierde por visitarlo en otro.
    while (dia == 29 && mes == 2 && !QDate::isLeapYear(ano))
      --ano;
  }
  const QDate fecha(ano, mes, dia);
  return fecha.isValid() ? std::optional(fecha) : std::nullopt;
}

QString editarNumero(const QString& valor, int decimales) {
  std::optional<Cifras> cifras = cifrasDeEdicion(valor);
  if (!cifras) cifras = LeerCifras(valor);
  // El formato "#." no muestra el cero de la parte entera, y un texto que no es número queda como está.
  QString texto = cifras ? FormatoEdicion(*cifras, decimales) : valor;
  if (cifras && decimales == 0 && texto == "0"_L1) return {};
  if (cifras && texto.startsWith("-0."_L1)) texto.remove(1, 1);
  if (const qsizetype coma = texto.indexOf(u','); coma >= 0) texto[coma] = u'.';
  if (texto.endsWith(u'.')) texto.chop(1);
  if (texto.startsWith(u'.')) texto.prepend(u'0');
  return texto;
}

}  // namespace

std::optional<QDate> CompletarFecha(const QString& tecleado) {
  const QString texto = SinBlancos(tecleado);
  const QDate hoy = FechaActual();
  const auto conMes = [&hoy](const QString& dia) {
    return dia + FormatoFecha(hoy, ModoFecha::Numerica).mid(2);
  };
  const auto conAno = [&hoy](const QString& diaMes) {
    return diaMes + FormatoFecha(hoy, ModoFecha::Numerica).right(4);
  };
  const qsizetype barras = texto.count(u'/');
  const bool acabaEnBarra = texto.endsWith(u'/');
  if (barras == 1) return LeerFecha(acabaEnBarra ? conMes(texto.chopped(1)) : conAno(texto + u'/'));
  if (barras == 2) return LeerFecha(acabaEnBarra ? conAno(texto) : texto);
  if (barras > 2 || texto.isEmpty() || texto.size() == 3) return std::nullopt;
  if (texto.size() < 3) return LeerFecha(conMes(texto));
  const QString diaMes = texto.left(2) + u'/' + texto.mid(2, 2) + u'/';
  return LeerFecha(texto.size() == 4 ? conAno(diaMes) : diaMes + texto.mid(4));
}

QString FormatValue(QString& valor, const QString& descriptor) {
  const QString tipo = GetTag(descriptor, u"T"_s).value_or(QString());
  const QString l = GetTag(descriptor, u"L"_s).value_or(QString());
  const QString ajuste = GetTag(descriptor, u"A"_s).value_or(QString());
  if (tipo == "N"_L1 || tipo == "n"_L1) {
    if (SinBlancos(valor).isEmpty()) return {};
    return FormatoNumero(cifrasConPunto(valor), decimalesDe(descriptor));
  }
  if (tipo == "D"_L1)
    return mostrarFijo(valor, ajuste, static_cast<qsizetype>(std::clamp(Val(l), 0.0, 65535.0)));
  if (tipo == "I"_L1) return mostrarIban(valor);
  if (tipo == "F"_L1) return mostrarFecha(valor, descriptor, ModoFecha::Corta);
  if (tipo == "f"_L1) return mostrarFecha(valor, descriptor, ModoFecha::DiaYMes);
  if (tipo == "H"_L1) return mostrarHora(valor);
  QString desarrollado = valor;
  if (tipo == "X"_L1) NifLetter(desarrollado);
  if (tipo == "C"_L1) LedgerAccount(desarrollado);
  return desarrollado;
}

QString UnformatValue(const QString& valor, const QString& descriptor) {
  const QString tipo = GetTag(descriptor, u"T"_s).value_or(QString());
  if (tipo == "N"_L1 || tipo == "n"_L1) return editarNumero(valor, decimalesDe(descriptor));
  if (tipo == "I"_L1) {
    QString cuenta = valor;
    return cuenta.remove(u' ');
  }
  if (tipo == "F"_L1 || tipo == "f"_L1) {
    auto fecha = LeerFecha(valor);
    if (!fecha) fecha = leerMostrada(valor);
    return fecha ? FormatoFecha(*fecha, ModoFecha::Numerica) : valor;
  }
  return valor;
}

}  // namespace comunes
