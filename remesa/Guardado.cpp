#include "remesa/Guardado.h"

#include <chrono>
#include <future>
#include <string>

#include "ficheros/EscrituraSegura.h"
#include "remesa/Registro.h"

namespace remesa {
namespace {

constexpr std::size_t kCadaAvance = 4096;
constexpr std::chrono::milliseconds kCadaEspera{50};

}  // namespace

void GuardarRemesa(const std::filesystem::path& destino, const ListaRegistros& lista,
                   const AvanceGuardado& avance) {
  ficheros::EscrituraSegura salida(destino);
  std::string rehecho;  // cppcheck-suppress variableScope ; fuera del bucle, aprovecha su memoria
  for (std::size_t i = 0; i < lista.size(); ++i) {
    salida.escribir(ComoSeGuarda(lista[i], rehecho));
    salida.escribir("\r\n");
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
