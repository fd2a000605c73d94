#include "remesa/Guardado.h"

#include <chrono>
#include <future>
#include <string>

#include "remesa/FicheroTemporal.h"
#include "remesa/Registro.h"

namespace remesa {
namespace {

constexpr std::size_t kReserva = 1 << 20;
constexpr std::size_t kCadaAvance = 4096;
constexpr std::chrono::milliseconds kCadaEspera{50};

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

void EscrituraSegura::confirmar() {
  interior_->vaciar();
  interior_->temporal.publicar();
}

void GuardarRemesa(const std::filesystem::path& destino, const ListaRegistros& lista,
                   const AvanceGuardado& avance) {
  EscrituraSegura salida(destino);
  std::string linea;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    linea.assign(lista[i].substr(0, kLongitudRegistro)).resize(kLongitudRegistro, ' ');
    salida.escribir(linea.append("\r\n"));
    if (avance && (i + 1) % kCadaAvance == 0) avance(i + 1, lista.size());
  }
  if (!avance) return salida.confirmar();
  // Llevarlo al disco puede durar más que escribirlo: mientras, quien espera puede atender a lo suyo.
  auto fin = std::async(std::launch::async | std::launch::deferred, [&salida] { salida.confirmar(); });
  while (fin.wait_for(kCadaEspera) == std::future_status::timeout)
    avance(lista.size(), lista.size());
  fin.get();
  avance(lista.size(), lista.size());
}

}  // namespace remesa
