#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "ficheros/Enlaces.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"

namespace ficheros {
namespace {

constexpr std::size_t kMaximoLectura = 1 << 30;  // read no da más de 2 GB de una vez

template <class Lectura>
std::size_t Leer(const std::filesystem::path& ruta, Lectura&& lectura) {
  ssize_t leidos = 0;
  do
    leidos = lectura();
  while (leidos < 0 && errno == EINTR);
  if (leidos < 0) throw ErrorEjecucion(std::error_code(errno, std::generic_category()), ruta);
  return static_cast<std::size_t>(leidos);
}

}  // namespace

struct LecturaFichero::Interior {
  explicit Interior(int descriptor) : fd(descriptor) {}
  ~Interior() {
    if (fd >= 0) ::close(fd);
  }
  Interior(const Interior&) = delete;
  Interior& operator=(const Interior&) = delete;
  int fd;
  struct timespec escrito {};  // última escritura, al abrirlo
};

// O_NONBLOCK: abrir una cola sin nadie al otro lado no debe esperar.
LecturaFichero::LecturaFichero(const std::filesystem::path& ruta) : ruta_(ruta) {
  SeguirEnlaces(ruta);  // solo por los que no se deben seguir
  interior_ = std::make_unique<Interior>(::open(ruta.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat estado {};
  if (interior_->fd < 0 || ::fstat(interior_->fd, &estado) != 0)
    throw ErrorEjecucion(std::error_code(errno, std::generic_category()), ruta);
  if (S_ISDIR(estado.st_mode)) throw ErrorEjecucion(kErrorDeAcceso, ruta, "es una carpeta");
  if (!S_ISREG(estado.st_mode)) throw ErrorEjecucion(kErrorDeAcceso, ruta, "no es un fichero corriente");
  interior_->escrito = estado.st_mtim;
  tamano_ = static_cast<std::uintmax_t>(estado.st_size);
}

LecturaFichero::~LecturaFichero() = default;

std::size_t LecturaFichero::leerAlgo(std::span<char> destino) {
  return Leer(
      ruta_, [&] { return ::read(interior_->fd, destino.data(), std::min(destino.size(), kMaximoLectura)); });
}

std::size_t LecturaFichero::leerAlgoEn(std::uintmax_t donde, std::span<char> destino) {
  return Leer(ruta_, [&] {
    return ::pread(interior_->fd, destino.data(), std::min(destino.size(), kMaximoLectura),
                   static_cast<off_t>(donde));
  });
}

LecturaFichero::Marca LecturaFichero::marca() const {
  struct stat estado {};
  if (::fstat(interior_->fd, &estado) != 0)
    throw ErrorEjecucion(std::error_code(errno, std::generic_category()), ruta_);
  constexpr std::int64_t kNanosegundos = 1'000'000'000;
  return {static_cast<std::uint64_t>(estado.st_dev), static_cast<std::uint64_t>(estado.st_ino),
          static_cast<std::uint64_t>(estado.st_size),
          estado.st_mtim.tv_sec * kNanosegundos + estado.st_mtim.tv_nsec};
}

bool LecturaFichero::reescrito() const {
  struct stat estado {};
  const struct timespec& antes = interior_->escrito;
  return ::fstat(interior_->fd, &estado) == 0 &&
         (estado.st_mtim.tv_sec != antes.tv_sec || estado.st_mtim.tv_nsec != antes.tv_nsec);
}

}  // namespace ficheros
