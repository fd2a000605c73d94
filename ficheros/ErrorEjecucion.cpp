#include "ficheros/ErrorEjecucion.h"

#include <array>
#include <utility>

namespace ficheros {
namespace {

struct TextoError {
  int numero;
  const char* texto;
};

constexpr std::array kTextos{
    TextoError{kArgumentoNoValido, "Argumento o llamada a procedimiento no válida"},
    TextoError{kDesbordamiento, "Desbordamiento"},
    TextoError{kMemoriaInsuficiente, "Memoria insuficiente"},
    TextoError{kFueraDeIntervalo, "El subíndice está fuera del intervalo"},
    TextoError{kDivisionPorCero, "División por cero"},
    TextoError{kTiposNoCoinciden, "No coinciden los tipos"},
    TextoError{kErrorInterno, "Error interno"},
    TextoError{kNombreIncorrecto, "Nombre o número de archivo incorrecto"},
    TextoError{kNoEncontrado, "No se encontró el archivo"},
    TextoError{kErrorDeDispositivo, "Error de E/S de dispositivo"},
    TextoError{kYaExiste, "El archivo ya existe"},
    TextoError{kDiscoLleno, "Disco lleno"},
    TextoError{kFinDeArchivo, "La entrada de datos sobrepasa el final del archivo"},
    TextoError{kDemasiadosArchivos, "Demasiados archivos"},
    TextoError{kDispositivoNoDisponible, "Dispositivo no disponible"},
    TextoError{kPermisoDenegado, "Permiso denegado"},
    TextoError{kErrorDeAcceso, "Error de acceso a la ruta o el archivo"},
    TextoError{kRutaNoEncontrada, "No se encontró la ruta de acceso"},
    TextoError{kFormatoNoValido, "Formato de archivo no válido"},
    TextoError{kErrorDeImpresora, "Error de impresora"},
};

std::string TextoDe(int numero) {
  for (const TextoError& error : kTextos)
    if (error.numero == numero) return error.texto;
  return "Error " + std::to_string(numero);
}

// Lo que falta puede ser el fichero (53) o la carpeta que lo contiene (76).
int Falta(const std::filesystem::path& fichero) {
  std::error_code ignorado;
  const std::filesystem::path carpeta = fichero.parent_path();
  return carpeta.empty() || std::filesystem::is_directory(carpeta, ignorado) ? kNoEncontrado
                                                                             : kRutaNoEncontrada;
}

int NumeroDe(const std::error_code& causa, const std::filesystem::path& fichero) {
  using std::errc;
  const std::array<std::pair<errc, NumerosError>, 19> numeros{{
      {errc::not_a_directory, kRutaNoEncontrada},
      {errc::filename_too_long, kNombreIncorrecto},
      {errc::invalid_argument, kNombreIncorrecto},
      {errc::permission_denied, kPermisoDenegado},
      {errc::operation_not_permitted, kPermisoDenegado},
      {errc::device_or_resource_busy, kPermisoDenegado},
      {errc::text_file_busy, kPermisoDenegado},
      {errc::no_lock_available, kPermisoDenegado},
      {errc::read_only_file_system, kErrorDeAcceso},
      {errc::is_a_directory, kErrorDeAcceso},
      {errc::no_space_on_device, kDiscoLleno},
      {errc::file_too_large, kDiscoLleno},
      {errc::too_many_files_open, kDemasiadosArchivos},
      {errc::too_many_files_open_in_system, kDemasiadosArchivos},
      {errc::no_such_device, kDispositivoNoDisponible},
      {errc::no_such_device_or_address, kDispositivoNoDisponible},
      {errc::io_error, kErrorDeDispositivo},
      {errc::not_enough_memory, kMemoriaInsuficiente},
      {errc::file_exists, kYaExiste},
  }};
  if (causa == errc::no_such_file_or_directory) return Falta(fichero);
  for (const auto& [condicion, numero] : numeros)
    if (causa == condicion) return numero;
  return kErrorDeAcceso;
}

}  // namespace

ErrorEjecucion::ErrorEjecucion(int numero, std::filesystem::path fichero, const std::string& causa)
    : numero_(numero), texto_(TextoDe(numero)), fichero_(std::move(fichero)) {
  if (!causa.empty()) texto_ += ": " + causa;
}

ErrorEjecucion::ErrorEjecucion(const std::error_code& causa, const std::filesystem::path& fichero)
    : ErrorEjecucion(NumeroDe(causa, fichero), fichero) {}

}  // namespace ficheros
