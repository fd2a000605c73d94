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

/// Los contenedores que una ruta tiene en común con otra.
std::size_t Comunes(std::string_view una, std::string_view otra) {
  const auto a = Nombres(una), b = Nombres(otra);
  const auto dentro = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size())) - 1;
  const auto [fin, ignorado] = std::mismatch(a.begin(), a.begin() + dentro, b.begin());
  return static_cast<std::size_t>(fin - a.begin());
}

std::string Etiqueta(std::string_view nombre, std::string_view antes = "<") {
  return std::string(antes).append(nombre).append(">");
}

}  // namespace

EscritorXml::EscritorXml(Version version, bool compacto) : compacto_(compacto) {
  cabeza_ = R"(<?xml version="1.0" encoding="UTF-8"?>)";
  cabeza_.append("\n<").append(kDocumento).append(" xmlns=\"").append(Espacio(version)).append("\">");
  cabeza_ += sangria(1) + Etiqueta(kMensaje);
  pie_ = sangria(1) + Etiqueta(kMensaje, "</") + sangria(0) + Etiqueta(kDocumento, "</") + "\n";
  for (const Grado grado : {Grado::Mensaje, Grado::Bloque, Grado::Adeudo})
    preparar(grado, version);
}

void EscritorXml::preparar(Grado grado, Version version) {
  const Sitio& sitio = kSitios[static_cast<std::size_t>(grado)];
  de_[static_cast<std::size_t>(grado)] = {sangria(sitio.nivel) + Etiqueta(sitio.nombre),
                                          sangria(sitio.nivel) + Etiqueta(sitio.nombre, "</")};
  const auto elementos = Tabla::Unica().elementos(grado);
  for (const Elemento& elemento : elementos) {
    Ruta ruta;
    const auto nombres = Nombres(elemento.ruta);
    for (std::size_t i = 0; i < nombres.size(); ++i) {
      const std::string margen = sangria(sitio.nivel + 1 + i);
      const std::string_view nombre = NombreEn(version, nombres[i]);
      const bool hoja = i + 1 == nombres.size();
      const std::string_view atributo = elemento.de->forma == Forma::Importe ? " Ccy=\"EUR\"" : "";
      ruta.pasos.push_back({margen + "<" + std::string(nombre).append(hoja ? atributo : "") + ">",
                            (hoja ? "" : margen) + Etiqueta(nombre, "</")});
    }
    for (const Elemento& otro : elementos)
      ruta.comunes.push_back(Comunes(elemento.ruta, otro.ruta));
    rutas_[static_cast<std::size_t>(grado)].push_back(std::move(ruta));
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
  bytes_ += de_[static_cast<std::size_t>(Grado::Bloque)].abre;
}

void EscritorXml::cerrarBloque() {
  bytes_ += de_[static_cast<std::size_t>(Grado::Bloque)].cierra;
}

void EscritorXml::escribir(Grado grado, std::span<const std::string_view> valores) {
  const bool entero = grado != Grado::Bloque;
  const Paso& de = de_[static_cast<std::size_t>(grado)];
  const auto& rutas = rutas_[static_cast<std::size_t>(grado)];
  if (entero) bytes_ += de.abre;
  const Ruta* abierta = nullptr;
  std::size_t abiertos = 0;  // contenedores
  for (std::size_t i = 0; i < valores.size(); ++i) {
    if (valores[i].empty()) continue;
    const Ruta& ruta = rutas[i];
    const std::size_t comunes =
        abierta == nullptr ? 0 : ruta.comunes[static_cast<std::size_t>(abierta - rutas.data())];
    while (abiertos > comunes)
      bytes_ += abierta->pasos[--abiertos].cierra;
    for (; abiertos + 1 < ruta.pasos.size(); ++abiertos)
      bytes_ += ruta.pasos[abiertos].abre;
    bytes_ += ruta.pasos.back().abre;
    anadirValor(valores[i]);
    bytes_ += ruta.pasos.back().cierra;
    abierta = &ruta;
  }
  while (abiertos > 0)
    bytes_ += abierta->pasos[--abiertos].cierra;
  if (entero) bytes_ += de.cierra;
}

void EscritorXml::anadirValor(std::string_view valor) {
  const std::size_t desde = bytes_.size();
  bytes_ += valor;
  for (std::size_t i = desde; i < bytes_.size(); ++i)
    bytes_[i] = remesa::EquivalenteSEPA(bytes_[i]);
}

}  // namespace iso20022
