#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

namespace ficheros {

/// Error de ejecución con el número y el texto de la plataforma (5 "Argumento o llamada a procedimiento no
/// válida", 6 "Desbordamiento", 13, 53, 61, 70, 75, 76…). `what()` y `texto()` son UTF-8.
class ErrorEjecucion : public std::exception {
 public:
  /// `causa`: lo que el texto del número no dice, en minúscula y sin punto; se le añade tras dos puntos.
  explicit ErrorEjecucion(int numero, std::filesystem::path fichero = {}, const std::string& causa = {});
  /// El error de la plataforma que corresponde a un fallo del sistema de ficheros.
  ErrorEjecucion(const std::error_code& causa, const std::filesystem::path& fichero);

  int numero() const noexcept { return numero_; }
  const std::string& texto() const noexcept { return texto_; }
  /// Fichero al que se refiere; vacío si a ninguno.
  const std::filesystem::path& fichero() const noexcept { return fichero_; }
  const char* what() const noexcept override { return texto_.c_str(); }

 private:
  int numero_;
  std::string texto_;
  std::filesystem::path fichero_;
};

}  // namespace ficheros
