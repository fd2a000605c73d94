#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace ficheros {

/// Lectura por bloques de un fichero corriente. Una carpeta, una cola o un dispositivo se rechazan con el
/// error 75, sin esperar por ellos. Todos lanzan ErrorEjecucion.
class LecturaFichero {
 public:
  explicit LecturaFichero(const std::filesystem::path& ruta);
  ~LecturaFichero();
  LecturaFichero(const LecturaFichero&) = delete;
  LecturaFichero& operator=(const LecturaFichero&) = delete;

  /// Bytes que tenía al abrirlo.
  std::uintmax_t tamano() const noexcept { return tamano_; }
  /// Llena `destino` y da los bytes leídos: menos de los pedidos solo al final del fichero. Error 62 si acaba
  /// antes de los bytes que tenía al abrirlo y 75 si tiene más o se ha vuelto a escribir: alguien lo está
  /// cambiando.
  std::size_t leer(std::span<char> destino);
  /// Llena `destino` desde el byte `donde` (desde 0), sin mover por dónde va leer(), y da los bytes leídos:
  /// menos de los pedidos solo al final del fichero. Error 62 si lo han cortado y 75 si lo han cambiado desde
  /// que se abrió; esto último, sin `mirar`, queda para quien llama, con comprobarMarca() al acabar.
  std::size_t leerEn(std::uintmax_t donde, std::span<char> destino, bool mirar = true);
  /// Tras leer tamano() bytes justos: error 75 si hay más.
  void comprobarFinal();

  /// Qué fichero es y cuándo se escribió: leerlo otra vez da los mismos bytes si la marca es la misma.
  struct Marca {
    std::uint64_t disco = 0, numero = 0, tamano = 0;
    std::int64_t escrito = 0;
    bool operator==(const Marca&) const = default;
  };
  Marca marca() const;
  /// Error 75 si su marca ya no es esa.
  void comprobarMarca(const Marca& antes) const;
  /// El mismo error, para quien ve que los bytes ya no son los que leyó.
  [[noreturn]] void darPorCambiado() const;

 private:
  struct Interior;
  std::size_t leerAlgo(std::span<char> destino);
  std::size_t leerAlgoEn(std::uintmax_t donde, std::span<char> destino);
  /// Alguien ha escrito en él desde que se abrió.
  bool reescrito() const;

  std::unique_ptr<Interior> interior_;
  std::filesystem::path ruta_;
  std::uintmax_t tamano_ = 0;
  std::uintmax_t leidos_ = 0;
};

}  // namespace ficheros
