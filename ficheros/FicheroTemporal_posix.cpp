#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "ficheros/Enlaces.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/FicheroTemporal.h"
#include "ficheros/Permisos_posix.h"

namespace ficheros {
namespace fs = std::filesystem;
namespace {

[[noreturn]] void Fallar(int error, const fs::path& ruta) {
  // Una cuota agotada es, para quien guarda, un disco lleno.
  if (error == EDQUOT) error = ENOSPC;
  throw ErrorEjecucion(std::error_code(error, std::generic_category()), ruta);
}

class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(Descriptor&& otro) noexcept : fd_(std::exchange(otro.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& otro) noexcept {
    std::swap(fd_, otro.fd_);
    return *this;
  }
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int operator*() const { return fd_; }
  bool abierto() const { return fd_ >= 0; }

 private:
  int fd_;
};

// Estado del destino si ya existe. Sustituirlo por otro no debe saltarse su protección contra escritura.
std::optional<struct stat> EstadoDestino(const fs::path& ruta, const fs::path& pedido) {
  struct stat estado {};
  if (::stat(ruta.c_str(), &estado) != 0) {
    if (errno == ENOENT) return std::nullopt;
    Fallar(errno, pedido);
  }
  if (S_ISDIR(estado.st_mode)) throw ErrorEjecucion(kErrorDeAcceso, pedido, "es una carpeta");
  if (!S_ISREG(estado.st_mode)) throw ErrorEjecucion(kErrorDeAcceso, pedido, "no es un fichero corriente");
  if (::faccessat(AT_FDCWD, ruta.c_str(), W_OK, AT_EACCESS) != 0) Fallar(errno, pedido);
  return estado;
}

// Cada cuántos bytes escritos se manda al disco lo que hay: el disco trabaja mientras se prepara lo demás, y
// el volcado del final solo espera por lo último.
constexpr std::uintmax_t kTramoDisco = std::uintmax_t{4} << 20;

bool EsTemporal(const std::string& nombre) {
  return nombre.starts_with(FicheroTemporal::kPrefijo) && nombre.ends_with(FicheroTemporal::kSufijo);
}

// Para bloquearlo basta cualquiera de los dos; uno al que se le dieron ya los permisos de su destino puede no
// dejarse leer.
int AbrirAbandonado(const fs::path& ruta) {
  constexpr int kModo = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  const int fd = ::open(ruta.c_str(), O_RDONLY | kModo);
  return fd >= 0 ? fd : ::open(ruta.c_str(), O_WRONLY | kModo);
}

// Un temporal sin bloquear es de un programa muerto: los vivos lo tienen bloqueado desde que lo crean. Si
// otro lo ha borrado mientras tanto, con su nombre puede haber ya uno vivo.
void BorrarAbandonados(const fs::path& carpeta) {
  std::error_code error;
  fs::directory_iterator entrada(carpeta, error);
  for (; !error && entrada != fs::directory_iterator(); entrada.increment(error)) {
    const fs::path& ruta = entrada->path();
    if (!EsTemporal(ruta.filename().string())) continue;
    const Descriptor fd(AbrirAbandonado(ruta));
    struct stat estado {};
    if (fd.abierto() && ::flock(*fd, LOCK_EX | LOCK_NB) == 0 && ::fstat(*fd, &estado) == 0 &&
        S_ISREG(estado.st_mode) && estado.st_nlink > 0)
      ::unlink(ruta.c_str());
  }
}

fs::path NombreTemporal(const fs::path& destino) {
  static std::atomic<unsigned> contador{0};
  constexpr std::size_t kMaximo = 150;  // para que el nombre entero quepa en los 255 bytes usuales
  return destino.parent_path() /
         (std::string(FicheroTemporal::kPrefijo) + destino.filename().string().substr(0, kMaximo) + '.' +
          std::to_string(::getpid()) + '-' + std::to_string(contador++) +
          std::string(FicheroTemporal::kSufijo));
}

// false si este sistema de ficheros no sabe: al menos, no había ninguno un momento antes.
bool PonerSinSustituir(const fs::path& temporal, const fs::path& destino, const fs::path& pedido) {
  if (::renameat2(AT_FDCWD, temporal.c_str(), AT_FDCWD, destino.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) Fallar(errno, pedido);
  struct stat estado {};
  if (::lstat(destino.c_str(), &estado) == 0) Fallar(EEXIST, pedido);
  return false;
}

}  // namespace

struct FicheroTemporal::Interior {
  fs::path pedido;   // lo que pidió el que llama, para los errores
  fs::path destino;  // el fichero de verdad, sin enlaces
  fs::path temporal;
  std::optional<struct stat> anterior;
  Descriptor fd;
  std::uintmax_t escritos = 0;
  std::uintmax_t enviados = 0;  // de los escritos, los que ya van camino del disco
  bool volcado = false;
  bool publicado = false;

