#include "remesa/LineasFichero.h"

#include <algorithm>

#include "remesa/Utf8.h"

namespace remesa {

void LineasFichero::dar(std::string_view trozo) {
  if (trozo.empty()) return;
  if (trasCR_) {
    trasCR_ = false;
    const bool conLF = trozo.front() == '\n';
    entregar({}, conLF ? FinLinea::CRLF : FinLinea::CR);
    if (conLF) trozo.remove_prefix(1);
  }
  // El LF siguiente se busca una vez, aunque antes haya muchas líneas acabadas en CR.
  const auto buscarLF = [&](std::size_t desde) {
    return fines_ == Fines::SoloCR ? trozo.size() : std::min(trozo.find('\n', desde), trozo.size());
  };
  std::size_t lf = buscarLF(0);
  std::size_t p = 0;
  while (p < trozo.size()) {
    if (lf < p) lf = buscarLF(p);
    const std::size_t cr = p + std::min(trozo.substr(p, lf - p).find('\r'), lf - p);
    const std::string_view linea = trozo.substr(p, cr - p);
    if (cr + 1 == trozo.size() && trozo[cr] == '\r') {
      guardar(linea);
      trasCR_ = true;
      return;
    }
    if (cr == trozo.size()) return guardar(linea);
    const bool deCR = cr < lf;
    const bool doble = deCR && trozo[cr + 1] == '\n';
    entregar(linea, doble ? FinLinea::CRLF : deCR ? FinLinea::CR : FinLinea::LF);
    p = cr + (doble ? 2 : 1);
  }
}

void LineasFichero::terminar() {
  if (trasCR_)
    entregar({}, FinLinea::CR);
  else if (largo_ > 0)
    entregar({}, FinLinea::Ninguno);
  trasCR_ = false;
}

void LineasFichero::guardar(std::string_view bytes) {
  inicio_ += bytes.substr(0, kRegistroUtf8 - inicio_.size());
  largo_ += bytes.size();
}

void LineasFichero::entregar(std::string_view resto, FinLinea fin) {
  if (largo_ == 0) return recibir_(resto, resto.size(), fin);
  guardar(resto);
  recibir_(inicio_, largo_, fin);
  inicio_.clear();
  largo_ = 0;
}

}  // namespace remesa
