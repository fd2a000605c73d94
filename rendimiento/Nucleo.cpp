#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "remesa/Adeudos.h"
#include "remesa/Campos.h"
#include "remesa/Fichero.h"
#include "remesa/Fusion.h"
#include "remesa/Guardado.h"
#include "remesa/Observaciones.h"

// Medidas del núcleo. Los datos se hacen aquí y se borran al acabar.

namespace {

using namespace remesa;

class Datos {
 public:
  explicit Datos(std::size_t adeudos)
      : ruta_(std::filesystem::temp_directory_path() / ("medida-" + std::to_string(::getpid()) + ".Q19")) {
    std::ofstream salida(ruta_, std::ios::binary);
    const auto linea = [&](std::string registro) {
      registro.resize(kLongitudRegistro, ' ');
      salida << registro << "\r\n";
    };
    linea("0119143001");
    linea("0219143002");
    std::string adeudo("0319143003");
    adeudo.resize(kLongitudRegistro, ' ');
    for (std::size_t i = 0; i < adeudos; ++i) {
      sobrescribir(adeudo, kReferenciaAdeudo, Ceros(static_cast<std::int32_t>(i), 12));
      sobrescribir(adeudo, kImporteAdeudo, Ceros(static_cast<std::int32_t>(i % 2000), 11));
      linea(adeudo);
    }
    for (const char* codigo : {"04", "05", "99"})
      linea(codigo);
  }
  ~Datos() {
    std::error_code ignorado;
    std::filesystem::remove(ruta_, ignorado);
  }
  Datos(const Datos&) = delete;
  Datos& operator=(const Datos&) = delete;
  const std::filesystem::path& ruta() const { return ruta_; }

 private:
  std::filesystem::path ruta_;
};

ListaRegistros Leida(std::size_t adeudos) {
  return LeerFichero(Datos(adeudos).ruta());
}

/// Leer el fichero entero en memoria nueva, sin más: con lo que se compara la carga.
void LecturaCruda(benchmark::State& estado) {
  const Datos datos(static_cast<std::size_t>(estado.range(0)));
  const auto total = std::filesystem::file_size(datos.ruta());
  for (auto _ : estado) {
    const auto memoria = std::make_unique_for_overwrite<char[]>(total);
    const int fd = ::open(datos.ruta().c_str(), O_RDONLY | O_CLOEXEC);
    std::size_t leidos = 0;
    for (ssize_t n = 1; n > 0 && leidos < total; leidos += static_cast<std::size_t>(n))
      n = ::read(fd, memoria.get() + leidos, total - leidos);
    ::close(fd);
    benchmark::DoNotOptimize(memoria.get());
  }
}
BENCHMARK(LecturaCruda)->Arg(100'000)->Unit(benchmark::kMillisecond);

void Carga(benchmark::State& estado) {
  const Datos datos(static_cast<std::size_t>(estado.range(0)));
  for (auto _ : estado)
    benchmark::DoNotOptimize(LeerFichero(datos.ruta()));
}
BENCHMARK(Carga)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void ResumenDeLoPrevisto(benchmark::State& estado) {
  const ListaRegistros lista = Leida(static_cast<std::size_t>(estado.range(0)));
  for (auto _ : estado)
    benchmark::DoNotOptimize(Resumir(lista, true));
}
BENCHMARK(ResumenDeLoPrevisto)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Importar 100 000 adeudos en la acumulación, con el recálculo y el resumen.
void Importacion(benchmark::State& estado) {
  const ListaRegistros inicial = Leida(static_cast<std::size_t>(estado.range(0)));
  const ListaRegistros previo = Leida(100'000);
  for (auto _ : estado) {
    estado.PauseTiming();
    ListaRegistros acumulado = inicial;
    estado.ResumeTiming();
    Resumen resumen;
    Importar(acumulado, previo);
    RecalcularTotales(acumulado, &resumen);
    benchmark::DoNotOptimize(resumen);
  }
}
BENCHMARK(Importacion)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Insercion(benchmark::State& estado) {
  ListaRegistros acumulado = Leida(static_cast<std::size_t>(estado.range(0)));
  for (auto _ : estado) {
    Resumen resumen;
    InsertarCopia(acumulado, 2);
    RecalcularTotales(acumulado, &resumen);
    benchmark::DoNotOptimize(resumen);
  }
}
BENCHMARK(Insercion)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Eliminar uno de cada cien adeudos, dispersos: diez mil en un millón.
void Eliminacion(benchmark::State& estado) {
  const ListaRegistros inicial = Leida(static_cast<std::size_t>(estado.range(0)));
  std::vector<std::size_t> seleccion;
  for (std::size_t i = 2; i + 3 < inicial.size(); i += 100)
    seleccion.push_back(i);
  for (auto _ : estado) {
    estado.PauseTiming();
    ListaRegistros acumulado = inicial;
    estado.ResumeTiming();
    Resumen resumen;
    PuedeEliminar(acumulado, seleccion);
    EliminarAdeudos(acumulado, seleccion);
    RecalcularTotales(acumulado, &resumen);
    benchmark::DoNotOptimize(resumen);
  }
}
BENCHMARK(Eliminacion)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Guardar(benchmark::State& estado) {
  const ListaRegistros lista = Leida(static_cast<std::size_t>(estado.range(0)));
  const Datos destino(0);
  for (auto _ : estado)
    GuardarRemesa(destino.ruta(), lista);
}
BENCHMARK(Guardar)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
