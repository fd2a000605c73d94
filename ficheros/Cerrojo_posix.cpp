#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "ficheros/Cerrojo.h"
#include "ficheros/ErrorEjecucion.h"

namespace ficheros {

struct Cerrojo::Interior {
  std::filesystem::path ruta;
  int fd = -1;
};

Cerrojo::Cerrojo(std::filesystem::path ruta) : interior_(std::make_unique<Interior>()) {
  interior_->ruta = std::move(ruta);
}

// El fichero se queda: si se borrara, otro programa podría tener puesto el cerrojo en el que ya no está.
Cerrojo::~Cerrojo() {
  if (interior_->fd >= 0) ::close(interior_->fd);
}

bool Cerrojo::poner() {
  Interior& i = *interior_;
  if (i.fd < 0) i.fd = ::open(i.ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (i.fd >= 0 && ::flock(i.fd, LOCK_EX | LOCK_NB) == 0) return true;
  if (i.fd >= 0 && (errno == EWOULDBLOCK || errno == EINTR)) return false;
  throw ErrorEjecucion(std::error_code(errno, std::generic_category()), i.ruta);
}

}  // namespace ficheros
