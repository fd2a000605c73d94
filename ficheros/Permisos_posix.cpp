#include "ficheros/Permisos_posix.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace ficheros {
namespace {

constexpr const char* kLista = "system.posix_acl_access";
constexpr mode_t kGrupo = 070;
constexpr mode_t kAjenos = 077;

using Lista = std::vector<char>;

// Vacía si no tiene; sin valor si la tiene y no se puede leer.
std::optional<Lista> LeerLista(const std::filesystem::path& ruta) {
  const ssize_t largo = ::getxattr(ruta.c_str(), kLista, nullptr, 0);
  if (largo < 0) return errno == ENODATA || errno == ENOTSUP ? std::optional(Lista()) : std::nullopt;
  Lista lista(static_cast<std::size_t>(largo));
  if (::getxattr(ruta.c_str(), kLista, lista.data(), lista.size()) != largo) return std::nullopt;
  return lista;
}

// Lo que guarda el núcleo: una versión de 4 bytes y entradas de clase, permisos y número.
struct Entrada {
  std::uint16_t clase;
  std::uint16_t permisos;
  std::uint32_t numero;
};
constexpr std::size_t kPrimera = 4;
constexpr std::uint16_t kClaseGrupo = 0x04;
constexpr std::uint16_t kClaseOtros = 0x20;

// El grupo dueño se queda con lo que tienen los demás.
void QuitarGrupo(Lista& lista) {
  std::uint16_t otros = 0;
  for (const bool escribir : {false, true})
    for (std::size_t i = kPrimera; i + sizeof(Entrada) <= lista.size(); i += sizeof(Entrada)) {
      Entrada entrada{};
      std::memcpy(&entrada, lista.data() + i, sizeof entrada);
      if (entrada.clase == kClaseOtros) otros = entrada.permisos;
      if (!escribir || entrada.clase != kClaseGrupo) continue;
      entrada.permisos &= otros;
      std::memcpy(lista.data() + i, &entrada, sizeof entrada);
    }
}

}  // namespace

void HeredarPermisos(int fd, const struct stat& estado, const std::filesystem::path& destino) {
  mode_t modo = estado.st_mode & 07777;
  const bool mismoDueno = ::fchown(fd, estado.st_uid, estado.st_gid) == 0;
  const bool mismoGrupo = mismoDueno || ::fchown(fd, static_cast<uid_t>(-1), estado.st_gid) == 0;
  if (!mismoDueno) modo &= 0777;  // sin el dueño, sus bits especiales serían los de otro
  std::optional<Lista> lista = LeerLista(destino);
  const bool tenia = !lista || !lista->empty();
  // Sin su grupo, el fichero tiene el de quien guarda, y lo que era de aquel no es de este.
  if (lista && !mismoGrupo) QuitarGrupo(*lista);
  if (!lista || lista->empty() || ::fsetxattr(fd, kLista, lista->data(), lista->size(), 0) != 0) {
    if (::fremovexattr(fd, kLista) != 0 && errno != ENODATA && errno != ENOTSUP) return;
    // Los bits del grupo son, con una lista, lo más que da la lista.
    if (tenia)
      modo &= ~kAjenos;
    else if (!mismoGrupo)
      modo &= ~kGrupo | (modo << 3);
  }
  // Lo último: hasta aquí nadie más lo ha podido abrir.
  static_cast<void>(::fchmod(fd, modo));
}

}  // namespace ficheros
