#include <QRegularExpression>
#include <array>

#include "comunes/plataforma/Formatos.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

std::optional<QDate> fechaPuesta;

struct Mes {
  const char* corto;
  const char* largo;
};
// Los del toolkit cambian entre versiones ("sept", "mar."), y el listado y el editor no deben cambiar con
// ellas.
constexpr std::array<Mes, 12> kMeses{{{"ene", "enero"},
                                      {"feb", "febrero"},
                                      {"mar", "marzo"},
                                      {"abr", "abril"},
                                      {"may", "mayo"},
                                      {"jun", "junio"},
                                      {"jul", "julio"},
                                      {"ago", "agosto"},
                                      {"sep", "septiembre"},
                                      {"oct", "octubre"},
                                      {"nov", "noviembre"},
                                      {"dic", "diciembre"}}};

QString conCeros(int valor, int ancho) {
  return u"%1"_s.arg(valor, ancho, 10, QChar(u'0'));
}

}  // namespace

QString NombreMes(int mes, bool corto) {
  if (mes < 1 || mes > 12) return {};
  const QLocale locale = LocaleUsuario();
  if (locale.language() == QLocale::Spanish) {
    const Mes& nombre = kMeses[static_cast<std::size_t>(mes - 1)];
    return QString::fromLatin1(corto ? nombre.corto : nombre.largo);
  }
  return locale.monthName(mes, corto ? QLocale::ShortFormat : QLocale::LongFormat);
}

QString FormatoFecha(const QDate& fecha, ModoFecha modo) {
  if (!fecha.isValid()) return {};
  const QString dia = conCeros(fecha.day(), 2);
  const QString ano = conCeros(fecha.year(), 4);
  switch (modo) {
    case ModoFecha::Numerica:
      return dia + u'/' + conCeros(fecha.month(), 2) + u'/' + ano;
    case ModoFecha::Corta:
      return dia + u' ' + NombreMes(fecha.month(), true) + u' ' + ano;
    case ModoFecha::DiaYMes:
      return dia + u' ' + NombreMes(fecha.month(), false);
  }
  return {};
}

std::optional<QDate> LeerFecha(const QString& texto) {
  static const QRegularExpression forma(u"\\A([0-9]{1,2})/([0-9]{1,2})/([0-9]{4}|[0-9]{2})\\z"_s);
  const auto partes = forma.match(texto.trimmed());
  if (!partes.hasMatch()) return std::nullopt;
  int ano = partes.capturedView(3).toInt();
  if (partes.capturedLength(3) == 2) ano += ano < 30 ? 2000 : 1900;
  const QDate fecha(ano, partes.capturedView(2).toInt(), partes.capturedView(1).toInt());
  if (!fecha.isValid() || ano < 100) return std::nullopt;
  return fecha;
}

QDate FechaActual() {
  return fechaPuesta.value_or(QDate::currentDate());
}

std::chrono::year_month_day Hoy() {
  const QDate hoy = FechaActual();
  return {std::chrono::year(hoy.year()), std::chrono::month(static_cast<unsigned>(hoy.month())),
          std::chrono::day(static_cast<unsigned>(hoy.day()))};
}

std::chrono::local_time<std::chrono::milliseconds> Ahora() {
  const std::chrono::milliseconds hora(QTime::currentTime().msecsSinceStartOfDay());
  return std::chrono::local_days(Hoy()) + hora;
}

void PonerFechaActual(const std::optional<QDate>& fecha) {
  fechaPuesta = fecha;
}

}  // namespace comunes
