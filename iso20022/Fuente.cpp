#include "iso20022/Fuente.h"

#include <algorithm>

#include "remesa/Registro.h"

namespace iso20022 {
namespace {

using remesa::FinLinea;

constexpr std::size_t kTrozo = std::size_t{1} << 20;
constexpr std::size_t kTrozoMinimo = std::size_t{4} << 10;
constexpr std::size_t kLineaUsual = remesa::kLongitudRegistro + 2;

}  // namespace

FuenteFichero::FuenteFichero(const std::filesystem::path& ruta) : lectura_(ruta), bufer_(kTrozo) {}

bool FuenteFichero::recorrer(const std::function<bool(const Linea&)>& recibir, const Avance& avance) {
  std::uint64_t sitio = 0;
  std::uint64_t fila = 1;
  bool seguir = true;
  remesa::LineasFichero lineas([&](std::string_view bytes, std::uint64_t longitud, FinLinea fin) {
    if (seguir) seguir = recibir({bytes, longitud, fin, fila, sitio});
    sitio += longitud + remesa::LargoFin(fin);
    if (fin != FinLinea::LF) ++fila;
  });
  std::uintmax_t leidos = 0;
  for (std::size_t trozo = kTrozo; trozo == kTrozo && seguir;) {
    trozo = lectura_.leerEn(leidos, bufer_);
    leidos += trozo;
    lineas.dar({bufer_.data(), trozo});
    if (avance && !avance(leidos, lectura_.tamano())) return false;
  }
  if (seguir) lineas.terminar();
  lleno_ = 0;
  return seguir;
}

// Hacia delante y seguido se pide cada vez más, hasta un trozo entero; a saltos, poco.
std::string_view FuenteFichero::ventana(std::uint64_t sitio, std::size_t largo) {
  if (sitio < desde_ || sitio + largo > desde_ + lleno_) {
    const bool seguido = sitio >= desde_ && sitio <= desde_ + lleno_;
    pedir_ = std::max(largo, seguido ? std::min(pedir_ * 4, kTrozo) : kTrozoMinimo);
    desde_ = sitio;
    lleno_ = lectura_.leerEn(sitio, {bufer_.data(), std::min(pedir_, kTrozo)});
  }
  const auto hueco = static_cast<std::size_t>(sitio - desde_);
  return std::string_view(bufer_.data(), lleno_).substr(hueco, largo);
}

void FuenteFichero::leer(std::uint64_t sitio, std::size_t cuantas,
                         const std::function<void(std::string_view bytes)>& recibir) {
  std::size_t dadas = 0;
  remesa::LineasFichero lineas([&](std::string_view bytes, std::uint64_t, FinLinea) {
    if (dadas++ < cuantas) recibir(bytes);
  });
  for (std::size_t pedidos = cuantas * kLineaUsual; dadas < cuantas; pedidos = kLineaUsual) {
    const std::string_view trozo = ventana(sitio, std::min(pedidos, kTrozo));
    lineas.dar(trozo);
    sitio += trozo.size();
    if (trozo.empty()) return lineas.terminar();
  }
}

FuenteLista::FuenteLista(const remesa::ListaRegistros& lista) : lista_(lista) {
  const auto conLF = [](std::string_view registro) { return registro.find('\n') != std::string_view::npos; };
  if (std::ranges::none_of(lista, conLF)) return;
  std::uint64_t fila = 0;
  for (const std::string_view registro : lista) {
    ++fila;
    std::size_t p = 0;
    for (std::size_t lf = 0; (lf = registro.find('\n', p)) != std::string_view::npos; p = lf + 1)
      partes_.push_back({registro.substr(p, lf - p), fila, true});
    if (p < registro.size()) partes_.push_back({registro.substr(p), fila, false});
  }
}

bool FuenteLista::recorrer(const std::function<bool(const Linea&)>& recibir, const Avance& avance) {
  constexpr std::uint64_t kCadaAvance = 4096;
  const std::uint64_t total = partes_.empty() ? lista_.size() : partes_.size();
  for (std::uint64_t i = 0; i < total; ++i) {
    if (partes_.empty()) lista_.anticipar(i);
    const Parte parte = partes_.empty() ? Parte{lista_[i], i + 1, false} : partes_[i];
    if (!recibir(
            {parte.bytes, parte.bytes.size(), parte.conLF ? FinLinea::LF : FinLinea::CRLF, parte.fila, i}))
      return false;
    if (avance && (i + 1) % kCadaAvance == 0 && !avance(i + 1, total)) return false;
  }
  return true;
}

void FuenteLista::leer(std::uint64_t sitio, std::size_t cuantas,
                       const std::function<void(std::string_view bytes)>& recibir) {
  for (std::uint64_t i = sitio; i < sitio + cuantas; ++i)
    recibir(partes_.empty() ? lista_[i] : partes_[i].bytes);
}

}  // namespace iso20022
