#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Lo común a los objetivos: leer su entrada, ficheros de trabajo y exigir lo que siempre ha de cumplirse.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo);

namespace fuzz {

/// Si no se cumple, lo dice y aborta.
void Exigir(bool cumplido, const char* que);

/// La entrada, de principio a fin.
class Entrada {
 public:
  Entrada(const std::uint8_t* datos, std::size_t largo)
      : resto_(reinterpret_cast<const char*>(datos), largo) {}

  /// El byte siguiente; 0 si no quedan.
  std::uint8_t byte();
  /// Hasta el separador, que se salta, o hasta el final.
  std::string_view hasta(char separador);
  std::string_view resto() const { return resto_; }

 private:
  std::string_view resto_;
};

/// Un fichero de remesas en su forma breve: el byte 1F y otro, n, llenan de blancos la línea hasta la
/// posición 4·n. Sin ello casi toda la entrada serían blancos.
std::string Desplegar(std::string_view breve);

/// Las líneas de un fichero: acaban en CR y el LF que le siga se salta.
std::vector<std::string> Lineas(std::string_view bytes);

/// El registro como se guarda: cortado o completado a 600.
std::string Ajustado(std::string_view registro);

/// Ruta de un fichero de trabajo de este proceso.
std::filesystem::path Ruta(std::string_view nombre);
void Escribir(const std::filesystem::path& ruta, std::string_view bytes);
std::string Leer(const std::filesystem::path& ruta);

}  // namespace fuzz
