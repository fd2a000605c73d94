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
  std::string quien;
  int fd = -1;
  bool puesto = false;

  // Es solo un aviso para quien espera: si no se puede escribir, no sabrá a quién.
  void decir(const std::string& texto) const {
    if (::ftruncate(fd, 0) != 0 || ::pwrite(fd, texto.data(), texto.size(), 0) < 0) return;
  }
};

Cerrojo::Cerrojo(std::filesystem::path ruta, std::string quien) : interior_(std::make_unique<Interior>()) {
  interior_->ruta = std::move(ruta);
  interior_->quien = std::move(quien);
}

// El fichero se queda: si se borrara, otro programa podría tener puesto el cerrojo en el que ya no está.
Cerrojo::~Cerrojo() {
  if (interior_->puesto) interior_->decir({});
  if (interior_->fd >= 0) ::close(interior_->fd);
}

bool Cerrojo::poner() {
  Interior& i = *interior_;
  if (i.fd < 0) i.fd = ::open(i.ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (i.fd >= 0 && ::flock(i.fd, LOCK_EX | LOCK_NB) == 0) {
    i.puesto = true;
    i.decir(i.quien);
    return true;
  }
  if (i.fd >= 0 && (errno == EWOULDBLOCK || errno == EINTR)) return false;
  throw ErrorEjecucion(std::error_code(errno, std::generic_category()), i.ruta);
}

std::string Cerrojo::quienLoTiene() const {
  std::string texto(kMaximoQuien, '\0');
  const ssize_t leidos = interior_->fd < 0 ? 0 : ::pread(interior_->fd, texto.data(), texto.size(), 0);
  texto.resize(leidos < 0 ? 0 : static_cast<std::size_t>(leidos));
  return texto;
}

}  // namespace ficheros
