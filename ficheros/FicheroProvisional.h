#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ficheros {

/// Un fichero para lo que no cabe en memoria, que solo ve quien lo hace: desaparece con él, también si el
/// programa muere. Todos lanzan ErrorEjecucion con la ruta de la carpeta.
class FicheroProvisional {
 public:
  /// En la carpeta, que ha de existir y admitir escritura.
  explicit FicheroProvisional(std::filesystem::path carpeta);
  ~FicheroProvisional();
  FicheroProvisional(const FicheroProvisional&) = delete;
  FicheroProvisional& operator=(const FicheroProvisional&) = delete;

  /// Al final.
  void escribir(std::string_view bytes);
  std::uintmax_t tamano() const noexcept { return enDisco_ + pendientes_.size(); }
  /// Llena `destino` desde el byte `donde` (desde 0) y da los bytes leídos: menos de los pedidos solo al
  /// final.
  std::size_t leerEn(std::uintmax_t donde, std::span<char> destino);

 private:
  struct Interior;
  void volcar();
  /// Al final de lo que hay en el disco; da los que ha podido, al menos uno.
  std::size_t escribirAlgo(std::string_view bytes);
  /// 0, solo si se acaba.
  std::size_t leerAlgoEn(std::uintmax_t donde, std::span<char> destino);

  std::filesystem::path carpeta_;
  std::unique_ptr<Interior> interior_;
  std::string pendientes_;
  std::uintmax_t enDisco_ = 0;
};

}  // namespace ficheros
