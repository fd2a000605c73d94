#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace devoluciones {

/// Si tiene sentido presentar el adeudo otra vez.
enum class Intento : std::uint8_t {
  OtraVez,      ///< Tal como está: es lo que se propone.
  TrasArreglo,  ///< Cuando se corrija lo que falla.
  ConElDeudor,  ///< Si el deudor está de acuerdo.
  Nunca,
};

/// Los textos, en UTF-8 y con su punto donde son frases.
struct Motivo {
  std::string_view codigo;   ///< Cuatro letras o cifras, "AM04".
  std::string_view texto;    ///< "No había saldo"
  std::string_view consejo;  ///< Qué hacer, en una o dos frases.
  Intento intento;
};

/// Los del Cuaderno 19.14 (anexo IX) y los que el esquema ha añadido después, por orden de código.
std::span<const Motivo> Motivos();

/// nullptr si no está en la tabla: se enseña el código como vino.
const Motivo* BuscarMotivo(std::string_view codigo);

}  // namespace devoluciones
