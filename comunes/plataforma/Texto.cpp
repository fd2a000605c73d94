#include "comunes/plataforma/Texto.h"

#include <algorithm>
#include <array>

#include "ficheros/Rutas.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

// Los bytes 80 a 9F; los demás coinciden con Latin-1. Los cinco sin asignar se quedan con su propio número.
constexpr std::array<char16_t, 32> kAltos{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                          0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Byte de `c`, o -1 si la página no lo tiene.
int byteDe(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return c;
  const auto* hallado = std::find(kAltos.begin(), kAltos.end(), c);
  return hallado == kAltos.end() ? -1 : 0x80 + static_cast<int>(hallado - kAltos.begin());
}

}  // namespace

QString DesdeWindows1252(std::string_view bytes) {
  QString texto = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
  for (QChar& c : texto)
    if (c.unicode() >= 0x80 && c.unicode() < 0xA0) c = kAltos[c.unicode() - 0x80U];
  return texto;
}

EscritorUtf8::EscritorUtf8(std::function<QString(const QString&)> cambiar) : cambiar_(std::move(cambiar)) {
  for (std::size_t byte = 0; byte < escritos_.size(); ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    escritos_[byte] = cambiar_(DesdeWindows1252(bytes)).toStdString();
    iguales_[byte] = escritos_[byte] == bytes;
  }
}

void EscritorUtf8::anadir(std::string& texto, std::string_view bytes) const {
  const char* hecho = bytes.data();
  const char* const fin = hecho + bytes.size();
  for (const char* p = hecho; p != fin; ++p) {
    const auto byte = static_cast<unsigned char>(*p);
    if (iguales_[byte]) continue;
    texto.append(hecho, p) += escritos_[byte];
    hecho = p + 1;
  }
  texto.append(hecho, fin);
}

std::string AWindows1252(const QString& texto) {
  std::string bytes(static_cast<std::size_t>(texto.size()), '?');
  std::size_t escritos = 0;
  bool alta = false;
  for (const QChar c : texto) {
    // Un carácter de dos unidades es uno solo para quien lo escribió.
    if (alta && c.isLowSurrogate()) {
      alta = false;
      continue;
    }
    alta = c.isHighSurrogate();
    const int byte = byteDe(c.unicode());
    if (byte >= 0) bytes[escritos] = static_cast<char>(byte);
    ++escritos;
  }
  bytes.resize(escritos);
  return bytes;
}

bool EsMarcaDeSentido(QChar c) {
  const char16_t u = c.unicode();
  return u == 0x061C || u == 0x200E || u == 0x200F || (u >= 0x202A && u <= 0x202E) ||
         (u >= 0x2066 && u <= 0x2069);
}

QString ConMarcasEscritas(const QString& texto) {
  if (std::none_of(texto.begin(), texto.end(), EsMarcaDeSentido)) return texto;
  QString escrito;
  for (const QChar c : texto) {
    if (EsMarcaDeSentido(c))
      escrito += u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
    else
      escrito += c;
  }
  return escrito;
}

QString CadenaJson(const QString& texto) {
  constexpr std::u16string_view kConNombre = u"\"\\\b\f\n\r\t", kNombres = u"\"\\bfnrt";
  QString cadena = u"\""_s;
  for (const QChar c : texto) {
    if (const auto n = kConNombre.find(c.unicode()); n != std::u16string_view::npos)
      cadena += u'\\' + QString(QChar(kNombres[n]));
    else if (c.category() == QChar::Other_Control || EsMarcaDeSentido(c))
      cadena += u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
    else
      cadena += c;
  }
  return cadena + u'"';
}

QString SinControles(QString texto) {
  for (QChar& c : texto)
    if ((c.unicode() < 0x20 || c.unicode() >= 0x7F) && c.category() == QChar::Other_Control)
      c = QChar::ReplacementCharacter;
  return ConMarcasEscritas(texto);
}

QString Mayusculas(QString texto) {
  for (QChar& c : texto)
    c = c.toUpper();
  return texto;
}

QString RutaAbsoluta(const QString& ruta) {
  return DesdeRuta(ficheros::RutaAbsoluta(ARuta(ruta)).make_preferred());
}

qsizetype PrimeroFueraDeWindows1252(const QString& texto) {
  const auto* primero =
      std::find_if(texto.begin(), texto.end(), [](QChar c) { return byteDe(c.unicode()) < 0; });
  return primero == texto.end() ? -1 : primero - texto.begin();
}

bool CabeEnWindows1252(const QString& texto) {
  return PrimeroFueraDeWindows1252(texto) < 0;
}

}  // namespace comunes
