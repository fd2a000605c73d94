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
    TextoError{5, "Argumento o llamada a procedimiento no válida"},
    TextoError{6, "Desbordamiento"},
    TextoError{7, "Memoria insuficiente"},
    TextoError{9, "El subíndice está fuera del intervalo"},
    TextoError{11, "División por cero"},
    TextoError{13, "No coinciden los tipos"},
    TextoError{52, "Nombre o número de archivo incorrecto"},
    TextoError{53, "No se encontró el archivo"},
    TextoError{57, "Error de E/S de dispositivo"},
    TextoError{58, "El archivo ya existe"},
    TextoError{61, "Disco lleno"},
    TextoError{62, "La entrada de datos sobrepasa el final del archivo"},
    TextoError{67, "Demasiados archivos"},
    TextoError{68, "Dispositivo no disponible"},
    TextoError{70, "Permiso denegado"},
    TextoError{75, "Error de acceso a la ruta o el archivo"},
    TextoError{76, "No se encontró la ruta de acceso"},
    TextoError{321, "Formato de archivo no válido"},
    TextoError{482, "Error de impresora"},
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
  return carpeta.empty() || std::filesystem::is_directory(carpeta, ignorado) ? 53 : 76;
}

int NumeroDe(const std::error_code& causa, const std::filesystem::path& fichero) {
  using std::errc;
  const std::array<std::pair<errc, int>, 19> numeros{{
      {errc::not_a_directory, 76},
      {errc::filename_too_long, 52},
      {errc::invalid_argument, 52},
      {errc::permission_denied, 70},
      {errc::operation_not_permitted, 70},
      {errc::device_or_resource_busy, 70},
      {errc::text_file_busy, 70},
      {errc::no_lock_available, 70},
      {errc::read_only_file_system, 75},
      {errc::is_a_directory, 75},
      {errc::no_space_on_device, 61},
      {errc::file_too_large, 61},
      {errc::too_many_files_open, 67},
      {errc::too_many_files_open_in_system, 67},
      {errc::no_such_device, 68},
      {errc::no_such_device_or_address, 68},
      {errc::io_error, 57},
      {errc::not_enough_memory, 7},
      {errc::file_exists, 58},
  }};
  if (causa == errc::no_such_file_or_directory) return Falta(fichero);
  for (const auto& [condicion, numero] : numeros)
    if (causa == condicion) return numero;
  return 75;
}

}  // namespace

ErrorEjecucion::ErrorEjecucion(int numero, std::filesystem::path fichero, const std::string& causa)
    : numero_(numero), texto_(TextoDe(numero)), fichero_(std::move(fichero)) {
  if (!causa.empty()) texto_ += ": " + causa;
}

ErrorEjecucion::ErrorEjecucion(const std::error_code& causa, const std::filesystem::path& fichero)
    : ErrorEjecucion(NumeroDe(causa, fichero), fichero) {}

}  // namespace ficheros
