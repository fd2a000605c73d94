#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace remesa {

enum class FinLinea : std::uint8_t { CRLF, CR, LF, Ninguno };

/// Qué acaba una línea. Al cargar una remesa, solo CR: el LF que le sigue se salta y uno suelto es parte de
/// la línea.
enum class Fines : std::uint8_t { SoloCR, Todos };

/// Bytes que ocupa un fin de línea.
constexpr std::size_t LargoFin(FinLinea fin) {
  return fin == FinLinea::CRLF ? 2 : fin == FinLinea::Ninguno ? 0 : 1;
}

/// Corta en líneas unos bytes que llegan por trozos. La última cuenta aunque no tenga fin. De una línea que
/// no cabe en un trozo solo guarda lo que puede ocupar un registro, aunque esté en UTF-8.
class LineasFichero {
 public:
  /// `bytes` vale hasta que vuelve; `longitud` es la de la línea entera.
  using Receptor = std::function<void(std::string_view bytes, std::uint64_t longitud, FinLinea fin)>;

  explicit LineasFichero(Receptor recibir, Fines fines = Fines::Todos)
      : recibir_(std::move(recibir)), fines_(fines) {}
  void dar(std::string_view trozo);
  /// La última línea, si no tiene fin.
  void terminar();

 private:
  void guardar(std::string_view bytes);
  void entregar(std::string_view resto, FinLinea fin);

  Receptor recibir_;
  Fines fines_;
  std::string inicio_;       // lo guardado de la línea que empezó en otro trozo
  std::uint64_t largo_ = 0;  // lo que de ella llevaban los otros trozos
  bool trasCR_ = false;      // acabó en CR y el trozo también: puede seguir LF
};

}  // namespace remesa
