#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

namespace ficheros {

/// Cómo se pone en su sitio un fichero ya escrito.
struct Colocacion {
  bool sustituir = true;      ///< Al que haya en él.
  bool volcarCarpeta = true;  ///< Sin ello, un corte de corriente puede dejar la carpeta como estaba.
};

/// Temporal junto al fichero de destino, bloqueado mientras vive su programa, que acaba sustituyéndolo o
/// desaparece. Al crearse borra los que dejaron en esa carpeta programas ya muertos. Todos lanzan
/// ErrorEjecucion con la ruta de destino que se pidió.
class FicheroTemporal {
 public:
  /// Sigue los enlaces simbólicos: se sustituye el fichero al que llevan. Error 75 si el destino es una
  /// carpeta o un dispositivo; los del sistema si la carpeta no existe o si fichero o carpeta no admiten
  /// escritura. Sin `limpiar` no busca los de programas muertos, que recorre la carpeta entera.
  explicit FicheroTemporal(const std::filesystem::path& destino, bool limpiar = true);
  ~FicheroTemporal();
  FicheroTemporal(const FicheroTemporal&) = delete;
  FicheroTemporal& operator=(const FicheroTemporal&) = delete;

  void escribir(std::string_view bytes);
  /// Lleva al disco lo escrito y mira que esté entero. No hay más que escribir.
  void volcar();
  /// Vuelca, da al temporal los permisos del destino y lo pone en su sitio, como se le diga. Solo una vez.
  /// Error 58 si ya hay un fichero que no se debe sustituir.
  void publicar(Colocacion como = {});

  /// Deja tener abiertos tantos como el sistema consienta, que suelen ser más que de entrada.
  static void PermitirMuchos() noexcept;

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
