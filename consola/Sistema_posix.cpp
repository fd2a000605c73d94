#include <unistd.h>

#include "consola/Sistema.h"

namespace consola {

void PrepararTerminal() {}

bool EsTerminal(std::FILE* salida) {
  return ::isatty(::fileno(salida)) != 0;
}

std::vector<std::string> Argumentos(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

}  // namespace consola
