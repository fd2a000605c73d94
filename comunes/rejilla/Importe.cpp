#include "comunes/rejilla/Importe.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "comunes/plataforma/Formatos.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

namespace {

constexpr std::size_t kDecimales = 4;
constexpr QStringView kSignos = u"+-\u2212";

/// Un número escrito entero con esos signos, y nada más que un "€" detrás.
std::optional<Cifras> conSignos(QStringView texto, QStringView decimal, QStringView grupo) {
  const DecimalLeido leido = LeerDecimal(texto.trimmed(), {.signos = kSignos,
                                                           .decimal = decimal,
                                                           .grupo = grupo,
                                                           .grupos = ReglasDecimal::Grupos::DeTresSinCero});
  const QStringView cola = leido.cola.trimmed();
  if (leido.cifras.vacias() || !(cola.isEmpty() || cola == u"€")) return std::nullopt;
  return leido.cifras;
}

/// Lo que se lee al principio del texto cambiando su primera coma por un punto.
Cifras benevolo(QString texto) {
  if (const auto coma = texto.indexOf(u','); coma >= 0) texto[coma] = u'.';
  return LeerDecimal(SinBlancosDelante(texto), {.signos = kSignos, .decimal = u"."}).cifras;
}

Diezmilesimas alCentimo(const Cifras& leidas) {
  const Cifras c = Redondear(leidas, 2);
  const std::string cifras = c.enteras + c.decimales;
  std::int64_t centimos = 0;
  Diezmilesimas valor = 0;
  if (std::from_chars(cifras.data(), cifras.data() + cifras.size(), centimos).ec != std::errc() ||
      __builtin_mul_overflow(centimos, std::int64_t{100}, &valor)) {
    throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  }
  return c.negativo ? -valor : valor;
}

/// Un formato ya entendido.
struct Mascara {
  QString delante;
  QString detras;
  std::size_t enteras = 0;
  std::size_t decimalesMin = 0;
  int decimalesMax = 0;
  bool grupos = false;
};

Mascara entender(const QString& formato) {
  const auto deMascara = [](QChar c) { return QStringView(u"0#,.").contains(c); };
  const auto* principio = std::find_if(formato.cbegin(), formato.cend(), deMascara);
  const auto* final = std::find_if_not(principio, formato.cend(), deMascara);
  Mascara mascara;
  mascara.delante = QString(formato.cbegin(), principio - formato.cbegin());
  mascara.detras = QString(final, formato.cend() - final);
  bool enDecimales = false;
  for (const auto* c = principio; c != final; ++c) {
    if (*c == u'.') {
      enDecimales = true;
    } else if (*c == u',') {
      mascara.grupos = true;
    } else if (enDecimales) {
      ++mascara.decimalesMax;
      if (*c == u'0') mascara.decimalesMin = static_cast<std::size_t>(mascara.decimalesMax);
    } else if (*c == u'0') {
      ++mascara.enteras;
    }
  }
  return mascara;
}

Cifras enCifras(Diezmilesimas valor) {
  // El negativo se toma sin signo: el menor entero no tiene opuesto.
  std::string cifras =
      std::to_string(valor < 0 ? 0 - static_cast<std::uint64_t>(valor) : static_cast<std::uint64_t>(valor));
  if (cifras.size() < kDecimales) cifras.insert(0, kDecimales - cifras.size(), '0');
  const std::size_t enteras = cifras.size() - kDecimales;
  return {valor < 0, cifras.substr(0, enteras), cifras.substr(enteras)};
}

}  // namespace

SignosNumero SignosNumero::DelUsuario() {
  return {SignoDecimal(), SignoGrupo()};
}

Diezmilesimas LeerImporte(const QString& texto, const SignosNumero& signos) {
  if (texto.isEmpty()) return 0;
  if (const auto numero = conSignos(texto, signos.decimal, signos.grupo)) return alCentimo(*numero);
  return alCentimo(benevolo(texto));
}

std::optional<double> NumeroEntero(const QString& texto, const SignosNumero& signos) {
  auto numero = conSignos(texto, signos.decimal, signos.grupo);
  if (!numero) numero = conSignos(texto, u".", {});
  if (!numero) return std::nullopt;
  return ValorDe(*numero).value_or(0);
}

Diezmilesimas Sumar(Diezmilesimas a, Diezmilesimas b) {
  Diezmilesimas suma = 0;
  if (__builtin_add_overflow(a, b, &suma)) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  return suma;
}

QString FormatoCelda(Diezmilesimas valor, bool ceros, const QString& formato, const SignosNumero& signos) {
  if (valor == 0 && !ceros) return {};
  const Mascara mascara = entender(formato);
  Cifras c = Redondear(enCifras(valor), mascara.decimalesMax);
  while (c.decimales.size() > mascara.decimalesMin && c.decimales.back() == '0')
    c.decimales.pop_back();
  if (c.enteras.size() < mascara.enteras) c.enteras.insert(0, mascara.enteras - c.enteras.size(), '0');
  return mascara.delante + ComponerDecimal(c, signos.decimal, mascara.grupos ? signos.grupo : QString()) +
         mascara.detras;
}

}  // namespace comunes
