#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

namespace ficheros {

/// Los números de error de la plataforma que da el programa; sus textos, en `ErrorEjecucion.cpp`.
enum NumerosError : int {
  kArgumentoNoValido = 5,
  kDesbordamiento = 6,
  kMemoriaInsuficiente = 7,
  kFueraDeIntervalo = 9,
  kDivisionPorCero = 11,
  kTiposNoCoinciden = 13,
  kErrorInterno = 51,
  kNombreIncorrecto = 52,
  kNoEncontrado = 53,
  kErrorDeDispositivo = 57,
  kYaExiste = 58,
  kDiscoLleno = 61,
  kFinDeArchivo = 62,
  kDemasiadosArchivos = 67,
  kDispositivoNoDisponible = 68,
  kPermisoDenegado = 70,
  kErrorDeAcceso = 75,
  kRutaNoEncontrada = 76,
  kFormatoNoValido = 321,
  kErrorDeImpresora = 482,
};

/// Error de ejecución con el número y el texto de la plataforma. `what()` y `texto()` son UTF-8.
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
