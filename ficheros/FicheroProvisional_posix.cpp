#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/FicheroProvisional.h"
#include "ficheros/FicheroTemporal.h"

namespace ficheros {
namespace {

constexpr mode_t kSoloSuyo = 0600;
constexpr std::size_t kMaximoProvisional = 1 << 30;  // de una vez no se leen ni se escriben más de 2 GB

[[noreturn]] void FallarProvisional(int error, const std::filesystem::path& carpeta) {
  if (error == EDQUOT) error = ENOSPC;
  if (error == ENOENT) throw ErrorEjecucion(kRutaNoEncontrada, carpeta);
  throw ErrorEjecucion(std::error_code(error, std::generic_category()), carpeta);
}

template <class Llamada>
std::size_t Insistir(const std::filesystem::path& carpeta, Llamada llamada) {
  ssize_t bytes = 0;
  do
    bytes = llamada();
  while (bytes < 0 && errno == EINTR);
  if (bytes < 0) FallarProvisional(errno, carpeta);
  return static_cast<std::size_t>(bytes);
}

// Donde no los hay sin nombre, se le quita en cuanto lo tiene.
int AbrirConNombre(const std::filesystem::path& carpeta) {
  const std::string sufijo(FicheroTemporal::kSufijo);
  std::string ruta = (carpeta / FicheroTemporal::kPrefijo).string() + "XXXXXX" + sufijo;
  const int fd = ::mkostemps(ruta.data(), static_cast<int>(sufijo.size()), O_CLOEXEC);
  if (fd >= 0) ::unlink(ruta.c_str());
  return fd;
}

}  // namespace

struct FicheroProvisional::Interior {
  explicit Interior(int descriptor) : fd(descriptor) {}
  ~Interior() { ::close(fd); }
  Interior(const Interior&) = delete;
  Interior& operator=(const Interior&) = delete;
  int fd;
};

FicheroProvisional::FicheroProvisional(std::filesystem::path carpeta) : carpeta_(std::move(carpeta)) {
  int fd = ::open(carpeta_.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kSoloSuyo);
  if (fd < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) fd = AbrirConNombre(carpeta_);
  if (fd < 0) FallarProvisional(errno, carpeta_);
  interior_ = std::make_unique<Interior>(fd);
}

FicheroProvisional::~FicheroProvisional() = default;

std::size_t FicheroProvisional::escribirAlgo(std::string_view bytes) {
  const std::size_t escritos = Insistir(carpeta_, [&] {
    return ::pwrite(interior_->fd, bytes.data(), std::min(bytes.size(), kMaximoProvisional),
                    static_cast<off_t>(enDisco_));
  });
  if (escritos == 0) FallarProvisional(ENOSPC, carpeta_);
  return escritos;
}

std::size_t FicheroProvisional::leerAlgoEn(std::uintmax_t donde, std::span<char> destino) {
  return Insistir(carpeta_, [&] {
    return ::pread(interior_->fd, destino.data(), std::min(destino.size(), kMaximoProvisional),
                   static_cast<off_t>(donde));
  });
}

}  // namespace ficheros
