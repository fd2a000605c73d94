#include "consola/UnionFlujo.h"

#include <utility>

#include "ficheros/Lectura.h"
#include "remesa/Registro.h"

namespace consola {

namespace {

constexpr std::string_view kFinLinea = "\r\n";

}  // namespace

UnionFlujo::UnionFlujo(ficheros::EscrituraSegura& salida, std::size_t bufer)
    : salida_(salida), lector_(bufer) {}

void UnionFlujo::unir(const std::filesystem::path& fichero, bool ultimo,
                      const remesa::AvanceLectura& avance) {
  ficheros::LecturaFichero lectura(fichero);
  remesa::Resumidor resumidor(true);
  empezar(ultimo);
  std::uintmax_t total = 0;
  const auto leer = [&](std::span<char> destino) {
    const std::size_t leidos = lectura.leer(destino);
    total += leidos;
    if (avance) avance(total, lectura.tamano());
    return leidos;
  };
  lector_.recorrer(
      0, leer,
      [&](std::string_view registro, std::string_view conFin, std::uint64_t) {
        tratar(registro, conFin, resumidor);
      },
      [&] { volcarTramo(); });
  acabar(resumidor);
}

void UnionFlujo::unir(const remesa::ListaRegistros& lista, bool ultimo) {
  remesa::Resumidor resumidor(true);
  empezar(ultimo);
  for (const std::string_view registro : lista)
    tratar(registro, registro, resumidor);
  acabar(resumidor);
}

void UnionFlujo::empezar(bool ultimo) {
  reglas_.empezarFichero(ultimo);
  registro_ = 0;
}

void UnionFlujo::acabar(const remesa::Resumidor& resumidor) {
  resumen_ = resumidor.resumen();
  observaciones_ = remesa::ObservarImportacion(resumen_, acumulado_);
  acumulado_ = remesa::TrasImportar(acumulado_, resumen_);
}

std::vector<remesa::Observacion> UnionFlujo::observacionesFinales() const {
  return remesa::ObservarAcumulado(acumulado_);
}

void UnionFlujo::tratar(std::string_view registro, std::string_view conFin, remesa::Resumidor& resumidor) {
  ++registro_;
  const remesa::Destino destino = reglas_.dar(registro);
  resumidor.dar(registro);
  if (destino == remesa::Destino::Quitar) return;
  if (renovar_ && remesa::Codigo(registro) == remesa::CodigoRegistro::Presentador) {
    std::string renovado(registro);
    remesa::AjustarLongitud(renovado);
    remesa::RenovarIdentificacion(renovado, *std::exchange(renovar_, std::nullopt));
    return anadirSuelto(renovado, {});
  }
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
