#include <csignal>

#include "consola/Sistema.h"

namespace consola {

// Quien lee el resumen puede irse antes de que se escriba; la remesa ya está guardada y hay que decirlo con
// el código de salida.
void PrepararTerminal() {
  std::signal(SIGPIPE, SIG_IGN);
}

std::vector<std::string> Argumentos(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

}  // namespace consola
