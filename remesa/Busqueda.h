#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "remesa/Campos.h"

namespace remesa {

/// Un texto que se busca en los registros de una remesa: cualquier trozo de un nombre, una referencia, un
/// mandato, una cuenta, un concepto o lo demás que se lee en sus campos, sin distinguir mayúsculas ni
/// acentos. Las cuentas se buscan sin sus blancos, los tenga el texto o el registro. De un registro que no se
/// conoce vale todo.
class Busqueda {
 public:
  Busqueda() = default;
  /// `texto` en Windows-1252; los blancos de sus lados no cuentan. Con `centimos`, también se busca ese
  /// importe en los adeudos y los totales.
  explicit Busqueda(std::string_view texto, std::optional<std::int64_t> centimos = {});

  /// Un texto vacío no está en ningún sitio.
  bool vacia() const { return texto_.empty(); }
  /// Dónde está en el registro, la primera vez; sin valor si no está.
  std::optional<Posiciones> en(std::string_view registro) const;

 private:
  /// En el campo de esa posición (desde 0), que se lee; sin él, el registro no se conoce y vale todo.
  std::optional<Posiciones> candidato(std::string_view registro, const Campo* campo, std::size_t donde) const;
  std::optional<Posiciones> sinBlancos(std::string_view registro, std::size_t donde) const;

  std::string texto_;   // en minúsculas y sin acentos
  std::string cuenta_;  // además sin blancos; vacía si no puede ser un trozo de una cuenta
  std::optional<std::int64_t> centimos_;
  // El carácter menos corriente del texto, que es el que se busca por los bytes, y dónde está en cada forma.
  std::size_t enTexto_ = 0;
  std::size_t enCuenta_ = 0;
};

}  // namespace remesa
