#include "consola/Sustituido.h"

#include <system_error>

#include "consola/Terminal.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

Sustituido::Sustituido(const fs::path& destino) {
  std::error_code error;
  // cppcheck-suppress useInitializationList ; hace falta saber si ha fallado
  ruta_ = fs::canonical(destino, error);
  if (error) return;
  const std::uintmax_t bytes = fs::file_size(ruta_, error);
  if (!error) bytes_ = bytes;
}

void Sustituido::decir() const {
  if (bytes_)
    Avisar(u"%1: sustituido el que había, de %2"_s.arg(
        Mostrable(ruta_), principal::TextoCuenta(*bytes_, u"byte"_s, u"bytes"_s)));
}

}  // namespace consola
