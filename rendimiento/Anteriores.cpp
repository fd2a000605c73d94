#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "anteriores/Cruce.h"
#include "ficheros/Lectura.h"
#include "remesa/Campos.h"
#include "remesa/Fichero.h"

// Medidas de lo enviado antes: hacer su índice, con los ficheros ya en la memoria del sistema, ponerlo al día
// y comparar con él una remesa.

namespace {

using namespace remesa;
namespace fs = std::filesystem;

constexpr std::size_t kAdeudosPorFichero = 500;

void EscribirRemesa(const fs::path& ruta, std::size_t cual) {
  std::ofstream salida(ruta, std::ios::binary);
  const auto linea = [&](std::string registro,
                         std::initializer_list<std::pair<Posiciones, std::string>> campos) {
    registro.resize(kLongitudRegistro, ' ');
    for (const auto& [donde, texto] : campos)
      EscribirCampo(registro, donde, texto);
    salida << registro << "\r\n";
  };
  const std::string acreedor = "ES33000B99654105", fichero = Ceros(static_cast<std::int32_t>(cual), 6);
  linea("0119143001", {{kIdentificadorPresentador, acreedor}, {kIdentificacionFichero, "PRE" + fichero}});
  linea("0219143002", {{kIdentificadorAcreedor, acreedor},
                       {kFechaCobro, cual % 2 == 0 ? "20261101" : "20261201"},
                       {kCuentaAcreedor, "ES9121000418450200051332"}});
  for (std::size_t i = 0; i < kAdeudosPorFichero; ++i) {
    const std::string numero = Ceros(static_cast<std::int32_t>(i + cual / 12 * kAdeudosPorFichero), 12);
    std::string referencia = "REFERENCIA";
    referencia.append(fichero).append(numero);
    linea("0319143003", {{kReferenciaAdeudo, referencia},
                         {kReferenciaMandato, "MANDATO" + numero},
                         {kTipoAdeudo, "RCUR"},
                         {kImporteAdeudo, Ceros(static_cast<std::int32_t>(cual * 7 + i % 2000), 11)},
                         {kNombreDeudor, "DEUDOR NUMERO " + numero},
                         {kCuentaDeudor, "ES9121000418450200051332"},
                         {kConcepto, "CUOTA MENSUAL DE MANTENIMIENTO"}});
  }
  for (const char* total : {"04", "05", "99"})
    linea(total, {});
}

/// Tantos adeudos en ficheros de 500, doce por mandato. Se borran al acabar.
class Enviadas {
 public:
  explicit Enviadas(std::size_t adeudos)
      : carpeta_(fs::temp_directory_path() / ("medida-" + std::to_string(::getpid()))) {
    fs::create_directory(carpeta_);
    for (std::size_t i = 0; i < adeudos / kAdeudosPorFichero; ++i)
      EscribirRemesa(carpeta_ / (std::to_string(i) + ".Q19"), i);
  }
  ~Enviadas() {
    std::error_code ignorado;
    fs::remove_all(carpeta_, ignorado);
  }
  Enviadas(const Enviadas&) = delete;
  Enviadas& operator=(const Enviadas&) = delete;
  anteriores::PeticionIndice peticion() const {
    return {.carpetas = {carpeta_}, .desde = LeerFecha("20250101")};
  }
  std::vector<fs::path> ficheros() const {
    return {fs::directory_iterator(carpeta_), fs::directory_iterator()};
  }
  fs::path una() const { return carpeta_ / "0.Q19"; }

 private:
  fs::path carpeta_;
};

void Leer(benchmark::State& estado) {
  const Enviadas enviadas(static_cast<std::size_t>(estado.range(0)));
  std::vector<char> bufer(std::size_t{1} << 18);
  for (auto _ : estado)
    for (const fs::path& ruta : enviadas.ficheros()) {
      ficheros::LecturaFichero lectura(ruta);
      while (lectura.leer(bufer) == bufer.size())
        benchmark::ClobberMemory();
    }
}

void Hacer(benchmark::State& estado) {
  const Enviadas enviadas(static_cast<std::size_t>(estado.range(0)));
  for (auto _ : estado)
    benchmark::DoNotOptimize(anteriores::Indice::Hacer(enviadas.peticion())->entradas().size());
}

void Refrescar(benchmark::State& estado) {
  const Enviadas enviadas(static_cast<std::size_t>(estado.range(0)));
  const auto indice = anteriores::Indice::Hacer(enviadas.peticion());
  for (auto _ : estado)
    benchmark::DoNotOptimize(anteriores::Indice::Hacer(enviadas.peticion(), indice));
}

/// Una de las enviadas, con otra identificación: todos sus adeudos son sospechosos y se vuelven a leer.
void Comparar(benchmark::State& estado) {
  const Enviadas enviadas(static_cast<std::size_t>(estado.range(0)));
  const auto indice = anteriores::Indice::Hacer(enviadas.peticion());
  ListaRegistros lista = LeerFichero(enviadas.una());
  std::string cabecera(lista[0]);
  EscribirCampo(cabecera, kIdentificacionFichero, "PREOTRA");
  lista.sustituir(0, cabecera);
  for (auto _ : estado)
    benchmark::DoNotOptimize(anteriores::CruzarLista(
                                 *indice, lista, {}, [](Hallazgo&&) {}, [] { return true; })
                                 .avisos);
}

void Adeudos(benchmark::internal::Benchmark* medida) {
  medida->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->MinTime(0.3)->Unit(
      benchmark::kMillisecond);
}

BENCHMARK(Leer)->Name("Anteriores: leer tantos adeudos en ficheros de 500, sin más")->Apply(Adeudos);
BENCHMARK(Hacer)->Name("Anteriores: hacer su índice")->Apply(Adeudos);
BENCHMARK(Refrescar)->Name("Anteriores: ponerlo al día, sin cambios")->Apply(Adeudos);
BENCHMARK(Comparar)->Name("Anteriores: comparar una remesa de 500 adeudos, todos repetidos")->Apply(Adeudos);

}  // namespace