  ~Interior() { borrar(); }

  void borrar() const noexcept {
    if (fd.abierto() && !publicado) ::unlink(temporal.c_str());
  }

  // Solo un adelanto, que no espera ni da por bueno nada: si no se puede, o si el disco falla, lo dirá fsync.
  void adelantarVolcado() {
    if (escritos - enviados < kTramoDisco) return;
    ::sync_file_range(*fd, static_cast<off_t>(enviados), static_cast<off_t>(escritos - enviados),
                      SYNC_FILE_RANGE_WRITE);
    enviados = escritos;
  }

  // Falso si entre crearlo y bloquearlo otro programa lo tomó por abandonado.
  bool crear() {
    temporal = NombreTemporal(destino);
    const mode_t modo = anterior ? 0600 : 0666;
    fd = Descriptor(::open(temporal.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, modo));
    if (!fd.abierto()) {
      if (errno == EEXIST) return false;
      // El fichero iba a crearse: lo que falta es su carpeta, aunque sea la actual.
      if (errno == ENOENT) throw ErrorEjecucion(kRutaNoEncontrada, pedido);
      Fallar(errno, pedido);
    }
    if (::flock(*fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
    struct stat estado {};
    if (::fstat(*fd, &estado) != 0) Fallar(errno, pedido);
    return estado.st_nlink > 0;
  }
};

FicheroTemporal::FicheroTemporal(const fs::path& destino, bool limpiar)
    : interior_(std::make_unique<Interior>()) {
  Interior& i = *interior_;
  i.pedido = destino;
  i.destino = SeguirEnlaces(destino);
  if (!i.destino.has_filename()) throw ErrorEjecucion(kErrorDeAcceso, destino);
  i.anterior = EstadoDestino(i.destino, destino);
  if (limpiar) BorrarAbandonados(i.destino.has_parent_path() ? i.destino.parent_path() : fs::path("."));
  for (int intentos = 0; !i.crear(); ++intentos)
    if (intentos == 100) throw ErrorEjecucion(kErrorDeAcceso, destino);
  apuntar();
}

void FicheroTemporal::PermitirMuchos() noexcept {
  struct rlimit limite {};
  if (::getrlimit(RLIMIT_NOFILE, &limite) != 0) return;
  limite.rlim_cur = limite.rlim_max;
  if (::setrlimit(RLIMIT_NOFILE, &limite) != 0) return;  // seguirán siendo los que eran
}

FicheroTemporal::~FicheroTemporal() {
  olvidar();
}

void FicheroTemporal::borrar() noexcept {
  interior_->borrar();
}

void FicheroTemporal::escribir(std::string_view bytes) {
  Interior& i = *interior_;
  while (!bytes.empty()) {
    const ssize_t escritos = ::write(*i.fd, bytes.data(), bytes.size());
    if (escritos < 0 && errno == EINTR) continue;
    if (escritos <= 0) Fallar(escritos < 0 ? errno : ENOSPC, i.pedido);
    i.escritos += static_cast<std::uintmax_t>(escritos);
    bytes.remove_prefix(static_cast<std::size_t>(escritos));
  }
  i.adelantarVolcado();
}

void FicheroTemporal::volcar() {
  Interior& i = *interior_;
  if (i.volcado) return;
  if (i.anterior) HeredarPermisos(*i.fd, *i.anterior, i.destino);
  if (::fsync(*i.fd) != 0) Fallar(errno, i.pedido);
  // Algunos sistemas de red no dicen que falta sitio hasta cerrar; se cierra un duplicado, porque el bloqueo
  // debe durar hasta el cambio de nombre.
  if (const int copia = ::dup(*i.fd); copia >= 0 && ::close(copia) != 0) Fallar(errno, i.pedido);
  struct stat estado {};
  if (::fstat(*i.fd, &estado) != 0) Fallar(errno, i.pedido);
  if (static_cast<std::uintmax_t>(estado.st_size) != i.escritos)
    throw ErrorEjecucion(kErrorDeDispositivo, i.pedido);
  i.volcado = true;
}

void FicheroTemporal::publicar(Colocacion como) {
  Interior& i = *interior_;
  volcar();
  if (como.sustituir || !PonerSinSustituir(i.temporal, i.destino, i.pedido))
    if (::rename(i.temporal.c_str(), i.destino.c_str()) != 0) Fallar(errno, i.pedido);
  i.publicado = true;
  if (!como.volcarCarpeta) return;
  // El fichero nuevo ya está en su sitio: si la carpeta no se deja volcar, no hay nada que deshacer.
  const fs::path carpeta = i.destino.has_parent_path() ? i.destino.parent_path() : fs::path(".");
  const Descriptor fdCarpeta(::open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (fdCarpeta.abierto()) ::fsync(*fdCarpeta);
}

}  // namespace ficheros
