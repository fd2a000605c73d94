#include "ventanas/principal/HiloSuelto.h"

#include <chrono>
#include <exception>
#include <system_error>
#include <thread>

namespace principal {

bool HiloSuelto::empezar(std::function<void(const Seguir&)> trabajo) {
  dejar();
  auto marcas = std::make_shared<Marcas>();
  try {
    std::thread([marcas, trabajo = std::move(trabajo)] {
      try {
        trabajo([&marcas] { return !marcas->dejado; });
      } catch (const std::exception&) {
        // Quien lo empezó verá que no hay resultado.
      }
      marcas->acabado = true;
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  marcas_ = std::move(marcas);
  return true;
}

void HiloSuelto::dejar() {
  if (marcas_) marcas_->dejado = true;
  marcas_.reset();
}

void HiloSuelto::dejarDelTodo() {
  using namespace std::chrono_literals;
  constexpr int kVeces = 50;
  const std::shared_ptr<const Marcas> marcas = marcas_;
  dejar();
  for (int i = 0; marcas && !marcas->acabado && i < kVeces; ++i)
    std::this_thread::sleep_for(10ms);
}

}  // namespace principal
