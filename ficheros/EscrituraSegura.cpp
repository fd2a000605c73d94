#include "ficheros/EscrituraSegura.h"

#include <string>

namespace ficheros {
namespace {

constexpr std::size_t kReserva = 1 << 20;

}  // namespace

struct EscrituraSegura::Interior {
  Interior(const std::filesystem::path& destino, bool limpiar) : temporal(destino, limpiar) {
    reserva.reserve(kReserva);
  }

  void vaciar() {
    temporal.escribir(reserva);
    reserva.clear();
  }

  FicheroTemporal temporal;
  std::string reserva;
};

EscrituraSegura::EscrituraSegura(const std::filesystem::path& destino, bool limpiar)
    : interior_(std::make_unique<Interior>(destino, limpiar)) {}

EscrituraSegura::~EscrituraSegura() = default;

void EscrituraSegura::escribir(std::string_view bytes) {
  if (interior_->reserva.size() + bytes.size() > kReserva) interior_->vaciar();
  if (bytes.size() >= kReserva / 4 && interior_->reserva.empty())
    interior_->temporal.escribir(bytes);
  else
    interior_->reserva.append(bytes);
}

void EscrituraSegura::volcar() {
  interior_->vaciar();
  interior_->reserva = {};
  interior_->temporal.volcar();
}

void EscrituraSegura::confirmar(Colocacion como) {
  interior_->vaciar();
  interior_->temporal.publicar(como);
}

}  // namespace ficheros
