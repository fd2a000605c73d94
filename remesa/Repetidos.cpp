#include "remesa/Repetidos.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

namespace remesa {
namespace {

constexpr std::size_t kInicial = 1024;  // potencia de dos

}  // namespace

std::uint64_t Huella(std::string_view clave) {
  static_assert(sizeof(std::size_t) == sizeof(std::uint64_t), "la huella ha de ser de 64 bits");
  return std::hash<std::string_view>()(clave);
}

std::uint64_t Mezclar(std::uint64_t una, std::uint64_t otra) {
  // Multiplicar por un impar y bajar los bits altos reparte por toda la huella los de las dos.
  constexpr std::uint64_t kImpar = 0x9E3779B97F4A7C15;
  std::uint64_t mezcla = (una ^ (una >> 32)) * kImpar + otra;
  mezcla = (mezcla ^ (mezcla >> 29)) * kImpar;
  return mezcla ^ (mezcla >> 32);
}

Huellas::Entrada Huellas::poner(std::uint64_t huella, std::uint64_t registro, std::uint32_t dato) {
  if (usadas_ * 4 >= tabla_.size() * 3) crecer();
  Entrada& entrada = sitio(huella);
  if (entrada.registro != 0) return entrada;
  constexpr std::uint64_t kTope = std::numeric_limits<std::uint32_t>::max();
  entrada = {huella, static_cast<std::uint32_t>(std::min(registro, kTope)), dato};
  ++usadas_;
  return {};
}

Huellas::Entrada& Huellas::sitio(std::uint64_t huella) {
  const std::size_t mascara = tabla_.size() - 1;
  std::size_t i = huella & mascara;
  while (tabla_[i].registro != 0 && tabla_[i].huella != huella)
    i = (i + 1) & mascara;
  return tabla_[i];
}

void Huellas::crecer() {
  const std::vector<Entrada> anterior =
      std::exchange(tabla_, std::vector<Entrada>(std::max(kInicial, tabla_.size() * 2)));
  for (const Entrada& entrada : anterior)
    if (entrada.registro != 0) sitio(entrada.huella) = entrada;
}

std::uint64_t Repetidos::referencia(std::string_view referencia, std::uint64_t registro) {
  return referencias_.poner(Huella(referencia), registro).registro;
}

std::uint64_t Repetidos::cobro(std::uint64_t mandato, std::string_view importe, std::string_view fecha,
                               std::uint64_t registro) {
  const std::uint64_t clave = Mezclar(Mezclar(mandato, Huella(importe)), Huella(fecha));
  return cobros_.poner(clave, registro).registro;
}

std::uint64_t Repetidos::otraCuenta(std::uint64_t mandato, std::string_view cuenta, std::uint64_t registro) {
  const auto marca = static_cast<std::uint32_t>(Huella(cuenta));
  const Huellas::Entrada anterior = mandatos_.poner(mandato, registro, marca);
  return anterior.registro != 0 && anterior.dato != marca ? anterior.registro : 0;
}

}  // namespace remesa
