#include "iso20022/GuardaXml.h"

#include <algorithm>
#include <string_view>

#include "iso20022/ConversorXml.h"

namespace iso20022 {
namespace {

constexpr std::size_t kNada = std::string::npos;

std::size_t Lineas(const std::string& bytes, std::size_t hasta) {
  return static_cast<std::size_t>(
      std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(hasta), '\n'));
}

/// Dónde empieza la primera línea que no es UTF-8.
std::size_t PrimeroNoValido(QByteArrayView bytes) {
  qsizetype desde = 0;
  for (qsizetype fin = 0; (fin = bytes.indexOf('\n', desde)) >= 0; desde = fin + 1)
    if (!bytes.sliced(desde, fin - desde).isValidUtf8()) break;
  return static_cast<std::size_t>(desde);
}

}  // namespace

std::string ConLinea(std::size_t linea, const std::string& causa) {
  return "línea " + std::to_string(linea) + ": " + causa;
}

QByteArray GuardaXml::dar(const QByteArray& bytes) {
  pendiente_.append(bytes.data(), static_cast<std::size_t>(bytes.size()));
  std::size_t hecho = 0;
  for (;;) {
    const std::size_t marca = pendiente_.find('<', hecho);
    comprobarLargo(hecho, marca);
    if (marca == kNada) break;
    const std::size_t fin = finMarca(marca);
    comprobarLargo(marca, fin);
    if (fin == kNada) break;
    hecho = fin;
  }
  return entregar(hecho);
}

QByteArray GuardaXml::terminar() {
  return entregar(pendiente_.size());
}

// Solo distingue lo que hace falta para saber dónde acaba cada marca. En un XML bien formado no puede acabar
// en otro sitio, y en uno que no lo está quien lo lee se detiene ahí.
std::size_t GuardaXml::finMarca(std::size_t desde) {
  const std::string_view marca = std::string_view(pendiente_).substr(desde);
  const auto hasta = [&](std::string_view comienzo, std::string_view final) {
    const std::size_t fin = pendiente_.find(final, desde + comienzo.size());
    return fin == kNada ? kNada : fin + final.size();
  };
  constexpr std::string_view kComentario = "<!--";
  constexpr std::string_view kLiteral = "<![CDATA[";
  if (marca.size() < 2) return kNada;
  if (marca[1] == '?') return hasta("<?", "?>");
  if (marca[1] != '!') return finEtiqueta(desde);
  if (marca.starts_with(kComentario)) return hasta(kComentario, "-->");
  if (marca.starts_with(kLiteral)) return hasta(kLiteral, "]]>");
  if (kComentario.starts_with(marca) || kLiteral.starts_with(marca)) return kNada;
  fallar("lleva una definición de tipo (DTD), que no se admite", desde);
}

std::size_t GuardaXml::finEtiqueta(std::size_t desde) {
  std::size_t p = desde;
  while ((p = pendiente_.find_first_of("\"'>", p)) != kNada && pendiente_[p] != '>') {
    p = pendiente_.find(pendiente_[p], p + 1);
    if (p == kNada) return kNada;
    ++p;
  }
  if (p == kNada) return kNada;
  if (pendiente_[desde + 1] == '/')
    --profundidad_;
  else if (pendiente_[p - 1] != '/' && ++profundidad_ > kMaxProfundidad)
    fallar("tiene más de " + std::to_string(kMaxProfundidad) + " elementos unos dentro de otros", desde);
  return p + 1;
}

void GuardaXml::comprobarLargo(std::size_t desde, std::size_t hasta) const {
  if (std::min(hasta, pendiente_.size()) - desde > kMaximo)
    fallar("tiene un texto de más de " + std::to_string(kMaximo >> 10) + " KB seguidos", desde);
}

void GuardaXml::fallar(const std::string& causa, std::size_t donde) const {
  throw FalloXml(ConLinea(lineas_ + Lineas(pendiente_, donde) + 1, causa));
}

QByteArray GuardaXml::entregar(std::size_t hasta) {
  const QByteArray bytes(pendiente_.data(), static_cast<qsizetype>(hasta));
  if (!bytes.isValidUtf8()) fallar("tiene bytes que no son UTF-8", PrimeroNoValido(bytes));
  lineas_ += Lineas(pendiente_, hasta);
  pendiente_.erase(0, hasta);
  return bytes;
}

}  // namespace iso20022
