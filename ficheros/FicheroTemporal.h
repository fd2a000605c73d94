#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

namespace ficheros {

/// Temporal junto al fichero de destino, bloqueado mientras vive su programa, que acaba sustituyéndolo o
/// desaparece. Al crearse borra los que dejaron en esa carpeta programas ya muertos. Todos lanzan
/// ErrorEjecucion con la ruta de destino que se pidió.
class FicheroTemporal {
 public:
  /// Sigue los enlaces simbólicos: se sustituye el fichero al que llevan. Error 75 si el destino es una
  /// carpeta o un dispositivo; los del sistema si la carpeta no existe o si fichero o carpeta no admiten
  /// escritura.
  explicit FicheroTemporal(const std::filesystem::path& destino);
  ~FicheroTemporal();
  FicheroTemporal(const FicheroTemporal&) = delete;
  FicheroTemporal& operator=(const FicheroTemporal&) = delete;

  void escribir(std::string_view bytes);
  /// Lleva al disco lo escrito y mira que esté entero. No hay más que escribir.
  void volcar();
  /// Vuelca, da al temporal los permisos del destino y lo pone en su sitio. Solo una vez.
  void publicar();

  /// Borra los que nadie ha publicado todavía: lo último de un programa que muere sin deshacer lo que hacía.
  /// No pide memoria.
  static void BorrarPendientes() noexcept;

  /// Comienzo y final de los nombres de los temporales; en medio, el del destino y el número del proceso.
  static constexpr std::string_view kPrefijo = ".";
  static constexpr std::string_view kSufijo = ".unirq19-tmp";

 private:
  void apuntar();
  void olvidar() noexcept;
  void borrar() noexcept;

  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace ficheros
