#include "comunes/campos/Formato.h"

#include <algorithm>

#include "comunes/campos/Blancos.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Identificadores.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/SEPA.h"

namespace comunes {

namespace {

constexpr int kMaxDecimales = 30;

bool esCifra(QChar c) {
  return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

int decimalesDe(const QString& descriptor) {
  const QString d = GetTag(descriptor, QStringLiteral("D")).value_or(QString());
  return d.isEmpty() ? 2 : static_cast<int>(std::clamp(Val(d), 0.0, double{kMaxDecimales}));
}

/// Las cifras que leería Val, todas.
Cifras cifrasConPunto(const QString& texto) {
  Cifras c;
  qsizetype i = 0;
  while (i < texto.size() && (texto[i] == QLatin1Char(' ') || texto[i] == QLatin1Char('\t')))
    ++i;
  if (i < texto.size() && (texto[i] == QLatin1Char('-') || texto[i] == QLatin1Char('+')))
    c.negativo = texto[i++] == QLatin1Char('-');
  bool punto = false;
  for (; i < texto.size() && (esCifra(texto[i]) || (!punto && texto[i] == QLatin1Char('.'))); ++i) {
    if (texto[i] == QLatin1Char('.'))
      punto = true;
    else
      (punto ? c.decimales : c.enteras) += texto[i].toLatin1();
  }
  return c;
}

/// true si `texto` es un número con un solo punto que no puede separar grupos de tres cifras: está en la
/// forma de edición y no en la que se muestra.
bool tienePuntoDecimal(const QString& texto) {
  const QString numero = SinBlancos(texto);
  const qsizetype inicio = numero.startsWith(QLatin1Char('-')) ? 1 : 0;
  const qsizetype punto = numero.indexOf(QLatin1Char('.'));
  if (punto < 0) return false;
  for (qsizetype i = inicio; i < numero.size(); ++i)
    if (i != punto && !esCifra(numero[i])) return false;
  const qsizetype enteras = punto - inicio;
  const qsizetype decimales = numero.size() - punto - 1;
  if (enteras + decimales == 0) return false;
  return SignoGrupo() != QLatin1String(".") || enteras == 0 || enteras > 3 || decimales != 3;
}

QString mostrarFijo(const QString& valor, const QString& ajuste, qsizetype longitud) {
  if (SinBlancos(valor).isEmpty()) return {};
  QString sinPrimeros = valor;
  while (sinPrimeros.startsWith(QLatin1Char(' ')))
    sinPrimeros.remove(0, 1);
  if (ajuste == QLatin1String("D"))
    return (QString(longitud, QLatin1Char(' ')) + sinPrimeros).right(longitud);
  if (ajuste == QLatin1String("C"))
    return (QString(longitud, QLatin1Char('0')) + sinPrimeros).right(longitud);
  if (ajuste == QLatin1String("I"))
    return (SinBlancos(valor) + QString(longitud, QLatin1Char(' '))).left(longitud);
  return {};
}

QString mostrarFecha(QString& valor, const QString& descriptor, ModoFecha modo) {
  const QString defecto = GetTag(descriptor, QStringLiteral("+")).value_or(QString());
  if (valor.size() == 1) valor.prepend(QLatin1Char('0'));
  const bool conMes = !defecto.isEmpty() && valor.size() == 2;
  const auto fecha = CompletarFecha(conMes ? valor + defecto.mid(3, 2) : valor);
  return fecha ? FormatoFecha(*fecha, modo) : QString();
}

QString mostrarHora(const QString& valor) {
  qsizetype separador = valor.indexOf(QLatin1Char(':'));
  if (separador < 0) separador = valor.size();
  const auto dosCifras = [](const QString& parte) {
    const Cifras leidas = cifrasConPunto(parte);
    return QString::fromStdString("00" + leidas.enteras).right(2);
  };
  return dosCifras(valor.left(separador)) + QLatin1Char(':') + dosCifras(valor.mid(separador + 1));
}

QString mostrarIban(const QString& valor) {
  QString cuenta = valor;
  cuenta.remove(QLatin1Char(' '));
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
  QStringList partes = texto.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  if (partes.size() < 2) return std::nullopt;
  bool esNumero = false;
  const int dia = partes.takeFirst().toInt(&esNumero);
  if (!esNumero) return std::nullopt;
  int ano = partes.last().toInt(&esNumero);
  if (esNumero) partes.removeLast();
  const int mes = mesLlamado(partes.join(QLatin1Char(' ')));
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
  std::optional<Cifras> cifras;
  if (tienePuntoDecimal(valor))
    cifras = cifrasConPunto(valor);
  else
    cifras = LeerCifras(valor);
  // El formato "#." no muestra el cero de la parte entera, y un texto que no es número queda como está.
  QString texto = cifras ? FormatoEdicion(*cifras, decimales) : valor;
  if (cifras && decimales == 0 && texto == QLatin1String("0")) return {};
  if (cifras && texto.startsWith(QLatin1String("-0."))) texto.remove(1, 1);
  if (const qsizetype coma = texto.indexOf(QLatin1Char(',')); coma >= 0) texto[coma] = QLatin1Char('.');
  if (texto.endsWith(QLatin1Char('.'))) texto.chop(1);
  if (texto.startsWith(QLatin1Char('.'))) texto.prepend(QLatin1Char('0'));
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
  const qsizetype barras = texto.count(QLatin1Char('/'));
  const bool acabaEnBarra = texto.endsWith(QLatin1Char('/'));
  if (barras == 1)
    return LeerFecha(acabaEnBarra ? conMes(texto.chopped(1)) : conAno(texto + QLatin1Char('/')));
  if (barras == 2) return LeerFecha(acabaEnBarra ? conAno(texto) : texto);
  if (barras > 2 || texto.isEmpty() || texto.size() == 3) return std::nullopt;
  if (texto.size() < 3) return LeerFecha(conMes(texto));
  const QString diaMes = texto.left(2) + QLatin1Char('/') + texto.mid(2, 2) + QLatin1Char('/');
  return LeerFecha(texto.size() == 4 ? conAno(diaMes) : diaMes + texto.mid(4));
}

QString FormatValue(QString& valor, const QString& descriptor) {
  const QString tipo = GetTag(descriptor, QStringLiteral("T")).value_or(QString());
  const QString l = GetTag(descriptor, QStringLiteral("L")).value_or(QString());
  const QString ajuste = GetTag(descriptor, QStringLiteral("A")).value_or(QString());
  if (tipo == QLatin1String("N") || tipo == QLatin1String("n")) {
    if (SinBlancos(valor).isEmpty()) return {};
    return FormatoNumero(cifrasConPunto(valor), decimalesDe(descriptor));
  }
  if (tipo == QLatin1String("D"))
    return mostrarFijo(valor, ajuste, static_cast<qsizetype>(std::clamp(Val(l), 0.0, 65535.0)));
  if (tipo == QLatin1String("I")) return mostrarIban(valor);
  if (tipo == QLatin1String("F")) return mostrarFecha(valor, descriptor, ModoFecha::Corta);
  if (tipo == QLatin1String("f")) return mostrarFecha(valor, descriptor, ModoFecha::DiaYMes);
  if (tipo == QLatin1String("H")) return mostrarHora(valor);
  QString desarrollado = valor;
  if (tipo == QLatin1String("X")) NifLetter(desarrollado);
  if (tipo == QLatin1String("C")) LedgerAccount(desarrollado);
  return desarrollado;
}

QString UnformatValue(const QString& valor, const QString& descriptor) {
  const QString tipo = GetTag(descriptor, QStringLiteral("T")).value_or(QString());
  if (tipo == QLatin1String("N") || tipo == QLatin1String("n"))
    return editarNumero(valor, decimalesDe(descriptor));
  if (tipo == QLatin1String("I")) {
    QString cuenta = valor;
    return cuenta.remove(QLatin1Char(' '));
  }
  if (tipo == QLatin1String("F") || tipo == QLatin1String("f")) {
    auto fecha = LeerFecha(valor);
    if (!fecha) fecha = leerMostrada(valor);
    return fecha ? FormatoFecha(*fecha, ModoFecha::Numerica) : valor;
  }
  return valor;
}

}  // namespace comunes
