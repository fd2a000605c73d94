#include "consola/Sustituido.h"

#include <system_error>

#include "comunes/plataforma/Formatos.h"
#include "consola/Terminal.h"

namespace consola {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

Sustituido::Sustituido(const fs::path& destino) {
  std::error_code error;
  ruta_ = fs::canonical(destino, error);
  if (error) return;
  const std::uintmax_t bytes = fs::file_size(ruta_, error);
  if (!error) bytes_ = bytes;
}

void Sustituido::decir() const {
  if (bytes_)
    Avisar(u"%1: sustituido el que había, de %2 bytes"_s.arg(
        Mostrable(ruta_), comunes::FormatoNumero(static_cast<double>(*bytes_), 0)));
}

}  // namespace consola
