#include "comunes/plataforma/Sistema.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "ficheros/FicheroTemporal.h"

namespace comunes {

namespace {

const char* quien = "";

// Aquí no queda memoria que pedir.
[[noreturn]] void Morir() {
  ficheros::FicheroTemporal::BorrarPendientes();
  try {
    if (const auto causa = std::current_exception()) std::rethrow_exception(causa);
  } catch (const std::bad_alloc&) {
    std::fputs(quien, stderr);
    std::fputs(": Memoria insuficiente (error 7)\n", stderr);
    std::_Exit(EXIT_FAILURE);
  } catch (...) {
  }
  std::abort();
}

}  // namespace

void PrepararProceso(const char* programa) {
  quien = programa;
  std::set_terminate(Morir);
  PrepararSalidas();
}

}  // namespace comunes
