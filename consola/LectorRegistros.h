#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

#include "remesa/Registro.h"

namespace consola {

/// Bytes de un registro escrito: con su CR LF.
inline constexpr std::size_t kRegistroConFin = remesa::kLongitudRegistro + 2;

/// Corta en registros unos bytes que se leen por un búfer que se reutiliza. Una línea acaba en CR, y el LF
/// que le sigue se salta; la última cuenta aunque no acabe. De una que no cabe en el búfer solo da el
/// principio.
class LectorRegistros {
 public:
  static constexpr std::size_t kBufer = std::size_t{1} << 20;
  /// Por debajo no cabría un registro entero con su fin de línea y un byte más que lo delate largo.
  static constexpr std::size_t kBuferMinimo = 1024;

  /// `bufer` en bytes; se toma el mínimo si es menor.
  explicit LectorRegistros(std::size_t bufer = kBufer) : bufer_(std::max(bufer, kBuferMinimo)) {}

  /// `leer` llena lo que se le da y dice cuánto: menos solo al final. `recibir` toma cada registro, el mismo
  /// con su fin de línea y dónde empieza, con `posicion` como principio; los bytes valen hasta que se llama a
  /// `soltar`, antes de reutilizar el búfer.
  template <class Leer, class Recibir, class Soltar>
  void recorrer(std::uint64_t posicion, Leer leer, Recibir recibir, Soltar soltar);

 private:
  std::vector<char> bufer_;
};

template <class Leer, class Recibir, class Soltar>
void LectorRegistros::recorrer(std::uint64_t posicion, Leer leer, Recibir recibir, Soltar soltar) {
  std::size_t quedan = 0;    // bytes del registro a medias, al principio del búfer
  bool saltarLinea = false;  // el registro ya se dio: lo que sigue, hasta CR, sobra
  bool saltarLF = false;     // un LF aquí es el del CR anterior
  for (bool fin = false; !fin;) {
    const std::size_t pedidos = bufer_.size() - quedan;
    const std::size_t leidos = leer(std::span(bufer_).subspan(quedan));
    fin = leidos < pedidos;
    const char* p = bufer_.data();
    const char* const tope = p + quedan + leidos;
    while (p < tope) {
      if (saltarLF) {
        saltarLF = false;
        if (*p == '\n' && ++p == tope) break;
      }
      const auto largo = static_cast<std::size_t>(tope - p);
      const auto* cr = static_cast<const char*>(std::memchr(p, '\r', largo));
      if (saltarLinea) {
        saltarLinea = cr == nullptr;
        saltarLF = !saltarLinea;
        p = saltarLinea ? tope : cr + 1;
        continue;
      }
      // Sin el fin de línea a la vista hay que leer más, salvo que el registro llene ya el búfer.
      const bool entera = cr != nullptr && cr + 1 < tope;
      if (!entera && !fin && largo < bufer_.size()) break;
      const char* const hasta = cr != nullptr ? cr : tope;
      const char* siguiente = cr != nullptr ? cr + 1 : tope;
      if (entera && *siguiente == '\n') ++siguiente;
      saltarLinea = cr == nullptr;
      saltarLF = cr != nullptr && siguiente == tope && siguiente == cr + 1;
      recibir(std::string_view(p, static_cast<std::size_t>(hasta - p)),
              std::string_view(p, static_cast<std::size_t>(siguiente - p)),
              posicion + static_cast<std::size_t>(p - bufer_.data()));
      p = siguiente;
    }
    soltar();
    quedan = static_cast<std::size_t>(tope - p);
    posicion += static_cast<std::size_t>(p - bufer_.data());
    std::memmove(bufer_.data(), p, quedan);
  }
}

}  // namespace consola
