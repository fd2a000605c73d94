#include "consola/UnionFlujo.h"

#include <algorithm>
#include <cstring>

#include "ficheros/Lectura.h"
#include "remesa/Registro.h"

namespace consola {

namespace {

constexpr std::string_view kFinLinea = "\r\n";
constexpr std::size_t kRegistroConFin = remesa::kLongitudRegistro + kFinLinea.size();

}  // namespace

UnionFlujo::UnionFlujo(ficheros::EscrituraSegura& salida, std::size_t bufer)
    : salida_(salida), bufer_(std::max(bufer, kBuferMinimo)) {}

void UnionFlujo::unir(const std::filesystem::path& fichero, bool ultimo,
                      const remesa::AvanceLectura& avance) {
  ficheros::LecturaFichero lectura(fichero);
  remesa::Resumidor resumidor(true);
  reglas_.empezarFichero(ultimo);
  registro_ = 0;

  std::uintmax_t total = 0;
  std::size_t quedan = 0;    // bytes del registro a medias, al principio del búfer
  bool saltarLinea = false;  // el registro ya se trató: lo que sigue, hasta CR, sobra
  bool saltarLF = false;     // un LF aquí es el del CR anterior
  for (bool fin = false; !fin;) {
    const std::size_t pedidos = bufer_.size() - quedan;
    const std::size_t leidos = lectura.leer({bufer_.data() + quedan, pedidos});
    fin = leidos < pedidos;
    total += leidos;
    if (avance) avance(total, lectura.tamano());
    const char* p = bufer_.data();
    const char* const tope = p + quedan + leidos;
    while (p < tope) {
      if (saltarLF) {
        saltarLF = false;
        if (*p == '\n' && ++p == tope) break;
      }
      const auto largo = static_cast<std::size_t>(tope - p);
      const auto* cr = static_cast<const char*>(std::memchr(p, '\r', largo));
      if (saltarLinea) {
        saltarLinea = cr == nullptr;
        saltarLF = !saltarLinea;
        p = saltarLinea ? tope : cr + 1;
        continue;
      }
      // Sin el fin de línea a la vista hay que leer más, salvo que el registro llene ya el búfer.
      const bool entera = cr != nullptr && cr + 1 < tope;
      if (!entera && !fin && largo < bufer_.size()) break;
      const char* const hasta = cr != nullptr ? cr : tope;
      const char* siguiente = cr != nullptr ? cr + 1 : tope;
      if (entera && *siguiente == '\n') ++siguiente;
      saltarLinea = cr == nullptr;
      saltarLF = cr != nullptr && siguiente == tope && siguiente == cr + 1;
      tratar({p, static_cast<std::size_t>(hasta - p)}, {p, static_cast<std::size_t>(siguiente - p)},
             resumidor);
      p = siguiente;
    }
    volcarTramo();
    quedan = static_cast<std::size_t>(tope - p);
    std::memmove(bufer_.data(), p, quedan);
  }
  resumen_ = resumidor.resumen();
  observaciones_ = remesa::ObservarImportacion(resumen_, acumulado_);
  acumulado_ = remesa::TrasImportar(acumulado_, resumen_);
}

std::vector<remesa::Observacion> UnionFlujo::observacionesFinales() const {
  return remesa::ObservarAcumulado(acumulado_);
}

void UnionFlujo::tratar(std::string_view registro, std::string_view conFin, remesa::Resumidor& resumidor) {
  if (++registro_ == 1) tipo_ = remesa::TipoDe(registro);
  const remesa::Destino destino = reglas_.dar(registro);
  resumidor.dar(registro);
  if (destino == remesa::Destino::Quitar) return;
  const bool talCual = destino == remesa::Destino::Conservar &&
                       registro.size() == remesa::kLongitudRegistro && conFin.size() == kRegistroConFin;
  if (talCual)
    anadirTramo(conFin);
  else
    anadirSuelto(registro, destino == remesa::Destino::Reescribir ? reglas_.cambios()
                                                                  : std::span<const remesa::Cambio>{});
}

void UnionFlujo::anadirTramo(std::string_view bytes) {
  if (tramo_.data() + tramo_.size() == bytes.data()) {
    tramo_ = {tramo_.data(), tramo_.size() + bytes.size()};
    return;
  }
  volcarTramo();
  tramo_ = bytes;
}

void UnionFlujo::anadirSuelto(std::string_view registro, std::span<const remesa::Cambio> cambios) {
  volcarTramo();
  rehecho_ = registro.substr(0, remesa::kLongitudRegistro);
  remesa::Aplicar(rehecho_, cambios);
  remesa::AjustarLongitud(rehecho_);
  salida_.escribir(rehecho_ += kFinLinea);
}

void UnionFlujo::volcarTramo() {
  if (!tramo_.empty()) salida_.escribir(tramo_);
  tramo_ = {};
}

}  // namespace consola
