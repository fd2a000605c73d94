#include <windows.h>

#include <aclapi.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <utility>

#include "remesa/Enlaces.h"
#include "remesa/ErrorEjecucion.h"
#include "remesa/FicheroTemporal.h"
#include "remesa/RutaLarga_windows.h"

namespace remesa {
namespace fs = std::filesystem;
namespace {

[[noreturn]] void Fallar(DWORD error, const fs::path& ruta) {
  // Estos no tienen equivalente en std::errc.
  if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE ||
      error == ERROR_WRITE_PROTECT)
    throw ErrorEjecucion(70, ruta);
  if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL) throw ErrorEjecucion(61, ruta);
  if (error == ERROR_PATH_NOT_FOUND || error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME ||
      error == ERROR_INVALID_DRIVE)
    throw ErrorEjecucion(76, ruta);
  if (error == ERROR_INVALID_NAME) throw ErrorEjecucion(52, ruta);
  throw ErrorEjecucion(std::error_code(static_cast<int>(error), std::system_category()), ruta);
}

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

// ¿Existe ya? Sustituirlo por otro no debe saltarse que sea de solo lectura ni que otro lo tenga abierto.
bool ComprobarDestino(const fs::path& ruta, const fs::path& pedido) {
  const DWORD atributos = ::GetFileAttributesW(ruta.c_str());
  if (atributos == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return false;
    Fallar(error, pedido);
  }
  if (atributos & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_READONLY))
    throw ErrorEjecucion(75, pedido);
  const Fichero destino(::CreateFileW(ruta.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!destino.abierto()) Fallar(::GetLastError(), pedido);
  if (::GetFileType(*destino) != FILE_TYPE_DISK) throw ErrorEjecucion(75, pedido);
  return true;
}

// Los de programas vivos están abiertos sin compartir y no se dejan borrar.
void BorrarAbandonados(const fs::path& carpeta) {
  const std::wstring prefijo(FicheroTemporal::kPrefijo.begin(), FicheroTemporal::kPrefijo.end());
  const std::wstring sufijo(FicheroTemporal::kSufijo.begin(), FicheroTemporal::kSufijo.end());
  std::error_code error;
  fs::directory_iterator entrada(carpeta, error);
  for (; !error && entrada != fs::directory_iterator(); entrada.increment(error)) {
    const std::wstring nombre = entrada->path().filename().native();
    if (nombre.starts_with(prefijo) && nombre.ends_with(sufijo)) ::DeleteFileW(entrada->path().c_str());
  }
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

// La lista de control de acceso del destino pasa al temporal, hasta donde el sistema deje.
void HeredarPermisos(const fs::path& temporal, const fs::path& destino) {
  PACL lista = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  std::wstring origen = destino.native();
  std::wstring copia = temporal.native();
  if (::GetNamedSecurityInfoW(origen.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &lista, nullptr, &descriptor) != ERROR_SUCCESS)
    return;
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  ::GetSecurityDescriptorControl(descriptor, &control, &revision);
  const SECURITY_INFORMATION herencia = control & SE_DACL_PROTECTED
                                            ? static_cast<DWORD>(PROTECTED_DACL_SECURITY_INFORMATION)
                                            : static_cast<DWORD>(UNPROTECTED_DACL_SECURITY_INFORMATION);
  ::SetNamedSecurityInfoW(copia.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | herencia, nullptr,
                          nullptr, lista, nullptr);
  ::LocalFree(descriptor);
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
  bool publicado = false;

  ~Interior() {
    fichero.cerrar();
    if (creado && !publicado) ::DeleteFileW(temporal.c_str());
  }

  bool crear() {
    temporal = NombreTemporal(destino);
    fichero = Fichero(::CreateFileW(temporal.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    creado = fichero.abierto();
    const DWORD error = ::GetLastError();
    if (!creado && error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) Fallar(error, pedido);
    return creado;
  }
};

FicheroTemporal::FicheroTemporal(const fs::path& destino) : interior_(std::make_unique<Interior>()) {
  Interior& i = *interior_;
  i.pedido = destino;
  i.destino = SeguirEnlaces(destino);
  if (!i.destino.has_filename()) throw ErrorEjecucion(75, destino);
  i.destino = RutaLarga(i.destino);
  i.existe = ComprobarDestino(i.destino, destino);
  BorrarAbandonados(i.destino.parent_path());
  for (int intentos = 0; !i.crear(); ++intentos)
    if (intentos == 100) throw ErrorEjecucion(75, destino);
}

FicheroTemporal::~FicheroTemporal() = default;

void FicheroTemporal::escribir(std::string_view bytes) {
  constexpr std::size_t kMaximo = 1 << 30;
  Interior& i = *interior_;
  while (!bytes.empty()) {
    DWORD escritos = 0;
    if (!::WriteFile(*i.fichero, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMaximo)), &escritos,
                     nullptr))
      Fallar(::GetLastError(), i.pedido);
    if (escritos == 0) throw ErrorEjecucion(61, i.pedido);
    i.escritos += escritos;
    bytes.remove_prefix(escritos);
  }
}

void FicheroTemporal::publicar() {
  Interior& i = *interior_;
  if (!::FlushFileBuffers(*i.fichero)) Fallar(::GetLastError(), i.pedido);
  LARGE_INTEGER tamano{};
  if (!::GetFileSizeEx(*i.fichero, &tamano)) Fallar(::GetLastError(), i.pedido);
  if (static_cast<std::uintmax_t>(tamano.QuadPart) != i.escritos) throw ErrorEjecucion(57, i.pedido);
  // Un fichero abierto sin compartir no se deja renombrar por su nombre: se cierra antes.
  if (!i.fichero.cerrar()) Fallar(::GetLastError(), i.pedido);
  if (i.existe) HeredarPermisos(i.temporal, i.destino);
  if (!::MoveFileExW(i.temporal.c_str(), i.destino.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    Fallar(::GetLastError(), i.pedido);
  i.publicado = true;
}

}  // namespace remesa
