#include "ventanas/editor/Ayudas.h"

#include <QDate>
#include <algorithm>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/SEPA.h"

namespace editor {

using namespace Qt::StringLiterals;

namespace {

/// Lo que se comprueba de una cuenta: el IBAN español.
constexpr int kLongitudIBAN = 24;
constexpr int kLongitudFecha = 8;

std::optional<QDate> fechaDe(const QString& texto) {
  const QString completo = texto + QString(kLongitudFecha, u' ');
  const QString anio = completo.left(4);
  const QString mes = completo.mid(4, 2);
  const QString dia = completo.mid(6, 2);
  const auto entre = [](double valor, int desde, int hasta) { return valor >= desde && valor <= hasta; };
  if (!entre(comunes::Val(mes), 1, 12) || !entre(comunes::Val(dia), 1, 31)) return std::nullopt;
  if (comunes::Val(anio) > comunes::FechaActual().year() + 1) return std::nullopt;
  return comunes::LeerFecha(dia + u'/' + mes + u'/' + anio);
}

QString centimos(const QString& texto) {
  bool entero = false;
  const qint64 valor = texto.trimmed().toLongLong(&entero);
  return entero ? comunes::FormatoCentimos(valor) : comunes::FormatoNumero(comunes::Val(texto) / 100, 2);
}

QString conCeros(const QString& cifras, int longitud) {
  return (QString(longitud, u'0') + cifras).right(longitud);
}

QString motivoFecha(const QString& texto) {
  const auto cifra = [](QChar c) { return c >= u'0' && c <= u'9'; };
  if (texto.size() != kLongitudFecha || !std::all_of(texto.begin(), texto.end(), cifra))
    return u"son ocho cifras, AAAAMMDD"_s;
  const QString mes = texto.mid(4, 2);
  if (mes.toInt() < 1 || mes.toInt() > 12) return u"el mes %1 no existe"_s.arg(mes);
  const int tope = comunes::FechaActual().year() + 1;
  if (texto.left(4).toInt() > tope) return u"el año no puede pasar de %1"_s.arg(tope);
  return u"ese día no existe"_s;
}

QString motivoIban(const QString& texto) {
  if (texto.size() != kLongitudIBAN)
    return u"tiene %1 caracteres y se comprueban cuentas de %2"_s.arg(texto.size()).arg(kLongitudIBAN);
  return u"no cumple sus dígitos de control"_s;
}

}  // namespace

QString PorQueNoVale(Ayuda ayuda, const QString& texto) {
  const QString dato = texto.trimmed();
  if (ayuda == Ayuda::Fecha) return motivoFecha(dato);
  if (ayuda == Ayuda::Iban) return motivoIban(dato);
  return u"el importe no puede ser cero"_s;
}

bool DatoCorrecto(Ayuda ayuda, const QString& texto) {
  switch (ayuda) {
    case Ayuda::Fecha:
      return fechaDe(texto).has_value();
    case Ayuda::Iban:
      return remesa::IBANValido(comunes::AWindows1252(texto.leftJustified(kLongitudIBAN, u' ', true)));
    case Ayuda::Euros:
      return comunes::Val(texto) != 0;
    case Ayuda::Numero:
    case Ayuda::Ninguna:
      break;
  }
  return true;
}

QString Interpretar(Ayuda ayuda, const QString& texto) {
  switch (ayuda) {
    case Ayuda::Fecha: {
      const auto fecha = fechaDe(texto);
      return fecha ? comunes::FormatoFecha(*fecha, comunes::ModoFecha::Numerica) : QString();
    }
    case Ayuda::Iban:
      return comunes::DesdeWindows1252(remesa::FormatoIBAN(comunes::AWindows1252(texto), false));
    case Ayuda::Euros:
      return centimos(texto);
    case Ayuda::Numero:
      return comunes::FormatoNumero(comunes::Val(texto), 0);
    case Ayuda::Ninguna:
      break;
  }
  return {};
}

QString DescriptorPeticion(Ayuda ayuda, int longitud) {
  const QString cierre = QString::number(longitud) + u')';
  switch (ayuda) {
    case Ayuda::Fecha:
      return u"T(F) A(D) L(10)"_s;
    case Ayuda::Euros:
      return u"T(n) A(D) L("_s + cierre;
    case Ayuda::Iban:
      return u"T(M) A(I) L("_s + cierre;
    case Ayuda::Numero:
      return u"T(D) A(D) L("_s + cierre;
    case Ayuda::Ninguna:
      break;
  }
  return {};
}

std::optional<QString> ConvertirRespuesta(Ayuda ayuda, int longitud, const QString& respuesta) {
  QString valor = respuesta.trimmed();
  if (respuesta.isEmpty()) return std::nullopt;
  switch (ayuda) {
    case Ayuda::Fecha: {
      const auto fecha = comunes::LeerFecha(valor);
      if (!fecha) return std::nullopt;
      return fecha->toString(u"yyyyMMdd"_s);
    }
    case Ayuda::Iban:
      valor.remove(u' ');
      return valor.startsWith("IBAN"_L1) ? valor.mid(4) : valor;
    case Ayuda::Euros:
      return conCeros(valor.remove(u'.'), longitud);
    case Ayuda::Numero:
      return conCeros(valor, longitud);
    case Ayuda::Ninguna:
      break;
  }
  return valor;
}

}  // namespace editor
