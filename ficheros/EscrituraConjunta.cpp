#include "ficheros/EscrituraConjunta.h"

#include <utility>

#include "ficheros/Enlaces.h"
#include "ficheros/ErrorEjecucion.h"

namespace ficheros {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSufijo = ".unirq19-anterior";
constexpr std::size_t kMuchos = 200;

}  // namespace

EscrituraConjunta::~EscrituraConjunta() = default;

EscrituraSegura& EscrituraConjunta::anadir(const fs::path& destino) {
  std::error_code error;
  if (!sustituir_ && fs::exists(fs::symlink_status(destino, error))) throw ErrorEjecucion(kYaExiste, destino);
  if (partes_.size() == kMuchos) FicheroTemporal::PermitirMuchos();
  const bool otraCarpeta = partes_.empty() || partes_.back().destino.parent_path() != destino.parent_path();
  partes_.push_back({destino, std::make_unique<EscrituraSegura>(destino, otraCarpeta)});
  return *partes_.back().escritura;
}

void EscrituraConjunta::confirmar() {
  // Casi todo lo que puede fallar, falla aquí: sin sitio en el disco no se toca ninguno.
  for (Parte& parte : partes_)
    parte.escritura->volcar();
  try {
    for (std::size_t i = 0; i < partes_.size(); ++i) {
      Parte& parte = partes_[i];
      respaldar(parte);
      const bool ultima =
          i + 1 == partes_.size() || partes_[i + 1].destino.parent_path() != parte.destino.parent_path();
      parte.escritura->confirmar({.sustituir = sustituir_, .volcarCarpeta = ultima});
      parte.publicado = true;
    }
  } catch (...) {
    deshacer();
    throw;
  }
  std::error_code ignorado;
  for (const Parte& parte : partes_)
    if (!parte.respaldo.empty()) fs::remove(parte.respaldo, ignorado);
}

void EscrituraConjunta::respaldar(Parte& parte) {
  std::error_code error;
  parte.real = SeguirEnlaces(parte.destino);
  if (!sustituir_ || partes_.size() == 1 || !fs::exists(parte.real, error)) return;
  fs::path respaldo = parte.real.parent_path() / fs::path(".").concat(parte.real.filename().native());
  respaldo += kSufijo;
  fs::remove(respaldo, error);
  // Otro nombre del mismo fichero no ocupa; donde no los hay, una copia.
  fs::create_hard_link(parte.real, respaldo, error);
  if (error) fs::copy_file(parte.real, respaldo, error);
  if (error) throw ErrorEjecucion(error, parte.destino);
  parte.respaldo = std::move(respaldo);
}

void EscrituraConjunta::deshacer() noexcept {
  std::error_code ignorado;
  for (const Parte& parte : partes_) {
    if (parte.publicado && parte.respaldo.empty())
      fs::remove(parte.real, ignorado);
    else if (parte.publicado)
      fs::rename(parte.respaldo, parte.real, ignorado);
    else if (!parte.respaldo.empty())
      fs::remove(parte.respaldo, ignorado);
  }
}

}  // namespace ficheros
