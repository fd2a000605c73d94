#include <algorithm>
#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/FicheroTemporal.h"
#include "ficheros/Sistema_windows.h"

namespace ficheros {
namespace fs = std::filesystem;
namespace {

class Fichero {
 public:
  explicit Fichero(HANDLE fichero = INVALID_HANDLE_VALUE) : fichero_(fichero) {}
  Fichero(Fichero&& otro) noexcept : fichero_(std::exchange(otro.fichero_, INVALID_HANDLE_VALUE)) {}
  Fichero& operator=(Fichero&& otro) noexcept {
    std::swap(fichero_, otro.fichero_);
    return *this;
  }
  ~Fichero() { cerrar(); }
  bool cerrar() {
    const HANDLE cual = std::exchange(fichero_, INVALID_HANDLE_VALUE);
    return cual == INVALID_HANDLE_VALUE || ::CloseHandle(cual) != 0;
  }
  HANDLE operator*() const { return fichero_; }
  bool abierto() const { return fichero_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE fichero_;
};

// ¿Existe ya? Sustituirlo por otro no debe saltarse que sea de solo lectura ni que otro lo tenga abierto, y
// si es un enlace se sustituye el fichero al que lleva, que queda en `ruta`.
bool ComprobarDestino(fs::path& ruta, const fs::path& pedido) {
  const DWORD atributos = ::GetFileAttributesW(ruta.c_str());
  if (atributos == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return false;
    FallarWindows(error, pedido);
  }
  if (atributos & FILE_ATTRIBUTE_DIRECTORY) throw ErrorEjecucion(kErrorDeAcceso, pedido, "es una carpeta");
  if (atributos & (FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_READONLY))
    throw ErrorEjecucion(kErrorDeAcceso, pedido);
  const Fichero destino(::CreateFileW(ruta.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!destino.abierto()) FallarWindows(::GetLastError(), pedido);
  if (::GetFileType(*destino) != FILE_TYPE_DISK)
    throw ErrorEjecucion(kErrorDeAcceso, pedido, "no es un fichero corriente");
  if (atributos & FILE_ATTRIBUTE_REPARSE_POINT) ruta = RutaFinal(*destino, ruta);
  return true;
}

// Los de programas vivos están abiertos sin compartir y no se dejan borrar.
void BorrarAbandonados(const fs::path& carpeta) {
  const std::string patron =
      std::string(FicheroTemporal::kPrefijo) + '*' + std::string(FicheroTemporal::kSufijo);
  WIN32_FIND_DATAW hallado{};
  const HANDLE busqueda = ::FindFirstFileW((carpeta / patron).c_str(), &hallado);
  if (busqueda == INVALID_HANDLE_VALUE) return;
  do
    ::DeleteFileW((carpeta / hallado.cFileName).c_str());
  while (::FindNextFileW(busqueda, &hallado));
  ::FindClose(busqueda);
}

fs::path NombreTemporal(const fs::path& destino) {
  static std::atomic<unsigned> contador{0};
  constexpr std::size_t kMaximo = 200;  // para que el nombre entero quepa en 255 caracteres
  const std::string resto = '.' + std::to_string(::GetCurrentProcessId()) + '-' + std::to_string(contador++) +
                            std::string(FicheroTemporal::kSufijo);
  return destino.parent_path() /
         (std::wstring(FicheroTemporal::kPrefijo.begin(), FicheroTemporal::kPrefijo.end()) +
          destino.filename().native().substr(0, kMaximo) + std::wstring(resto.begin(), resto.end()));
}

// La lista de control de acceso del destino pasa al temporal tal cual, hasta donde el sistema deje.
void HeredarPermisos(const fs::path& temporal, const fs::path& destino) {
  DWORD bytes = 0;
  ::GetFileSecurityW(destino.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &bytes);
  std::vector<std::byte> memoria(bytes);
  PSECURITY_DESCRIPTOR descriptor = memoria.data();
  if (bytes == 0 ||
      !::GetFileSecurityW(destino.c_str(), DACL_SECURITY_INFORMATION, descriptor, bytes, &bytes))
    return;
  // Sin pedirlo, lo heredado de la carpeta dejaría de seguirla.
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (::GetSecurityDescriptorControl(descriptor, &control, &revision) && (control & SE_DACL_AUTO_INHERITED))
    ::SetSecurityDescriptorControl(descriptor, SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
  ::SetFileSecurityW(temporal.c_str(), DACL_SECURITY_INFORMATION, descriptor);
}

}  // namespace

struct FicheroTemporal::Interior {
  fs::path pedido;   // lo que pidió el que llama, para los errores
  fs::path destino;  // el fichero de verdad, sin enlaces y con el prefijo de ruta larga
  fs::path temporal;
  bool existe = false;
  Fichero fichero;
  std::uintmax_t escritos = 0;
  bool creado = false;
  bool volcado = false;
  bool publicado = false;

  ~Interior() { borrar(); }

  void borrar() noexcept {
    fichero.cerrar();
    if (creado && !publicado) ::DeleteFileW(temporal.c_str());
  }

  bool crear() {
    temporal = NombreTemporal(destino);
    fichero = Fichero(::CreateFileW(temporal.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    creado = fichero.abierto();
    const DWORD error = ::GetLastError();
    if (!creado && error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) FallarWindows(error, pedido);
    return creado;
  }
};

FicheroTemporal::FicheroTemporal(const fs::path& destino, bool limpiar)
    : interior_(std::make_unique<Interior>()) {
  Interior& i = *interior_;
  i.pedido = destino;
  if (!destino.has_filename()) throw ErrorEjecucion(kErrorDeAcceso, destino);
  i.destino = RutaLarga(destino);
  i.existe = ComprobarDestino(i.destino, destino);
  if (limpiar) BorrarAbandonados(i.destino.parent_path());
  for (int intentos = 0; !i.crear(); ++intentos)
    if (intentos == 100) throw ErrorEjecucion(kErrorDeAcceso, destino);
  apuntar();
}

// Windows no los limita.
void FicheroTemporal::PermitirMuchos() noexcept {}

FicheroTemporal::~FicheroTemporal() {
  olvidar();
}

void FicheroTemporal::borrar() noexcept {
  interior_->borrar();
}

void FicheroTemporal::escribir(std::string_view bytes) {
  constexpr std::size_t kMaximo = 1 << 30;
  Interior& i = *interior_;
  while (!bytes.empty()) {
    DWORD escritos = 0;
    if (!::WriteFile(*i.fichero, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMaximo)), &escritos,
                     nullptr))
      FallarWindows(::GetLastError(), i.pedido);
    if (escritos == 0) throw ErrorEjecucion(kDiscoLleno, i.pedido);
    i.escritos += escritos;
    bytes.remove_prefix(escritos);
  }
}

void FicheroTemporal::volcar() {
  Interior& i = *interior_;
  if (i.volcado) return;
  if (!::FlushFileBuffers(*i.fichero)) FallarWindows(::GetLastError(), i.pedido);
  LARGE_INTEGER tamano{};
  if (!::GetFileSizeEx(*i.fichero, &tamano)) FallarWindows(::GetLastError(), i.pedido);
  if (static_cast<std::uintmax_t>(tamano.QuadPart) != i.escritos)
    throw ErrorEjecucion(kErrorDeDispositivo, i.pedido);
  i.volcado = true;
}

void FicheroTemporal::publicar(Colocacion como) {
  Interior& i = *interior_;
  volcar();
  // Un fichero abierto sin compartir no se deja renombrar por su nombre: se cierra antes.
  if (!i.fichero.cerrar()) FallarWindows(::GetLastError(), i.pedido);
  if (i.existe) HeredarPermisos(i.temporal, i.destino);
  const DWORD modo =
      (como.sustituir ? MOVEFILE_REPLACE_EXISTING : 0) | (como.volcarCarpeta ? MOVEFILE_WRITE_THROUGH : 0);
  if (!::MoveFileExW(i.temporal.c_str(), i.destino.c_str(), modo)) FallarWindows(::GetLastError(), i.pedido);
  i.publicado = true;
}

}  // namespace ficheros
