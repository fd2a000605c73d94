#include "iso20022/EscritorXml.h"

#include <algorithm>
#include <array>

#include "remesa/CaracteresSEPA.h"

namespace iso20022 {
namespace {

constexpr std::string_view kDocumento = "Document";
constexpr std::string_view kMensaje = "CstmrDrctDbtInitn";

struct Sitio {
  std::string_view nombre;
  std::size_t nivel;  // dentro del documento
};
// En el orden de Grado.
constexpr std::array<Sitio, kGrados> kSitios{{{"GrpHdr", 2}, {"PmtInf", 2}, {"DrctDbtTxInf", 3}}};

std::vector<std::string_view> Nombres(std::string_view ruta) {
  std::vector<std::string_view> nombres;
  for (std::size_t barra = 0; barra != std::string_view::npos;) {
    barra = ruta.find('/');
    nombres.push_back(ruta.substr(0, barra));
    ruta.remove_prefix(barra == std::string_view::npos ? ruta.size() : barra + 1);
  }
  return nombres;
}

using Ruta = std::vector<std::string_view>;

/// Los contenedores que una ruta tiene en común con otra.
std::size_t Comunes(const Ruta& una, const Ruta& otra) {
  if (una.empty() || otra.empty()) return 0;
  const auto dentro = static_cast<std::ptrdiff_t>(std::min(una.size(), otra.size())) - 1;
  return static_cast<std::size_t>(std::mismatch(una.begin(), una.begin() + dentro, otra.begin()).first -
                                  una.begin());
}

std::string Etiqueta(std::string_view nombre, std::string_view antes = "<") {
  return std::string(antes).append(nombre).append(">");
}

}  // namespace

EscritorXml::EscritorXml(Version version, bool compacto)
    : compacto_(compacto), cabeza_(R"(<?xml version="1.0" encoding="UTF-8"?>)") {
  cabeza_.append("\n<").append(kDocumento).append(" xmlns=\"").append(Espacio(version)).append("\">");
  cabeza_ += sangria(1) + Etiqueta(kMensaje);
  pie_ = sangria(1) + Etiqueta(kMensaje, "</") + sangria(0) + Etiqueta(kDocumento, "</") + "\n";
  for (const Grado grado : {Grado::Mensaje, Grado::Bloque, Grado::Adeudo})
    preparar(grado, version);
}

void EscritorXml::preparar(Grado grado, Version version) {
  const Sitio& sitio = kSitios[static_cast<std::size_t>(grado)];
  Marco& marco = marcos_[static_cast<std::size_t>(grado)];
  marco.abre = sangria(sitio.nivel) + Etiqueta(sitio.nombre);
  marco.cierra = sangria(sitio.nivel) + Etiqueta(sitio.nombre, "</");
  std::vector<Ruta> rutas(1);
  std::vector<std::string_view> atributos(1);
  for (const Elemento& elemento : Tabla::Unica().elementos(grado)) {
    rutas.push_back(Nombres(elemento.ruta));
    for (std::string_view& nombre : rutas.back())
      nombre = NombreEn(version, nombre);
    atributos.push_back(elemento.de->forma == Forma::Importe ? " Ccy=\"EUR\"" : "");
  }
  marco.elementos = rutas.size() - 1;
  for (const Ruta& desde : rutas)
    for (std::size_t b = 0; b < rutas.size(); ++b) {
      const Ruta& hasta = rutas[b];
      const std::size_t comunes = Comunes(desde, hasta);
      std::string entre = desde.empty() ? std::string() : Etiqueta(desde.back(), "</");
      for (std::size_t i = desde.size(); i-- > comunes + 1;)
        entre += sangria(sitio.nivel + i) + Etiqueta(desde[i - 1], "</");
      for (std::size_t i = comunes; i < hasta.size(); ++i) {
        const bool hoja = i + 1 == hasta.size();
        entre +=
            sangria(sitio.nivel + 1 + i) + Etiqueta(std::string(hasta[i]).append(hoja ? atributos[b] : ""));
      }
      marco.entre.push_back(std::move(entre));
    }
}

std::string EscritorXml::sangria(std::size_t nivel) const {
  return compacto_ ? std::string() : "\n" + std::string(nivel * 2, ' ');
}

void EscritorXml::abrirMensaje() {
  bytes_ += cabeza_;
}

void EscritorXml::cerrarMensaje() {
  bytes_ += pie_;
}

void EscritorXml::abrirBloque() {
  bytes_ += marcos_[static_cast<std::size_t>(Grado::Bloque)].abre;
}

void EscritorXml::cerrarBloque() {
  bytes_ += marcos_[static_cast<std::size_t>(Grado::Bloque)].cierra;
}

void EscritorXml::escribir(Grado grado, std::span<const std::string_view> valores) {
  const bool entero = grado != Grado::Bloque;
  const Marco& marco = marcos_[static_cast<std::size_t>(grado)];
  if (entero) bytes_ += marco.abre;
  std::size_t ultimo = 0;
  for (std::size_t i = 0; i < valores.size(); ++i) {
    if (valores[i].empty()) continue;
    bytes_ += marco.de(ultimo, i + 1);
    anadirValor(valores[i]);
    ultimo = i + 1;
  }
  bytes_ += marco.de(ultimo, 0);
  if (entero) bytes_ += marco.cierra;
}

void EscritorXml::anadirValor(std::string_view valor) {
  const std::size_t desde = bytes_.size();
  bytes_ += valor;
  for (std::size_t i = desde; i < bytes_.size(); ++i)
    bytes_[i] = remesa::EquivalenteSEPA(bytes_[i]);
}

}  // namespace iso20022
