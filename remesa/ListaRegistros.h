#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace remesa {

/// Lista de registros de una remesa, en el orden del fichero. Los registros son vistas sobre bloques
/// inmutables que la lista mantiene vivos: copiar o importar no copia bytes. Índices desde 0.
class ListaRegistros {
 public:
  using Bloque = std::shared_ptr<const std::string>;

  std::size_t size() const noexcept { return registros_.size(); }
  bool empty() const noexcept { return registros_.empty(); }
  std::string_view operator[](std::size_t i) const noexcept { return registros_[i]; }
  auto begin() const noexcept { return registros_.begin(); }
  auto end() const noexcept { return registros_.end(); }

  void clear();
  /// Añade vistas sobre `bloque`, que queda vivo mientras viva la lista.
  void anadirBloque(Bloque bloque, std::span<const std::string_view> registros);
  /// Añade registros de `otra` (por índice) sin copiar sus bytes.
  void anadirDe(const ListaRegistros& otra, std::span<const std::size_t> indices);
  /// Sustituye el registro `i` por `bytes`, que pasa a ser un bloque propio.
  void sustituir(std::size_t i, std::string bytes);
  /// Inserta una copia del registro `i` en `i + 1`.
  void duplicar(std::size_t i);
  /// Quita los registros de `indices`, ascendentes y sin repetir, en un solo recorrido.
  void quitar(std::span<const std::size_t> indices);

 private:
  std::vector<std::string_view> registros_;
  std::vector<Bloque> bloques_;
};

}  // namespace remesa
