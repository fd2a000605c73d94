#include "remesa/Fichero.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "remesa/Campos.h"

namespace remesa {
namespace {

constexpr std::size_t kTrozo = 1 << 20;

// Corta en líneas lo leído mientras aún está en la caché.
class Cortador {
 public:
  explicit Cortador(const char* datos, std::size_t total) : datos_(datos) {
    lineas_.reserve(total / (kLongitudRegistro + 2) + 1);
  }

  void hasta(std::size_t leidos) {
    while (mirado_ < leidos) {
      if (saltarLF_ && datos_[mirado_] == '\n') inicio_ = ++mirado_;
      saltarLF_ = false;
      const void* cr = std::memchr(datos_ + mirado_, '\r', leidos - mirado_);
      if (!cr) {
        mirado_ = leidos;
        return;
      }
      const auto fin = static_cast<std::size_t>(static_cast<const char*>(cr) - datos_);
      lineas_.emplace_back(datos_ + inicio_, fin - inicio_);
      inicio_ = mirado_ = fin + 1;
      saltarLF_ = true;
    }
  }

  std::vector<std::string_view> terminar() {
    if (inicio_ < mirado_) lineas_.emplace_back(datos_ + inicio_, mirado_ - inicio_);
    return std::move(lineas_);
  }

 private:
  const char* datos_;
  std::vector<std::string_view> lineas_;
  std::size_t inicio_ = 0;
  std::size_t mirado_ = 0;
  bool saltarLF_ = false;
};

}  // namespace

Cabeza ComprobarCabeza(const std::filesystem::path& ruta) {
  std::array<char, 7> bytes{};
  ficheros::LecturaFichero lectura(ruta);
  if (lectura.leer(bytes) < bytes.size()) return Cabeza::Desconocida;
  const std::string_view cabeza(bytes.data(), bytes.size());
  if (LeerCampo(cabeza, kVersion) == "19143") return Cabeza::Q19;
  return LeerCampo(cabeza, kCabezaAnterior) == "5180" ? Cabeza::VersionAnterior : Cabeza::Desconocida;
}

ListaRegistros LeerFichero(const std::filesystem::path& ruta, const AvanceLectura& avance) try {
  ficheros::LecturaFichero lectura(ruta);
  if (lectura.tamano() > std::numeric_limits<std::size_t>::max() / 2) throw std::bad_alloc();
  const auto total = static_cast<std::size_t>(lectura.tamano());
  auto datos = std::make_shared_for_overwrite<char[]>(total);
  Cortador cortador(datos.get(), total);
  for (std::size_t leidos = 0; leidos < total;) {
    leidos += lectura.leer({datos.get() + leidos, std::min(kTrozo, total - leidos)});
    cortador.hasta(leidos);
    if (avance) avance(leidos, total);
  }
  lectura.comprobarFinal();
  ListaRegistros lista;
  lista.anadirBloque({std::move(datos), total}, cortador.terminar());
  return lista;
} catch (const std::bad_alloc&) {
  throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente, ruta);
}

}  // namespace remesa
