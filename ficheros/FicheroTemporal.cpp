#include "ficheros/FicheroTemporal.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace ficheros {
namespace {

std::mutex guarda;
std::vector<FicheroTemporal*> pendientes;

}  // namespace

void FicheroTemporal::apuntar() {
  const std::scoped_lock turno(guarda);
  pendientes.push_back(this);
}

void FicheroTemporal::olvidar() noexcept {
  const std::scoped_lock turno(guarda);
  pendientes.erase(std::remove(pendientes.begin(), pendientes.end(), this), pendientes.end());
}

void FicheroTemporal::BorrarPendientes() noexcept {
  const std::scoped_lock turno(guarda);
  for (FicheroTemporal* temporal : pendientes)
    temporal->borrar();
}

}  // namespace ficheros
