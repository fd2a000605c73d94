#include "iso20022/ConversorXml.h"

#include <algorithm>
#include <array>
#include <utility>

#include "comunes/plataforma/Texto.h"

namespace iso20022 {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kDeclaracion = "<?xml";

/// Lo que la declaración dice de la codificación, en minúsculas; "" si no dice nada.
std::string Declarada(std::string_view principio) {
  const std::string_view declaracion = principio.substr(0, LargoDeclaracion(principio));
  constexpr std::string_view kClave = "encoding";
  std::size_t p = declaracion.find(kClave);
  if (p == std::string_view::npos) return {};
  p = declaracion.find_first_of("\"'", p + kClave.size());
  if (p == std::string_view::npos) return {};
  const std::size_t fin = declaracion.find(declaracion[p], p + 1);
  if (fin == std::string_view::npos) return {};
  return QByteArray(declaracion.data() + p + 1, static_cast<qsizetype>(fin - p - 1)).toLower().toStdString();
}

/// Los ocho caracteres en que ISO 8859-15 no es ISO 8859-1.
constexpr std::array kLatina9{
    std::pair{u'\u00A4', u'€'}, std::pair{u'\u00A6', u'Š'}, std::pair{u'\u00A8', u'š'},
    std::pair{u'\u00B4', u'Ž'}, std::pair{u'\u00B8', u'ž'}, std::pair{u'\u00BC', u'Œ'},
    std::pair{u'\u00BD', u'œ'}, std::pair{u'\u00BE', u'Ÿ'},
};

}  // namespace

std::size_t LargoDeclaracion(std::string_view principio) {
  if (!principio.starts_with(kDeclaracion) || principio.size() == kDeclaracion.size()) return 0;
  // "<?xml-stylesheet" no es la declaración.
  if (" \t\r\n"sv.find(principio[kDeclaracion.size()]) == std::string_view::npos) return 0;
  const std::size_t fin = principio.find("?>");
  return fin == std::string_view::npos ? 0 : fin + 2;
}

ConversorXml::ConversorXml(std::string_view principio) {
  constexpr std::array kMarcas{
      std::pair{"\xEF\xBB\xBF"sv, Clase::Utf8},
      std::pair{"\xFF\xFE"sv, Clase::Utf16},
      std::pair{"\xFE\xFF"sv, Clase::Utf16},
  };
  bool grande = principio.starts_with("\0<"sv);
  if (grande || principio.starts_with("<\0"sv)) clase_ = Clase::Utf16;
  for (const auto& [marca, clase] : kMarcas) {
    if (!principio.starts_with(marca)) continue;
    marca_ = marca.size();
    clase_ = clase;
    grande = marca == "\xFE\xFF"sv;
    break;
  }
  if (clase_ == Clase::Utf16) {
    lee16_ = QStringDecoder(grande ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE);
    return;
  }
  const std::string declarada = Declarada(principio.substr(marca_));
  const auto es = [&](std::initializer_list<std::string_view> nombres) {
    return std::ranges::find(nombres, declarada) != nombres.end();
  };
  if (es({"", "utf-8", "utf8", "us-ascii", "ascii"})) return;
  if (marca_ == 0 &&
      es({"iso-8859-1", "iso8859-1", "iso_8859-1", "latin1", "latin-1", "windows-1252", "cp1252"}))
    clase_ = Clase::Latina1;
  else if (marca_ == 0 && es({"iso-8859-15", "iso8859-15", "iso_8859-15", "latin-9", "latin9"}))
    clase_ = Clase::Latina9;
  else
    throw FalloXml("dice estar en una codificación que no es la suya o no se admite");
}

QByteArray ConversorXml::convertir(std::string_view bytes) {
  const auto largo = static_cast<qsizetype>(bytes.size());
  switch (clase_) {
    case Clase::Utf8:
      break;
    case Clase::Utf16: {
      impar_ = impar_ != (bytes.size() % 2 != 0);
      const QString texto = lee16_(QByteArrayView(bytes.data(), largo));
      QByteArray resultado = escribe8_(texto);
      if (lee16_.hasError() || escribe8_.hasError()) throw FalloXml("sus bytes no son UTF-16");
      return resultado;
    }
    case Clase::Latina1:
      return comunes::DesdeWindows1252(bytes).toUtf8();
    case Clase::Latina9: {
      QString texto = QString::fromLatin1(bytes.data(), largo);
      for (QChar& c : texto)
        for (const auto& [una, otra] : kLatina9)
          if (c == una) {
            c = otra;
            break;
          }
      return texto.toUtf8();
    }
  }
  return {bytes.data(), largo};
}

void ConversorXml::terminar() const {
  if (impar_) throw FalloXml("acaba a mitad de un carácter");
}

}  // namespace iso20022
