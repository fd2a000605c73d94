#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "devoluciones/RemesaNueva.h"
#include "remesa/Campos.h"

// Medidas de las devoluciones: leerlas, frente a cargar sin más los mismos registros, y hacer la remesa
// nueva.

namespace {

using namespace remesa;

/// Una remesa, o las devoluciones de todos sus adeudos. Se borra al acabar.
class Datos {
 public:
  Datos(std::size_t adeudos, bool devueltos)
      : ruta_(std::filesystem::temp_directory_path() /
              ("medida-" + std::to_string(::getpid()) + (devueltos ? "-d.Q19" : ".Q19"))) {
    std::ofstream salida(ruta_, std::ios::binary);
    const std::string cifra = devueltos ? "2" : "0";
    const auto linea = [&](std::string registro,
                           std::initializer_list<std::pair<Posiciones, std::string>> campos) {
      registro.resize(kLongitudRegistro, ' ');
      for (const auto& [donde, texto] : campos)
        EscribirCampo(registro, donde, texto);
      salida << registro << "\r\n";
    };
    const std::string acreedor = "ES33000B99654105", identificacion = "PRE2026112412003000000ACUARIO000000";
    linea(cifra + "119143001",
          {{kIdentificadorPresentador, acreedor}, {kIdentificacionFichero, identificacion}});
    linea(cifra + "219143002", {{kIdentificadorAcreedor, acreedor},
                                {kFechaCobro, "20261203"},
                                {kCuentaAcreedor, "ES9121000418450200051332"},
                                {kFicheroOriginal, devueltos ? identificacion : ""}});
    for (std::size_t i = 0; i < adeudos; ++i) {
      const std::string numero = Ceros(static_cast<std::int32_t>(i), 12);
      linea(cifra + "319143003", {{kReferenciaAdeudo, "REFERENCIA" + numero},
                                  {kReferenciaMandato, "MANDATO" + numero},
                                  {kImporteAdeudo, Ceros(static_cast<std::int32_t>(i % 2000), 11)},
                                  {kNombreDeudor, "DEUDOR NUMERO " + numero},
                                  {kCuentaDeudor, "ES9121000418450200051332"},
                                  {kConcepto, "CUOTA MENSUAL DE MANTENIMIENTO"},
                                  {kMotivo, devueltos ? "AM04" : ""},
                                  {kFechaCobroOriginal, devueltos ? "20261201" : ""}});
    }
    for (const char* total : {"4", "5"})
      linea(cifra + total, {});
    linea("99", {});
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

std::size_t Adeudos(const benchmark::State& estado) {
  return static_cast<std::size_t>(estado.range(0));
}

void Carga(benchmark::State& estado) {
  const Datos datos(Adeudos(estado), false);
  for (auto _ : estado)
    benchmark::DoNotOptimize(LeerFichero(datos.ruta()));
}

void Lectura(benchmark::State& estado) {
  const Datos datos(Adeudos(estado), true);
  for (auto _ : estado) {
    devoluciones::Lote lote;
    benchmark::DoNotOptimize(lote.leer(datos.ruta()).cuantas);
  }
}

void Busqueda(benchmark::State& estado) {
  const Datos remesa(Adeudos(estado), false), datos(Adeudos(estado), true);
  devoluciones::Lote lote;
  lote.leer(datos.ruta());
  for (auto _ : estado) {
    devoluciones::Cotejo cotejo(lote);
    cotejo.buscarEn(remesa.ruta());
    benchmark::DoNotOptimize(cotejo.hallazgo(0).estado);
  }
}

void Nueva(benchmark::State& estado) {
  const Datos remesa(Adeudos(estado), false), datos(Adeudos(estado), true);
  devoluciones::Lote lote;
  lote.leer(datos.ruta());
  devoluciones::Cotejo cotejo(lote);
  cotejo.buscarEn(remesa.ruta());
  const devoluciones::PeticionNueva peticion{devoluciones::Propuestas(lote), *LeerFecha("20270104"), {}};
  for (auto _ : estado)
    benchmark::DoNotOptimize(devoluciones::HacerRemesa(lote, cotejo, peticion).adeudos);
}

void Tamanos(benchmark::internal::Benchmark* medida) {
  medida->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->MinTime(0.3)->Unit(
      benchmark::kMillisecond);
}

BENCHMARK(Carga)->Name("Devoluciones: cargar tantos adeudos, sin más")->Apply(Tamanos);
BENCHMARK(Lectura)->Name("Devoluciones: leerlas")->Apply(Tamanos);
BENCHMARK(Busqueda)->Name("Devoluciones: buscarlas en su remesa")->Apply(Tamanos);
BENCHMARK(Nueva)->Name("Devoluciones: hacer la remesa nueva")->Apply(Tamanos);

}  // namespace
