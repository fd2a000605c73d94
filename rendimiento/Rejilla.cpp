// La rejilla: cada operación ha de quedar muy por debajo de un segundo con 100.000 filas y crecer con ellas,
// no con su cuadrado.
#include "comunes/rejilla/Rejilla.h"

#include <benchmark/benchmark.h>

#include "comunes/rejilla/Importe.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"
#include "comunes/rejilla/Subtotales.h"

using namespace comunes;

namespace {

using namespace Qt::StringLiterals;

void llenar(Rejilla& rejilla, int filas) {
  PrepararRejilla(rejilla, u"Nombre#25;Importe#8>;IBAN#25=;Concepto#30;Referencia#10<"_s);
  rejilla.PonerTag(u" IF"_s);
  for (int i = 1; i <= filas; ++i) {
    const int mezclado = static_cast<int>(i * 7919LL % filas);
    // Dos filas de cada nombre: la mitad de grupos que de filas.
    PonerCelda(rejilla, i, 0, u"DEUDOR %1"_s.arg(mezclado / 2, 6, 10, QChar(u'0')));
    PonerCelda(rejilla, i, 1, FormatoCelda(Diezmilesimas{mezclado} * 100 + 100));
    PonerCelda(rejilla, i, 2, u"%1/%2/2026"_s.arg(1 + i % 28, 2).arg(1 + i % 12));
    PonerCelda(rejilla, i, 3, u"CUOTA MENSUAL DE MANTENIMIENTO"_s);
    PonerCelda(rejilla, i, 4, QString::number(i));
  }
}

int Filas(const benchmark::State& estado) {
  return static_cast<int>(estado.range(0));
}

void Llenar(benchmark::State& estado) {
  for (auto _ : estado) {
    Rejilla rejilla;
    llenar(rejilla, Filas(estado));
    benchmark::DoNotOptimize(rejilla.Rows());
  }
}

void Ordenar(benchmark::State& estado, int columna) {
  for (auto _ : estado) {
    estado.PauseTiming();
    Rejilla rejilla;
    llenar(rejilla, Filas(estado));
    estado.ResumeTiming();
    OrdenarColumna(rejilla, columna);
  }
}

void SubtotalesPorNombre(benchmark::State& estado) {
  for (auto _ : estado) {
    estado.PauseTiming();
    Rejilla rejilla;
    llenar(rejilla, Filas(estado));
    estado.ResumeTiming();
    Subtotales(u"Nombre"_s, rejilla, u"Suma ?"_s, {}, {}, {u"Importe"_s});
    Subtotales(u"Nombre"_s, rejilla, u"Suma ?"_s, {}, u"NOSORT"_s, {u"Importe"_s});
  }
}

void SumarImportes(benchmark::State& estado) {
  Rejilla rejilla;
  llenar(rejilla, Filas(estado));
  for (auto _ : estado)
    benchmark::DoNotOptimize(SumarColumna(rejilla, 1, 1, Filas(estado)));
}

void Tamanos(benchmark::internal::Benchmark* medida) {
  medida->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->MinTime(0.3)->Unit(
      benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(Llenar)->Name("Rejilla: llenar")->Apply(Tamanos);
BENCHMARK_CAPTURE(Ordenar, texto, 0)->Name("Rejilla: ordenar por texto")->Apply(Tamanos);
BENCHMARK_CAPTURE(Ordenar, importe, 1)->Name("Rejilla: ordenar por importe")->Apply(Tamanos);
BENCHMARK_CAPTURE(Ordenar, fecha, 2)->Name("Rejilla: ordenar por fecha")->Apply(Tamanos);
BENCHMARK(SubtotalesPorNombre)->Name("Rejilla: subtotales por nombre")->Apply(Tamanos);
BENCHMARK(SumarImportes)->Name("Rejilla: sumar una columna")->Apply(Tamanos);
