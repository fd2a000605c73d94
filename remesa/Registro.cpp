#include "remesa/Registro.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "ficheros/ErrorEjecucion.h"

namespace remesa {

using namespace std::string_view_literals;

std::string_view LeerCampo(std::string_view registro, Posiciones donde) {
  const auto desde = static_cast<std::size_t>(donde.desde - 1);
  if (desde >= registro.size()) return {};
  return registro.substr(desde, static_cast<std::size_t>(donde.longitud()));
}

std::string_view Recortar(std::string_view texto) {
  // De ocho en ocho: casi todo un registro son blancos.
  constexpr std::string_view kOcho = "        ";
  while (texto.ends_with(kOcho))
    texto.remove_suffix(kOcho.size());
  while (texto.ends_with(' '))
    texto.remove_suffix(1);
  while (texto.starts_with(' '))
    texto.remove_prefix(1);
  return texto;
}

bool EnBlanco(std::string_view bytes) {
  return bytes.find_first_not_of(" \t\x1A\0"sv) == std::string_view::npos;
}

void EscribirCampo(std::string& registro, Posiciones donde, std::string_view texto) {
  const auto desde = static_cast<std::size_t>(donde.desde - 1);
  if (desde >= registro.size()) throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido);
  const std::size_t largo =
      std::min({texto.size(), static_cast<std::size_t>(donde.longitud()), registro.size() - desde});
  texto.copy(registro.data() + desde, largo);
}

std::string Ceros(std::int32_t valor, int ancho) {
  const auto cifras = static_cast<std::size_t>(std::max(ancho, 0));
  const std::string texto = std::string(cifras, '0') + std::to_string(valor);
  return texto.substr(texto.size() - cifras);
}

std::string CifrasDe(std::int64_t valor, int ancho) {
  std::string cifras = std::to_string(valor);
  const auto largo = static_cast<std::size_t>(ancho);
  return cifras.size() < largo ? cifras.insert(0, largo - cifras.size(), '0') : cifras;
}

std::string FechaQ19(std::string_view fecha) {
  const std::string_view dia = fecha.substr(fecha.size() - std::min<std::size_t>(fecha.size(), 2));
  std::string resultado(dia);
  resultado += '/';
  resultado += LeerCampo(fecha, {5, 6});
  resultado += '/';
  resultado += LeerCampo(fecha, {1, 4});
  return resultado;
}

void AjustarLongitud(std::string& registro) {
  registro.resize(kLongitudRegistro, ' ');
}

std::string_view ComoSeGuarda(std::string_view registro, std::string& bufer) {
  if (registro.size() == kLongitudRegistro) return registro;
  bufer.assign(registro.substr(0, kLongitudRegistro));
  AjustarLongitud(bufer);
  return bufer;
}

double ValorNumerico(std::string_view texto) {
  std::size_t i = 0;
  while (i < texto.size() && (texto[i] == ' ' || texto[i] == '\t'))
    ++i;
  bool negativo = false;
  if (i < texto.size() && (texto[i] == '+' || texto[i] == '-')) negativo = texto[i++] == '-';
  const std::size_t inicio = i;
  const auto esCifra = [&] { return i < texto.size() && texto[i] >= '0' && texto[i] <= '9'; };
  std::uint64_t entero = 0;
  while (esCifra())
    entero = entero * 10 + static_cast<std::uint64_t>(texto[i++] - '0');
  const bool corto = i - inicio <= 15;  // exacto en un double
  if (i < texto.size() && texto[i] == '.') {
    ++i;
    while (esCifra())
      ++i;
  } else if (corto) {
    return negativo ? -static_cast<double>(entero) : static_cast<double>(entero);
  }
  double valor = 0;
  const auto [fin, error] =
      std::from_chars(texto.data() + inicio, texto.data() + i, valor, std::chars_format::fixed);
  if (error == std::errc::result_out_of_range) valor = HUGE_VAL;
  return negativo ? -valor : valor;
}

}  // namespace remesa
