#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "comunes/plataforma/Proceso.h"

namespace comunes {

void PrepararSalidas() {
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  // Con la salida cerrada, la remesa que se escribe recibiría su descriptor y, con él, lo que se dice. Solo
  // de lectura: así escribir en ella sigue fallando.
  for (const int salida : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (::fcntl(salida, F_GETFD) < 0) ::open("/dev/null", O_RDONLY);
}

}  // namespace comunes
