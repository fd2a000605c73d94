#include "ventanas/principal/Veredicto.h"

#include <exception>
#include <system_error>
#include <utility>

namespace principal {

Veredicto::Veredicto(remesa::ListaRegistros lista, remesa::Dia hoy, std::uint64_t fila) {
  auto comprobar = [this, hoy, fila, lista = std::move(lista)](const std::stop_token& parar) mutable {
    try {
      const auto recibir = [&](remesa::Hallazgo&& hallazgo) {
        if (fila != 0 && hallazgo.fila == fila) hallazgos_.push_back(std::move(hallazgo));
      };
      resultado_ = remesa::ComprobarLista(lista, hoy, recibir, true,
                                          [&](auto, auto) { return !parar.stop_requested(); });
    } catch (const std::exception&) {
      resultado_.reset();
    }
    lista.clear();  // puede ser la última que tenga esos bytes: que no los suelte quien espere
    listo_ = true;
    QMetaObject::invokeMethod(this, &Veredicto::entregar, Qt::QueuedConnection);
  };
  try {
    hilo_ = std::jthread(std::move(comprobar));
  } catch (const std::system_error&) {
    listo_ = true;  // no hay más hilos
  }
}

void Veredicto::parar() {
  contar_ = {};
  hilo_.request_stop();
}

void Veredicto::alLlegar(std::function<void(const Resultado&)> contar) {
  contar_ = std::move(contar);
  if (listo_) entregar();
}

void Veredicto::entregar() {
  if (const auto contar = std::exchange(contar_, {})) contar(resultado_);
}

}  // namespace principal
