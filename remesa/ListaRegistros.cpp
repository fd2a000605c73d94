#include "remesa/ListaRegistros.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace remesa {

void ListaRegistros::clear() {
  *this = {};
}

void ListaRegistros::anadirBloque(Bloque bloque, std::vector<std::string_view> registros) {
  if (registros_.empty())
    registros_ = std::move(registros);
  else
    registros_.insert(registros_.end(), registros.begin(), registros.end());
  guardarBloque(std::move(bloque));
}

void ListaRegistros::anadir(std::string_view bytes) {
  registros_.emplace_back();
  sustituir(registros_.size() - 1, bytes);
}

void ListaRegistros::anadirDe(const ListaRegistros& otra, std::span<const std::size_t> indices) {
  registros_.reserve(registros_.size() + indices.size());  // con ello `otra` puede ser esta misma
  for (const std::size_t i : indices)
    registros_.push_back(otra.registros_[i]);
  if (&otra == this) return;
  bloques_.insert(bloques_.end(), otra.bloques_.begin(), otra.bloques_.end());
  if (bloques_.size() > limiteBloques_) soltarBloquesMuertos();
}

void ListaRegistros::sustituir(std::size_t i, std::string_view bytes) {
  char* donde = bytes.empty() ? nullptr : reservar(bytes.size());
  bytes.copy(donde, bytes.size());
  registros_[i] = {donde, bytes.size()};
}

char* ListaRegistros::reservar(std::size_t largo) {
  constexpr std::size_t kPrimero = std::size_t{4} << 10;
  constexpr std::size_t kMayor = std::size_t{256} << 10;
  if (sueltos_) {
    const std::size_t desde = sueltos_->usado.fetch_add(largo);
    if (desde + largo <= sueltos_->largo) return sueltos_->datos.get() + desde;
  }
  const std::size_t siguiente = sueltos_ ? std::min(2 * sueltos_->largo, kMayor) : kPrimero;
  auto nuevo = std::make_shared<Sueltos>();
  nuevo->largo = std::max(siguiente, largo);
  nuevo->datos = std::make_shared_for_overwrite<char[]>(nuevo->largo);
  nuevo->usado = largo;
  // Antes de añadirlo: aún no lo mira nadie.
  if (bloques_.size() >= limiteBloques_) soltarBloquesMuertos();
  bloques_.push_back({nuevo->datos, nuevo->largo});
  sueltos_ = std::move(nuevo);
  return sueltos_->datos.get();
}

std::size_t ListaRegistros::memoria() const noexcept {
  return registros_.capacity() * sizeof(std::string_view) + bloques_.capacity() * sizeof(Bloque);
}

void ListaRegistros::ajustarMemoria() {
  if (registros_.capacity() - registros_.size() > registros_.size() / 8) registros_.shrink_to_fit();
  bloques_.shrink_to_fit();
}

bool ListaRegistros::operator==(const ListaRegistros& otra) const noexcept {
  return std::ranges::equal(registros_, otra.registros_, [](std::string_view uno, std::string_view otro) {
    return uno.size() == otro.size() && (uno.data() == otro.data() || uno == otro);
  });
}

void ListaRegistros::duplicar(std::size_t i, std::size_t donde) {
  const std::string_view registro = registros_[i];
  registros_.insert(registros_.begin() + static_cast<std::ptrdiff_t>(donde), registro);
}

void ListaRegistros::quitar(std::span<const std::size_t> indices) {
  if (indices.empty()) return;
  std::size_t destino = indices.front();
  std::size_t siguiente = 0;
  for (std::size_t i = destino; i < registros_.size(); ++i) {
    if (siguiente < indices.size() && indices[siguiente] == i)
      ++siguiente;
    else
      registros_[destino++] = registros_[i];
  }
  registros_.resize(destino);
  soltarBloquesMuertos();
}

void ListaRegistros::elegir(std::span<const std::size_t> indices) {
  std::vector<std::string_view> elegidos;
  elegidos.reserve(indices.size());
  for (const std::size_t i : indices)
    elegidos.push_back(registros_[i]);
  registros_ = std::move(elegidos);
  soltarBloquesMuertos();
}

void ListaRegistros::guardarBloque(Bloque bloque) {
  bloques_.push_back(std::move(bloque));
  if (bloques_.size() > limiteBloques_) soltarBloquesMuertos();
}

// Un bloque no sabe quién lo mira: se averigua en un recorrido. Registros seguidos suelen estar en el mismo
// bloque, así que casi siempre basta con mirar el último encontrado.
void ListaRegistros::soltarBloquesMuertos() {
  const std::less<> antes;
  const auto inicio = [](const Bloque& bloque) { return bloque.datos.get(); };
  std::ranges::sort(bloques_, antes, inicio);
  const auto mismo = [&](const Bloque& a, const Bloque& b) { return inicio(a) == inicio(b); };
  bloques_.erase(std::unique(bloques_.begin(), bloques_.end(), mismo), bloques_.end());

  std::vector<bool> vivo(bloques_.size());
  const char* desde = nullptr;
  const char* hasta = nullptr;
  for (std::string_view& registro : registros_) {
    if (registro.empty()) {
      registro = {};
      continue;
    }
    if (!antes(registro.data(), desde) && antes(registro.data(), hasta)) continue;
    const auto siguiente = std::ranges::upper_bound(bloques_, registro.data(), antes, inicio);
    const auto cual = static_cast<std::size_t>(siguiente - bloques_.begin()) - 1;
    vivo[cual] = true;
    desde = inicio(bloques_[cual]);
    hasta = desde + bloques_[cual].largo;
  }
  std::size_t quedan = 0;
  for (std::size_t i = 0; i < bloques_.size(); ++i)
    if (vivo[i] && quedan++ != i) bloques_[quedan - 1] = std::move(bloques_[i]);
  bloques_.resize(quedan);
  // Sin nadie que lo mire, el que se estaba llenando se ha soltado.
  if (sueltos_ && !std::ranges::binary_search(bloques_, sueltos_->datos.get(), antes, inicio))
    sueltos_.reset();
  limiteBloques_ = std::max(kBloquesMinimos, 2 * quedan);
}

}  // namespace remesa
