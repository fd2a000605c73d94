#pragma once

#include <QByteArray>
#include <QStringDecoder>
#include <QStringEncoder>
#include <stdexcept>
#include <string_view>

namespace iso20022 {

/// Por qué no se lee un XML, en minúscula y sin punto, quizá con su línea; el fichero lo sabe quien lo abrió.
struct FalloXml : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Pasa a UTF-8, por trozos, los bytes de un XML. Admite UTF-8, UTF-16 (con su marca o sin ella) y ISO 8859-1
/// y 8859-15; los que dicen ser de la primera se leen como Windows-1252, que es lo que suelen ser.
class ConversorXml {
 public:
  /// `principio` son los primeros bytes del fichero; basta con los kPrincipio primeros. Lanza FalloXml si
  /// la codificación que dicen no se admite.
  explicit ConversorXml(std::string_view principio);
  static constexpr std::size_t kPrincipio = 1024;

  /// Los bytes siguientes, que pueden acabar a mitad de un carácter. Sin la marca de orden de bytes. Lanza
  /// FalloXml si no son de la codificación (los de UTF-8 no se miran).
  QByteArray convertir(std::string_view bytes);

  /// No hay más. Lanza FalloXml si lo último se quedó a medias.
  void terminar() const;

  /// Bytes del principio que ocupa la marca; hay que saltarlos.
  std::size_t marca() const noexcept { return marca_; }

 private:
  enum class Clase { Utf8, Utf16, Latina1, Latina9 };
  Clase clase_ = Clase::Utf8;
  std::size_t marca_ = 0;
  bool impar_ = false;  // los bytes de UTF-16 convertidos
  QStringDecoder lee16_;
  QStringEncoder escribe8_{QStringEncoder::Utf8};
};

/// Bytes que ocupa la declaración ("<?xml … ?>") con que empieza un XML en UTF-8; 0 si no la tiene.
std::size_t LargoDeclaracion(std::string_view principio);

}  // namespace iso20022
