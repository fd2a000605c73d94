#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "ficheros/Lectura.h"
#include "remesa/Adeudos.h"
#include "remesa/Busqueda.h"
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
    EscribirCampo(adeudo, kNombreDeudor, "GARCIA LOPEZ, MARIA DE LA LUZ");
    EscribirCampo(adeudo, kConcepto, "CUOTA DE NOVIEMBRE DE 2026");
    for (std::size_t i = 0; i < adeudos; ++i) {
      EscribirCampo(adeudo, kCuentaDeudor,
                    "ES91" + Ceros(static_cast<std::int32_t>(i * 7919 % 1'000'000'007), 20));
      EscribirCampo(adeudo, kReferenciaAdeudo, Ceros(static_cast<std::int32_t>(i), 12));
      EscribirCampo(adeudo, kImporteAdeudo, Ceros(static_cast<std::int32_t>(i % 2000), 11));
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

std::size_t Registros(const benchmark::State& estado) {
  return static_cast<std::size_t>(estado.range(0));
}

/// Leer el fichero entero en memoria nueva, sin más: con lo que se compara la carga.
void LecturaCruda(benchmark::State& estado) {
  const Datos datos(Registros(estado));
  const auto total = std::filesystem::file_size(datos.ruta());
  for (auto _ : estado) {
    ficheros::LecturaFichero fichero(datos.ruta());
    const auto memoria = std::make_unique_for_overwrite<char[]>(total);
    benchmark::DoNotOptimize(fichero.leer({memoria.get(), total}));
  }
}

void Carga(benchmark::State& estado) {
  const Datos datos(Registros(estado));
  for (auto _ : estado)
    benchmark::DoNotOptimize(LeerFichero(datos.ruta()));
}

void ResumenDeLoPrevisto(benchmark::State& estado) {
  const ListaRegistros lista = Leida(Registros(estado));
  for (auto _ : estado)
    benchmark::DoNotOptimize(Resumir(lista, true));
}

/// Importar otros tantos registros en una acumulación, con el recálculo y el resumen.
void Importacion(benchmark::State& estado) {
  const ListaRegistros inicial = Leida(Registros(estado));
  const ListaRegistros previo = Leida(Registros(estado));
  for (auto _ : estado) {
    estado.PauseTiming();
    ListaRegistros acumulado = inicial;
    estado.ResumeTiming();
    Resumen resumen;
    Importar(acumulado, previo);
    RecalcularYResumir(acumulado, resumen);
    benchmark::DoNotOptimize(resumen);
  }
}

void Insercion(benchmark::State& estado) {
  ListaRegistros acumulado = Leida(Registros(estado));
  for (auto _ : estado) {
    Resumen resumen;
    InsertarCopia(acumulado, 2);
    RecalcularYResumir(acumulado, resumen);
    benchmark::DoNotOptimize(resumen);
  }
}

/// Eliminar uno de cada cien adeudos, dispersos.
void Eliminacion(benchmark::State& estado) {
  const ListaRegistros inicial = Leida(Registros(estado));
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
    RecalcularYResumir(acumulado, resumen);
    benchmark::DoNotOptimize(resumen);
  }
}

/// Sumar los bytes de los registros, sin más: con lo que se compara buscar en ellos.
void Recorrido(benchmark::State& estado) {
  const ListaRegistros lista = Leida(Registros(estado));
  for (auto _ : estado) {
    unsigned suma = 0;
    for (const std::string_view registro : lista)
      for (const char c : registro)
        suma += static_cast<unsigned char>(c);
    benchmark::DoNotOptimize(suma);
  }
}

void Buscar(benchmark::State& estado, const Busqueda& busqueda) {
  const ListaRegistros lista = Leida(Registros(estado));
  for (auto _ : estado)
    benchmark::DoNotOptimize(std::ranges::count_if(
        lista, [&](std::string_view registro) { return busqueda.en(registro).has_value(); }));
}

void Guardado(benchmark::State& estado) {
  const ListaRegistros lista = Leida(Registros(estado));
  const Datos destino(0);
  for (auto _ : estado)
    GuardarRemesa(destino.ruta(), lista);
}

void Tamanos(benchmark::internal::Benchmark* medida) {
  medida->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->MinTime(0.3)->Unit(
      benchmark::kMillisecond);
}

BENCHMARK(LecturaCruda)->Name("Leer un fichero, sin más")->Apply(Tamanos);
BENCHMARK(Carga)->Name("Cargar un fichero")->Apply(Tamanos);
BENCHMARK(ResumenDeLoPrevisto)->Name("Resumir lo cargado")->Apply(Tamanos);
BENCHMARK(Importacion)->Name("Importar otros tantos")->Apply(Tamanos);
BENCHMARK(Insercion)->Name("Insertar uno y recalcular")->Apply(Tamanos);
BENCHMARK(Eliminacion)->Name("Eliminar uno de cada cien y recalcular")->Apply(Tamanos);
BENCHMARK(Recorrido)->Name("Recorrer los bytes, sin más")->Apply(Tamanos);
BENCHMARK_CAPTURE(Buscar, "un nombre",
                  Busqueda("nu\xF1"
                           "ez"))
    ->Name("Buscar un nombre")
    ->Apply(Tamanos);
BENCHMARK_CAPTURE(Buscar, "una cuenta", Busqueda("ES91 0000 0000 0300 0792"))
    ->Name("Buscar una cuenta")
    ->Apply(Tamanos);
BENCHMARK_CAPTURE(Buscar, "un importe", Busqueda("52,10", 5210))->Name("Buscar un importe")->Apply(Tamanos);
BENCHMARK(Guardado)->Name("Guardar")->Apply(Tamanos);

}  // namespace
