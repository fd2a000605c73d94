#include "comunes/plataforma/Formatos.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Registro.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

std::optional<QLocale> localePuesto;

/// Suma uno a la última cifra de `c`, con las llevadas.
void sumarUno(Cifras& c) {
  for (std::string* parte : {&c.decimales, &c.enteras}) {
    for (std::size_t i = parte->size(); i-- > 0;) {
      char& cifra = (*parte)[i];
      if (cifra != '9') {
        ++cifra;
        return;
      }
      cifra = '0';
    }
  }
  c.enteras.insert(c.enteras.begin(), '1');
}

/// Cifras de `valor`, sin redondear: las del decimal más corto que lo da. 1,005 está por debajo de su mitad
/// en binario y el operador que lo tecleó espera 1,01.
Cifras cifrasDe(double valor) {
  if (!std::isfinite(valor)) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  std::array<char, 1100> zona;
  const auto fin =
      std::to_chars(zona.data(), zona.data() + zona.size(), std::fabs(valor), std::chars_format::fixed);
  Cifras c;
  c.negativo = std::signbit(valor);
  c.enteras.assign(zona.data(), fin.ptr);
  if (const auto punto = c.enteras.find('.'); punto != std::string::npos) {
    c.decimales = c.enteras.substr(punto + 1);
    c.enteras.erase(punto);
  }
  return c;
}

Cifras redondear(Cifras c, int decimales) {
  const auto ancho = static_cast<std::size_t>(std::max(decimales, 0));
  const bool sube = c.decimales.size() > ancho && c.decimales[ancho] >= '5';
  c.decimales.resize(ancho, '0');
  if (sube) sumarUno(c);
  c.enteras.erase(0, std::min(c.enteras.find_first_not_of('0'), c.enteras.size()));
  c.negativo = c.negativo && (c.enteras + c.decimales).find_first_not_of('0') != std::string::npos;
  return c;
}

QString componer(const Cifras& c, const QString& grupo, const QString& punto) {
  const std::string enteras = c.enteras.empty() ? "0" : c.enteras;
  QString texto = c.negativo ? u"-"_s : QString();
  for (std::size_t i = 0; i < enteras.size(); ++i) {
    if (i > 0 && (enteras.size() - i) % 3 == 0) texto += grupo;
    texto += QLatin1Char(enteras[i]);
  }
  if (!c.decimales.empty()) texto += punto + QString::fromStdString(c.decimales);
  return texto;
}

}  // namespace

QLocale LocaleUsuario() {
  if (localePuesto) return *localePuesto;
  const QLocale sistema = QLocale::system();
  return sistema.language() == QLocale::C ? QLocale(QLocale::Spanish, QLocale::Spain) : sistema;
}

void PonerLocaleUsuario(const std::optional<QLocale>& locale) {
  localePuesto = locale;
}

QString SignoDecimal() {
  return LocaleUsuario().decimalPoint();
}

QString SignoGrupo() {
  return LocaleUsuario().groupSeparator();
}

double Val(const QString& texto) {
  return remesa::ValorNumerico(texto.toLatin1().toStdString());
}

std::optional<Cifras> LeerCifras(const QString& texto) {
  const QString decimal = SignoDecimal();
  const QString grupo = SignoGrupo();
  QString resto = texto.trimmed();
  Cifras leidas;
  if (resto.startsWith(u'-') || resto.startsWith(u'+')) {
    leidas.negativo = resto[0] == u'-';
    resto.remove(0, 1);
  }
  bool cifras = false;
  bool enDecimales = false;
  while (!resto.isEmpty()) {
    qsizetype usado = 1;
    if (resto[0] >= u'0' && resto[0] <= u'9') {
      (enDecimales ? leidas.decimales : leidas.enteras) += resto[0].toLatin1();
      cifras = true;
    } else if (!enDecimales && resto.startsWith(decimal)) {
      enDecimales = true;
      usado = decimal.size();
    } else if (!enDecimales && cifras && !grupo.isEmpty() && resto.startsWith(grupo)) {
      usado = grupo.size();
    } else {
      return std::nullopt;
    }
    resto.remove(0, usado);
  }
  if (!cifras) return std::nullopt;
  return leidas;
}

std::optional<double> LeerNumero(const QString& texto) {
  const auto leidas = LeerCifras(texto);
  if (!leidas) return std::nullopt;
  const std::string limpio = (leidas->negativo ? "-" : "") + leidas->enteras + '.' + leidas->decimales;
  double valor = 0;
  const auto leido = std::from_chars(limpio.data(), limpio.data() + limpio.size(), valor);
  if (leido.ec != std::errc()) return std::nullopt;
  return valor;
}

QString FormatoNumero(const Cifras& valor, int decimales) {
  return componer(redondear(valor, decimales), SignoGrupo(), SignoDecimal());
}

QString FormatoEdicion(const Cifras& valor, int decimales) {
  return componer(redondear(valor, decimales), QString(), u"."_s);
}

QString FormatoNumero(double valor, int decimales) {
  return FormatoNumero(cifrasDe(valor), decimales);
}

QString FormatoEdicion(double valor, int decimales) {
  return FormatoEdicion(cifrasDe(valor), decimales);
}

QString FormatoCentimos(qint64 centimos) {
  Cifras c;
  c.negativo = centimos < 0;
  // El negativo se toma sin signo: el menor entero no tiene opuesto.
  const quint64 valor = c.negativo ? 0 - static_cast<quint64>(centimos) : static_cast<quint64>(centimos);
  c.enteras = std::to_string(valor / 100);
  c.decimales = std::to_string(100 + valor % 100).substr(1);
  return componer(c, SignoGrupo(), SignoDecimal());
}

}  // namespace comunes
