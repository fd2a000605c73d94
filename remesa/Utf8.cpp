#include "remesa/Utf8.h"

#include <algorithm>
#include <cstring>

#include "remesa/Registro.h"

namespace remesa {
namespace {

constexpr char kFueraDeLatin1 = '\xBF';  // ¿

bool EsAlto(char c) {
  return static_cast<unsigned char>(c) >= 0x80;
}

bool EsContinuacion(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Bytes del carácter que empieza por `c`; 0 si ninguno empieza así.
std::size_t Largo(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x80) return 1;
  if (byte >= 0xC2 && byte <= 0xDF) return 2;
  if (byte >= 0xE0 && byte <= 0xEF) return 3;
  return byte >= 0xF0 && byte <= 0xF4 ? 4 : 0;
}

std::string_view PrimeraPalabra(std::string_view bytes) {
  const auto alto = static_cast<std::size_t>(std::ranges::find_if(bytes, EsAlto) - bytes.begin());
  const std::size_t blanco = bytes.rfind(' ', alto);
  const std::size_t desde = blanco == std::string_view::npos ? 0 : blanco + 1;
  return bytes.substr(desde, std::min(bytes.find(' ', alto), bytes.size()) - desde);
}

}  // namespace

bool TieneAltos(std::string_view bytes) {
  constexpr std::uint64_t kAltos = 0x8080808080808080;
  std::uint64_t juntos = 0, ocho = 0;
  while (bytes.size() >= sizeof ocho) {
    std::memcpy(&ocho, bytes.data(), sizeof ocho);
    juntos |= ocho;
    bytes.remove_prefix(sizeof ocho);
  }
  ocho = 0;
  if (!bytes.empty()) std::memcpy(&ocho, bytes.data(), bytes.size());
  return ((juntos | ocho) & kAltos) != 0;
}

bool EsUtf8(std::string_view bytes, bool cortado) {
  bool alguno = false;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t largo = Largo(bytes[i]);
    if (largo == 0) return false;
    const std::string_view siguen = bytes.substr(i + 1, largo - 1);
    if (!std::ranges::all_of(siguen, EsContinuacion)) return false;
    if (siguen.size() + 1 < largo && !cortado) return false;
    alguno = alguno || largo > 1;
    i += largo;
  }
  return alguno;
}

std::size_t CaracteresUtf8(std::string_view bytes) {
  return static_cast<std::size_t>(std::ranges::count_if(bytes, [](char c) { return !EsContinuacion(c); }));
}

std::string DesdeUtf8(std::string_view bytes) {
  std::string texto;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t largo = std::max(Largo(bytes[i]), std::size_t{1});
    if (i + largo > bytes.size()) break;
    // En Latin-1 acaban los de dos bytes que empiezan por C2 y por C3.
    const auto primero = static_cast<unsigned char>(bytes[i]);
    if (largo == 1)
      texto += bytes[i];
    else if (primero <= 0xC3)
      texto += static_cast<char>(primero << 6 | (static_cast<unsigned char>(bytes[i + 1]) & 0x3F));
    else
      texto += kFueraDeLatin1;
    i += largo;
  }
  return texto;
}

bool LeerUtf8(std::string_view bytes, std::uint64_t longitud, RegistroUtf8& leido) {
  bytes = bytes.substr(0, kRegistroUtf8);
  if (!TieneAltos(bytes) || !EsUtf8(bytes, longitud > bytes.size())) return false;
  leido.palabra = DesdeUtf8(PrimeraPalabra(bytes));
  leido.longitud = longitud;
  leido.bytes.clear();
  if (longitud == kLongitudRegistro) return true;
  leido.longitud = longitud - (bytes.size() - CaracteresUtf8(bytes));
  leido.bytes = DesdeUtf8(bytes).substr(0, kLongitudRegistro);
  return true;
}

}  // namespace remesa
