#include "remesa/Fichero.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "remesa/Campos.h"
#include "remesa/LineasFichero.h"

namespace remesa {
namespace {

constexpr std::size_t kTrozo = 1 << 20;

}  // namespace

Cabeza ComprobarCabeza(const std::filesystem::path& ruta) {
  std::array<char, 7> bytes{};
  ficheros::LecturaFichero lectura(ruta);
  if (lectura.leer(bytes) < bytes.size()) return Cabeza::Desconocida;
  const std::string_view cabeza(bytes.data(), bytes.size());
  if (LeerCampo(cabeza, kVersion) == kVersion1914) return Cabeza::Q19;
  return LeerCampo(cabeza, kCabezaAnterior) == "5180" ? Cabeza::VersionAnterior : Cabeza::Desconocida;
}

ListaRegistros LeerFichero(const std::filesystem::path& ruta, const AvanceLectura& avance) try {
  ficheros::LecturaFichero lectura(ruta);
  if (lectura.tamano() > std::numeric_limits<std::size_t>::max() / 2) throw std::bad_alloc();
  const auto total = static_cast<std::size_t>(lectura.tamano());
  auto datos = std::make_shared_for_overwrite<char[]>(total);
  std::vector<std::string_view> registros;
  registros.reserve(total / (kLongitudRegistro + 2) + 1);
  // Las líneas se ven en el bloque; del cortador solo hace falta lo que miden. Corta lo leído mientras aún
  // está en la caché.
  const char* inicio = datos.get();
  LineasFichero lineas(
      [&](std::string_view, std::uint64_t longitud, FinLinea fin) {
        registros.emplace_back(inicio, longitud);
        inicio += longitud + LargoFin(fin);
      },
      Fines::SoloCR);
  for (std::size_t leidos = 0; leidos < total;) {
    const std::size_t trozo = lectura.leer({datos.get() + leidos, std::min(kTrozo, total - leidos)});
    lineas.dar({datos.get() + leidos, trozo});
    leidos += trozo;
    if (avance) avance(leidos, total);
  }
  lineas.terminar();
  lectura.comprobarFinal();
  ListaRegistros lista;
  lista.anadirBloque({std::move(datos), total}, std::move(registros));
  return lista;
} catch (const std::bad_alloc&) {
  throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente, ruta);
}

}  // namespace remesa
