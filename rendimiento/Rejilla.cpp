// La rejilla con 100.000 filas: cada operación ha de quedar muy por debajo de un segundo y crecer con las
// filas, no con su cuadrado.
#include "comunes/rejilla/Rejilla.h"

#include <benchmark/benchmark.h>

#include "comunes/rejilla/Importe.h"
#include "comunes/rejilla/MiVisor.h"

using namespace comunes;

namespace {

void llenar(Rejilla& rejilla, int filas) {
  PrepararRejilla(rejilla, QStringLiteral("Nombre#25;Importe#8>;IBAN#25=;Concepto#30;Referencia#10<"));
  rejilla.PonerTag(QStringLiteral(" IF"));
  for (int i = 1; i <= filas; ++i) {
    const int mezclado = static_cast<int>(i * 7919LL % filas);
    // Dos filas de cada nombre: la mitad de grupos que de filas.
    PonerCelda(rejilla, i, 0, QStringLiteral("DEUDOR %1").arg(mezclado / 2, 6, 10, QLatin1Char('0')));
    PonerCelda(rejilla, i, 1, FormatoCelda(Diezmilesimas{mezclado} * 100 + 100));
    PonerCelda(rejilla, i, 2, QStringLiteral("%1/%2/2026").arg(1 + i % 28, 2).arg(1 + i % 12));
    PonerCelda(rejilla, i, 3, QStringLiteral("CUOTA MENSUAL DE MANTENIMIENTO"));
    PonerCelda(rejilla, i, 4, QString::number(i));
  }
}

void Llenar(benchmark::State& estado) {
  for (auto _ : estado) {
    Rejilla rejilla;
    llenar(rejilla, static_cast<int>(estado.range(0)));
    benchmark::DoNotOptimize(rejilla.Rows());
  }
}

void Ordenar(benchmark::State& estado) {
  for (auto _ : estado) {
    estado.PauseTiming();
    Rejilla rejilla;
    llenar(rejilla, 100000);
    estado.ResumeTiming();
    OrdenarColumna(rejilla, static_cast<int>(estado.range(0)));
  }
}

void SubtotalesPorNombre(benchmark::State& estado) {
  for (auto _ : estado) {
    estado.PauseTiming();
    Rejilla rejilla;
    llenar(rejilla, static_cast<int>(estado.range(0)));
    estado.ResumeTiming();
    Subtotales(QStringLiteral("Nombre"), rejilla, QStringLiteral("Suma ?"), {}, {},
               {QStringLiteral("Importe")});
    Subtotales(QStringLiteral("Nombre"), rejilla, QStringLiteral("Suma ?"), {}, QStringLiteral("NOSORT"),
               {QStringLiteral("Importe")});
  }
}

void SumarImportes(benchmark::State& estado) {
  Rejilla rejilla;
  llenar(rejilla, 100000);
  for (auto _ : estado)
    benchmark::DoNotOptimize(SumarColumna(rejilla, 1, 1, 100000));
}

}  // namespace

BENCHMARK(Llenar)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Ordenar)->ArgName("columna")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(SubtotalesPorNombre)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SumarImportes)->Unit(benchmark::kMillisecond);
