// Lo que el operador espera en la ventana, con un millón de registros y con ficheros de 60 MB.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <fstream>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Aplicacion.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Lectura.h"
#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaFicheros.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace {

constexpr std::size_t kRegistro = 600;

std::string Registro(std::string cabeza) {
  cabeza.resize(kRegistro, ' ');
  return cabeza + "\r\n";
}

/// Datos propios: uno de un millón de adeudos, uno de cien mil (60 MB) y una sola línea de 60 MB.
class Banco {
 public:
  Banco() {
    escribir("millon.Q19", 1'000'000);
    escribir("sesenta.Q19", 100'000);
    std::ofstream(ruta("linea.Q19"), std::ios::binary) << "0119143001" << std::string(60'000'000, 'x');
    ventana_.show();
    hijo<principal::ListaCarpetas>("Carpetas")->ponerRuta(carpeta_.path());
    pintar();
  }

  std::string ruta(const char* nombre) const {
    return carpeta_.filePath(QString::fromUtf8(nombre)).toStdString();
  }
  template <typename Control>
  Control* hijo(const char* nombre) {
    return ventana_.findChild<Control*>(QLatin1String(nombre));
  }
  principal::VistaRegistros& acumulado() { return *hijo<principal::VistaRegistros>("Acumulado"); }
  void pulsar(const char* boton) {
    hijo<QPushButton>(boton)->click();
    pintar();
  }
  void elegir(const char* nombre) {
    emit hijo<principal::ListaFicheros>("Ficheros")->elegido(QString::fromUtf8(nombre));
    pintar();
  }
  void llenar() {
    pulsar("Empezar");
    elegir("millon.Q19");
    pulsar("Importar");
  }
  void pintar() {
    QApplication::processEvents();
    ventana_.repaint();
    QApplication::processEvents();
  }

 private:
  void escribir(const char* nombre, int adeudos) {
    std::ofstream fichero(ruta(nombre), std::ios::binary);
    fichero << Registro("0119143001") << Registro("0219143002");
    std::string adeudo = "0319143003" + std::string(78, ' ') + "00000000100";
    const std::string entero = Registro(adeudo);
    for (int i = 0; i < adeudos; ++i)
      fichero << entero;
    for (const char* codigo : {"04", "05", "99"})
      fichero << Registro(codigo);
  }

  QTemporaryDir carpeta_;
  principal::frmUnirQ19 ventana_{QString()};
};

Banco& banco() {
  static Banco unico;
  return unico;
}

void LecturaEntera(benchmark::State& estado) {
  const std::string ruta = banco().ruta("sesenta.Q19");
  for (auto _ : estado) {
    remesa::LecturaFichero fichero(ruta);
    const auto bytes = std::make_unique_for_overwrite<char[]>(fichero.tamano());
    benchmark::DoNotOptimize(fichero.leer({bytes.get(), static_cast<std::size_t>(fichero.tamano())}));
  }
}

void Elegir(benchmark::State& estado, const char* nombre) {
  for (auto _ : estado)
    banco().elegir(nombre);
}

void Importar(benchmark::State& estado) {
  for (auto _ : estado) {
    estado.PauseTiming();
    banco().llenar();
    banco().elegir("sesenta.Q19");
    estado.ResumeTiming();
    banco().pulsar("Importar");
  }
}

void Insertar(benchmark::State& estado) {
  banco().llenar();
  banco().acumulado().seleccionarSolo(500'000);
  for (auto _ : estado)
    banco().pulsar("cmdInsertar");
}

void EliminarDiezMil(benchmark::State& estado) {
  // La confirmación se contesta en cuanto se abre.
  QTimer contesta;
  QObject::connect(&contesta, &QTimer::timeout, [] {
    if (auto* caja = qobject_cast<comunes::MyBox*>(QApplication::activeModalWidget()))
      caja->Boton(1)->click();
  });
  contesta.start(1);
  banco().llenar();
  std::vector<std::size_t> dispersos;
  for (std::size_t i = 2; dispersos.size() < 10'000; i += 97)
    dispersos.push_back(i);
  for (auto _ : estado) {
    estado.PauseTiming();
    banco().acumulado().seleccionar(dispersos);
    banco().pintar();
    estado.ResumeTiming();
    banco().pulsar("cmdEliminar");
  }
}

void SeleccionarDiezMil(benchmark::State& estado) {
  banco().llenar();
  std::vector<std::size_t> dispersos;
  for (std::size_t i = 2; dispersos.size() < 10'000; i += 97)
    dispersos.push_back(i);
  for (auto _ : estado) {
    banco().acumulado().seleccionar(dispersos);
    banco().pintar();
  }
}

void Desplazar(benchmark::State& estado) {
  banco().llenar();
  QScrollBar* barra = banco().acumulado().verticalScrollBar();
  int paso = 0;
  for (auto _ : estado) {
    barra->setValue((paso += 77'777) % barra->maximum());
    banco().pintar();
  }
}

}  // namespace

BENCHMARK(LecturaEntera)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Elegir, sesenta_MB, "sesenta.Q19")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Elegir, una_linea_de_60_MB, "linea.Q19")->Unit(benchmark::kMillisecond);
BENCHMARK(Importar)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(Insertar)->Unit(benchmark::kMillisecond);
BENCHMARK(EliminarDiezMil)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(SeleccionarDiezMil)->Unit(benchmark::kMillisecond);
BENCHMARK(Desplazar)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  comunes::Aplicacion aplicacion(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
