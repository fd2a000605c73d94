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

/// Con los decimales pedidos y, al menos, una cifra entera.
QString formato(Cifras c, int decimales, const QString& decimal, const QString& grupo) {
  c = Redondear(std::move(c), decimales);
  if (c.enteras.empty()) c.enteras = "0";
  return ComponerDecimal(c, decimal, grupo);
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
  const DecimalLeido leido =
      LeerDecimal(QStringView(texto).trimmed(), {.signos = u"+-", .decimal = decimal, .grupo = grupo});
  if (!leido.cola.isEmpty() || leido.cifras.vacias()) return std::nullopt;
  return leido.cifras;
}

std::optional<double> LeerNumero(const QString& texto) {
  const auto leidas = LeerCifras(texto);
  return leidas ? ValorDe(*leidas) : std::nullopt;
}

QString FormatoNumero(const Cifras& valor, int decimales) {
  return formato(valor, decimales, SignoDecimal(), SignoGrupo());
}

QString FormatoEdicion(const Cifras& valor, int decimales) {
  return formato(valor, decimales, u"."_s, {});
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
  return ComponerDecimal(c, SignoDecimal(), SignoGrupo());
}

}  // namespace comunes
