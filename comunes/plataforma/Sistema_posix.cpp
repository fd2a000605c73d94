#include "comunes/plataforma/Sistema.h"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <QFile>
#include <csignal>
#include <initializer_list>

#include "comunes/plataforma/Texto.h"

namespace comunes {

void PrepararSalidas() {
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  // Con la salida cerrada, la remesa que se escribe recibiría su descriptor y, con él, lo que se dice. Solo
  // de lectura: así escribir en ella sigue fallando.
  for (const int salida : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (::fcntl(salida, F_GETFD) < 0) ::open("/dev/null", O_RDONLY);
}

void ConservarMemoria() {
  constexpr int kMega = 1024 * 1024;
  mallopt(M_MMAP_THRESHOLD, 32 * kMega);
  mallopt(M_TRIM_THRESHOLD, 64 * kMega);
}

QString DesdeRuta(const std::filesystem::path& ruta) {
  return QFile::decodeName(QByteArray::fromStdString(ruta.native()));
}

std::filesystem::path ARuta(const QString& ruta) {
  return QFile::encodeName(ruta).toStdString();
}

}  // namespace comunes
