#include "ficheros/FicheroTemporal.h"

#include <mutex>
#include <set>

namespace ficheros {
namespace {

std::mutex guarda;
std::set<FicheroTemporal*> pendientes;

}  // namespace

void FicheroTemporal::apuntar() {
  const std::scoped_lock turno(guarda);
  pendientes.insert(this);
}

void FicheroTemporal::olvidar() noexcept {
  const std::scoped_lock turno(guarda);
  pendientes.erase(this);
}

void FicheroTemporal::BorrarPendientes() noexcept {
  const std::scoped_lock turno(guarda);
  for (FicheroTemporal* temporal : pendientes)
    temporal->borrar();
}

}  // namespace ficheros
