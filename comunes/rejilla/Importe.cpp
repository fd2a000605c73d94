#include "comunes/rejilla/Importe.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "comunes/plataforma/Formatos.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

namespace {

constexpr int kDecimales = 4;

bool esCifra(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// Lector de un texto de izquierda a derecha.
struct Cursor {
  QStringView resto;

  bool salta(QStringView que) {
    if (que.isEmpty() || !resto.startsWith(que)) return false;
    resto = resto.mid(que.size());
    return true;
  }
  void saltaSigno(std::string& en) {
    if (salta(u"-") || salta(u"\u2212")) {
      en += '-';
    } else {
      salta(u"+");
    }
  }
  std::size_t cifras(std::string& en) {
    const std::size_t antes = en.size();
    while (!resto.isEmpty() && esCifra(resto[0])) {
      en += static_cast<char>(resto[0].unicode());
      resto = resto.mid(1);
    }
    return en.size() - antes;
  }
};

/// Un número escrito entero con esos signos, como "-1234.50"; sin valor si el texto no lo es. Los grupos son
/// de tres cifras y el primero no empieza por cero: si no, el signo no separa grupos.
std::optional<std::string> conSignos(QStringView texto, QStringView decimal, QStringView grupo) {
  Cursor cursor{texto.trimmed()};
  std::string limpio;
  cursor.saltaSigno(limpio);
  const std::size_t comienzo = limpio.size();
  std::size_t enteras = cursor.cifras(limpio);
  if (enteras > 0 && enteras <= 3 && limpio[comienzo] != '0') {
    while (cursor.salta(grupo)) {
      if (cursor.cifras(limpio) != 3) return std::nullopt;
      enteras += 3;
    }
  }
  std::size_t decimales = 0;
  if (cursor.salta(decimal)) {
    limpio += '.';
    decimales = cursor.cifras(limpio);
  }
  const QStringView cola = cursor.resto.trimmed();
  if (enteras + decimales == 0 || !(cola.isEmpty() || cola == u"€")) return std::nullopt;
  return limpio;
}

/// Lo que se lee al principio del texto cambiando su primera coma por un punto.
std::string benevolo(QString texto) {
  if (const auto coma = texto.indexOf(u','); coma >= 0) texto[coma] = u'.';
  Cursor cursor{texto};
  while (cursor.salta(u" ") || cursor.salta(u"\t")) {
  }
  std::string limpio;
  cursor.saltaSigno(limpio);
  cursor.cifras(limpio);
  if (cursor.salta(u".")) {
    limpio += '.';
    cursor.cifras(limpio);
  }
  return limpio;
}

Diezmilesimas alCentimo(const std::string& limpio) {
  const bool negativo = limpio.starts_with('-');
  const std::string numero = limpio.substr(negativo ? 1 : 0);
  const auto punto = std::min(numero.find('.'), numero.size());
  std::string cifras = numero.substr(0, punto);
  std::string decimales = punto < numero.size() ? numero.substr(punto + 1) : std::string();
  const bool sube = decimales.size() > 2 && decimales[2] >= '5';
  decimales.resize(2, '0');
  cifras += decimales;
  std::int64_t centimos = 0;
  Diezmilesimas valor = 0;
  if (std::from_chars(cifras.data(), cifras.data() + cifras.size(), centimos).ec != std::errc() ||
      __builtin_add_overflow(centimos, sube ? 1 : 0, &centimos) ||
      __builtin_mul_overflow(centimos, std::int64_t{100}, &valor)) {
    throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  }
  return negativo ? -valor : valor;
}

/// Un formato ya entendido.
struct Mascara {
  QString delante;
  QString detras;
  int enteras = 0;
  int decimalesMin = 0;
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
      if (*c == u'0') mascara.decimalesMin = mascara.decimalesMax;
    } else if (*c == u'0') {
      ++mascara.enteras;
    }
  }
  return mascara;
}

/// Valor absoluto redondeado a `decimales` (la mitad hacia arriba), como cifras sin punto.
std::string redondear(Diezmilesimas valor, int decimales) {
  // El negativo se toma sin signo: el menor entero no tiene opuesto.
  std::uint64_t absoluto =
      valor < 0 ? 0 - static_cast<std::uint64_t>(valor) : static_cast<std::uint64_t>(valor);
  std::uint64_t divisor = 1;
  for (int i = decimales; i < kDecimales; ++i)
    divisor *= 10;
  absoluto = (absoluto + divisor / 2) / divisor;
  std::string cifras = std::to_string(absoluto);
  if (decimales > kDecimales) cifras.append(static_cast<std::size_t>(decimales - kDecimales), '0');
  return cifras;
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
  double valor = 0;
  std::from_chars(numero->data(), numero->data() + numero->size(), valor);
  return valor;
}

Diezmilesimas Sumar(Diezmilesimas a, Diezmilesimas b) {
  Diezmilesimas suma = 0;
  if (__builtin_add_overflow(a, b, &suma)) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  return suma;
}

QString FormatoCelda(Diezmilesimas valor, bool ceros, const QString& formato, const SignosNumero& signos) {
  if (valor == 0 && !ceros) return {};
  const Mascara mascara = entender(formato);
  std::string cifras = redondear(valor, mascara.decimalesMax);
  const auto decimales = static_cast<std::size_t>(mascara.decimalesMax);
  const bool negativo = valor < 0 && cifras.find_first_not_of('0') != std::string::npos;
  if (cifras.size() <= decimales) cifras.insert(0, decimales + 1 - cifras.size(), '0');
  std::string enteras = cifras.substr(0, cifras.size() - decimales);
  std::string resto = cifras.substr(enteras.size());
  while (resto.size() > static_cast<std::size_t>(mascara.decimalesMin) && resto.back() == '0')
    resto.pop_back();
  if (enteras == "0") enteras.clear();
  if (const auto minimo = static_cast<std::size_t>(mascara.enteras); enteras.size() < minimo) {
    enteras.insert(0, minimo - enteras.size(), '0');
  }

  QString texto = mascara.delante;
  if (negativo) texto += u'-';
  for (std::size_t i = 0; i < enteras.size(); ++i) {
    if (mascara.grupos && i > 0 && (enteras.size() - i) % 3 == 0) texto += signos.grupo;
    texto += QLatin1Char(enteras[i]);
  }
  if (!resto.empty()) texto += signos.decimal + QString::fromStdString(resto);
  return texto + mascara.detras;
}

}  // namespace comunes
