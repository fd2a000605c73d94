#include "remesa/CaracteresSEPA.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace remesa {
namespace {

constexpr auto Tabla() {
  std::array<char, 256> tabla{};
  const auto poner = [&](std::string_view caracteres, char equivalente) {
    for (const char c : caracteres)
      tabla[static_cast<std::uint8_t>(c)] = equivalente;
  };
  tabla.fill('.');
  for (std::size_t control = 0; control < 0x20; ++control)
    tabla[control] = ' ';
  for (const char c :
       std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-?:().,'+ "))
    poner({&c, 1}, c);
  constexpr std::pair<char, std::string_view> kPares[] = {
      {'A', "\xC0\xC1\xC2\xC3\xC4\xC5\xC6"},
      {'C', "\xC7"},
      {'D', "\xD0"},
      {'E', "\xC8\xC9\xCA\xCB\x80"},  // el euro también
      {'I', "\xCC\xCD\xCE\xCF"},
      {'N', "\xD1"},
      {'O', "\xD2\xD3\xD4\xD5\xD6\xD8\x8C"},
      {'S', "\x8A"},
      {'U', "\xD9\xDA\xDB\xDC"},
      {'Y', "\xDD\x9F"},
      {'Z', "\x8E"},
      {'a', "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xAA"},
      {'b', "\xDE"},
      {'c', "\xE7"},
      {'d', "\xF0"},
      {'e', "\xE8\xE9\xEA\xEB"},
      {'i', "\xEC\xED\xEE\xEF"},
      {'n', "\xF1"},
      {'o', "\xF2\xF3\xF4\xF5\xF6\xF8\x9C\xBA\xB0"},
      {'p', "\xFE"},
      {'s', "\x9A\xDF"},
      {'u', "\xF9\xFA\xFB\xFC"},
      {'y', "\xFD\xFF"},
      {'z', "\x9E"},
      {'1', "\xB9"},
      {'2', "\xB2"},
      {'3', "\xB3"},
      {'+', "&"},
      {',', ";"},
      {'(', "[{"},
      {')', "]}"},
      {'/', "\\|"},
      {'-', "_~\x96\x97\xAD"},
      {'?', "\xBF"},
      {'\'', "\"`\xB4\x82\x84\x8B\x91\x92\x93\x94\x9B\xAB\xBB"},
      {' ', "\xA0"},
  };
  for (const auto& [equivalente, caracteres] : kPares)
    poner(caracteres, equivalente);
  return tabla;
}

}  // namespace

constinit const std::array<char, 256> kEquivalentesSEPA = Tabla();

std::string EquivalenteSEPA(std::string_view texto) {
  std::string resultado(texto);
  for (char& c : resultado)
    c = EquivalenteSEPA(c);
  return resultado;
}

}  // namespace remesa
