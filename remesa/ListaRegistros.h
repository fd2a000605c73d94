#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/Campos.h"

namespace remesa {

/// Bytes inmutables que comparten las listas cuyos registros los ven.
struct Bloque {
  std::shared_ptr<const char[]> datos;
  std::size_t largo = 0;
};

/// Lista de registros de una remesa, en el orden del fichero. Los registros son vistas sobre bloques
/// inmutables que la lista mantiene vivos: copiar o importar no copia bytes. Índices desde 0. Un bloque al
/// que ya no mira ningún registro se suelta al quitar registros o, a más tardar, cuando los bloques se
/// doblan.
class ListaRegistros {
 public:
  std::size_t size() const noexcept { return registros_.size(); }
  bool empty() const noexcept { return registros_.empty(); }
  std::string_view operator[](std::size_t i) const noexcept { return registros_[i]; }
  /// Pide ya a la memoria el principio del registro que se leerá unos pasos después de `i`: un recorrido de
  /// registros de 600 bytes pasa si no casi todo su tiempo esperándola.
  void anticipar(std::size_t i) const noexcept;
  auto begin() const noexcept { return registros_.begin(); }
  auto end() const noexcept { return registros_.end(); }

  void clear();
  /// Añade vistas sobre `bloque`, que queda vivo mientras lo mire algún registro.
  void anadirBloque(Bloque bloque, std::vector<std::string_view> registros);
  /// Añade al final un registro con bytes propios.
  void anadir(std::string_view bytes);
  /// Añade registros de `otra` (por índice) sin copiar sus bytes. `otra` puede ser la misma lista.
  void anadirDe(const ListaRegistros& otra, std::span<const std::size_t> indices);
  /// Sustituye el registro `i` por una copia de `bytes`.
  void sustituir(std::size_t i, std::string_view bytes);
  /// Inserta una copia del registro `i` en `donde`.
  void duplicar(std::size_t i, std::size_t donde);
  /// Quita los registros de `indices`, ascendentes y sin repetir, en un solo recorrido.
  void quitar(std::span<const std::size_t> indices);

  /// Deja solo los registros de `indices`, en ese orden.
  void elegir(std::span<const std::size_t> indices);

  /// Bloques que mantiene vivos.
  std::span<const Bloque> bloques() const noexcept { return bloques_; }
  /// Bytes que ocupa la lista, sin los de sus bloques.
  std::size_t memoria() const noexcept;
  /// Devuelve la memoria que tiene de reserva, si es bastante para que merezca la pena.
  void ajustarMemoria();
  /// Los mismos registros en el mismo orden, sin leer los que son los mismos bytes en memoria.
  bool operator==(const ListaRegistros& otra) const noexcept;

 private:
  /// Bloque que se va llenando; las copias de la lista escriben en él cada una en su sitio.
  struct Sueltos {
    std::shared_ptr<char[]> datos;
    std::size_t largo;
    std::atomic<std::size_t> usado = 0;
  };
  char* reservar(std::size_t largo);
  void guardarBloque(Bloque bloque);
  void soltarBloquesMuertos();

  std::vector<std::string_view> registros_;
  std::vector<Bloque> bloques_;
  std::shared_ptr<Sueltos> sueltos_;  // su bloque está en bloques_
  std::size_t limiteBloques_ = kBloquesMinimos;
  static constexpr std::size_t kBloquesMinimos = 64;
};

inline void ListaRegistros::anticipar(std::size_t i) const noexcept {
  constexpr std::size_t kPasos = 12;
  // El código y las referencias están en las dos primeras líneas de caché, y el importe puede caer en la
  // tercera.
  constexpr std::size_t kLinea = 64;
  constexpr auto kFinImporte = static_cast<std::size_t>(kImporteAdeudo.hasta - 1);
  if (i + kPasos >= registros_.size()) return;
  __builtin_prefetch(registros_[i + kPasos].data());
  __builtin_prefetch(registros_[i + kPasos].data() + kLinea);
  __builtin_prefetch(registros_[i + kPasos].data() + kFinImporte);
}

}  // namespace remesa
