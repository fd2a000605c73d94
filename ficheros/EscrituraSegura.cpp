#include "ficheros/EscrituraSegura.h"

#include <string>

#include "ficheros/FicheroTemporal.h"

namespace ficheros {
namespace {

constexpr std::size_t kReserva = 1 << 20;

}  // namespace

struct EscrituraSegura::Interior {
  explicit Interior(const std::filesystem::path& destino) : temporal(destino) { reserva.reserve(kReserva); }

  void vaciar() {
    temporal.escribir(reserva);
    reserva.clear();
  }

  FicheroTemporal temporal;
  std::string reserva;
};

EscrituraSegura::EscrituraSegura(const std::filesystem::path& destino)
    : interior_(std::make_unique<Interior>(destino)) {}

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

void EscrituraSegura::confirmar() {
  interior_->vaciar();
  interior_->temporal.publicar();
}

}  // namespace ficheros
