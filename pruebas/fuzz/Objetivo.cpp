#include "Objetivo.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

namespace fuzz {
namespace {

constexpr char kBlancos = '\x1F';
constexpr std::size_t kRegistro = 600;

/// Carpeta propia, que se borra al acabar. La temporal la elige TMPDIR.
class Carpeta {
 public:
  Carpeta() {
    do
      ruta_ = fs::temp_directory_path() / ("fuzz-" + std::to_string(std::random_device{}()));
    while (!fs::create_directory(ruta_));
  }
  ~Carpeta() {
    std::error_code ignorado;
    fs::remove_all(ruta_, ignorado);
  }
  Carpeta(const Carpeta&) = delete;
  Carpeta& operator=(const Carpeta&) = delete;
  const fs::path& ruta() const { return ruta_; }

 private:
  fs::path ruta_;
};

}  // namespace

void Exigir(bool cumplido, const char* que) {
  if (cumplido) return;
  std::fprintf(stderr, "No se cumple: %s\n", que);
  std::abort();
}

std::uint8_t Entrada::byte() {
  if (resto_.empty()) return 0;
  const auto valor = static_cast<std::uint8_t>(resto_.front());
  resto_.remove_prefix(1);
  return valor;
}

std::string_view Entrada::hasta(char separador) {
  const std::size_t fin = std::min(resto_.find(separador), resto_.size());
  const std::string_view parte = resto_.substr(0, fin);
  resto_.remove_prefix(std::min(fin + 1, resto_.size()));
  return parte;
}

std::string Desplegar(std::string_view breve) {
  std::string bytes;
  std::size_t linea = 0;  // dónde empieza
  for (std::size_t i = 0; i < breve.size(); ++i) {
    if (breve[i] == kBlancos && i + 1 < breve.size()) {
      const std::size_t hasta = linea + 4 * static_cast<std::size_t>(static_cast<unsigned char>(breve[++i]));
      if (bytes.size() < hasta) bytes.resize(hasta, ' ');
      continue;
    }
    bytes += breve[i];
    if (breve[i] == '\r' || breve[i] == '\n') linea = bytes.size();
  }
  return bytes;
}

std::vector<std::string> Lineas(std::string_view bytes) {
  std::vector<std::string> lineas;
  while (!bytes.empty()) {
    const std::size_t cr = bytes.find('\r');
    lineas.emplace_back(bytes.substr(0, cr));
    if (cr == std::string_view::npos) break;
    bytes.remove_prefix(cr + 1);
    if (bytes.starts_with('\n')) bytes.remove_prefix(1);
  }
  return lineas;
}

std::string Ajustado(std::string_view registro) {
  std::string bytes(registro.substr(0, kRegistro));
  bytes.resize(kRegistro, ' ');
  return bytes;
}

fs::path Ruta(std::string_view nombre) {
  static const Carpeta carpeta;
  return carpeta.ruta() / nombre;
}

void Escribir(const fs::path& ruta, std::string_view bytes) {
  std::ofstream(ruta, std::ios::binary) << bytes;
}

std::string Leer(const fs::path& ruta) {
  std::ifstream fichero(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(fichero), {}};
}

}  // namespace fuzz
