// Lo que el operador espera en la ventana, con remesas de diez mil a un millón de adeudos.
#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <fstream>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Aplicacion.h"
#include "ventanas/principal/Historia.h"
#include "ventanas/principal/LineaRemesa.h"
#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaFicheros.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kRegistro = 600;

std::string Registro(std::string cabeza) {
  cabeza.resize(kRegistro, ' ');
  return cabeza + "\r\n";
}

/// Con lo que se lee de un adeudo.
std::string Adeudo() {
  std::string registro = Registro("0319143003SOCIO-00001");
  const std::pair<std::size_t, const char*> datos[] = {{45, "SEPA/00001"},
                                                       {80, "RCUR"},
                                                       {88, "00000000100"},
                                                       {99, "20180823"},
                                                       {118, "Sofia Quinones Martin"},
                                                       {402, "A"},
                                                       {403, "ES9121000418450200051332"},
                                                       {441, "Cuota de diciembre de 2026"}};
  for (const auto& [donde, dato] : datos)
    registro.replace(donde, std::string_view(dato).size(), dato);
  return registro;
}

constexpr int kTamanos[] = {10'000, 100'000, 1'000'000};

QString Nombre(std::int64_t adeudos) {
  return u"%1.Q19"_s.arg(adeudos);
}
/// Los mismos bytes en una sola línea.
QString NombreLinea(std::int64_t adeudos) {
  return u"linea-%1.Q19"_s.arg(adeudos);
}

class Banco {
 public:
  Banco() {
    for (const int adeudos : kTamanos)
      escribir(adeudos);
    ventana_.show();
    hijo<principal::ListaCarpetas>("Carpetas")->ponerRuta(carpeta_.path());
    pintar();
  }

  template <typename Control>
  Control* hijo(const char* nombre) {
    return ventana_.findChild<Control*>(QLatin1String(nombre));
  }
  principal::VistaRegistros& acumulado() { return *hijo<principal::VistaRegistros>("Acumulado"); }
  const principal::Historia& historia() { return *ventana_.findChild<principal::Historia*>(); }
  void pulsar(const char* boton) {
    hijo<QPushButton>(boton)->click();
    pintar();
  }
  void elegir(const QString& nombre) {
    emit hijo<principal::ListaFicheros>("Ficheros")->elegido(nombre);
    pintar();
  }
  void llenar(std::int64_t adeudos) {
    pulsar("Empezar");
    elegir(Nombre(adeudos));
    pulsar("Importar");
  }
  void pintar() {
    QApplication::processEvents();
    ventana_.repaint();
    QApplication::processEvents();
  }
  /// Uno de cada cien adeudos de la acumulación, dispersos.
  std::vector<std::size_t> dispersos() {
    std::vector<std::size_t> filas;
    for (std::size_t i = 2; i + 3 < acumulado().lista().size(); i += 100)
      filas.push_back(i);
    return filas;
  }

 private:
  void escribir(int adeudos) {
    std::ofstream fichero(carpeta_.filePath(Nombre(adeudos)).toStdString(), std::ios::binary);
    fichero << Registro("0119143001") << Registro("0219143002");
    const std::string entero = Adeudo();
    for (int i = 0; i < adeudos; ++i)
      fichero << entero;
    for (const char* codigo : {"04", "05", "99"})
      fichero << Registro(codigo);
    std::ofstream linea(carpeta_.filePath(NombreLinea(adeudos)).toStdString(), std::ios::binary);
    linea << "0119143001" << std::string(kRegistro * static_cast<std::size_t>(adeudos), 'x');
  }

  QTemporaryDir carpeta_;
  principal::frmUnirQ19 ventana_{QString()};
};

/// Se hace en main: tiene ventanas, y ha de morir antes que la aplicación.
Banco* elBanco = nullptr;
Banco& banco() {
  return *elBanco;
}

/// Contesta en cuanto se abre: que sí a las preguntas, y cierra el editor.
class Contesta {
 public:
  Contesta() {
    QObject::connect(&reloj_, &QTimer::timeout, [] {
      QWidget* modal = QApplication::activeModalWidget();
      if (auto* caja = qobject_cast<comunes::MyBox*>(modal))
        caja->Boton(1)->click();
      else if (modal != nullptr && modal->isVisible() && modal->inherits("editor::EdiSEPA"))
        modal->close();  // lo demás, como el avance de una lectura, sigue
    });
    reloj_.start(1);
  }

 private:
  QTimer reloj_;
};

void Elegir(benchmark::State& estado) {
  for (auto _ : estado)
    banco().elegir(Nombre(estado.range(0)));
}

void ElegirLinea(benchmark::State& estado) {
  for (auto _ : estado)
    banco().elegir(NombreLinea(estado.range(0)));
}

void Importar(benchmark::State& estado) {
  for (auto _ : estado) {
    estado.PauseTiming();
    banco().pulsar("Empezar");
    banco().elegir(Nombre(estado.range(0)));
    estado.ResumeTiming();
    banco().pulsar("Importar");
  }
}

void Insertar(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  banco().acumulado().seleccionarSolo(static_cast<int>(estado.range(0) / 2));
  for (auto _ : estado)
    banco().pulsar("cmdInsertar");
}

void Eliminar(benchmark::State& estado) {
  const Contesta contesta;
  for (auto _ : estado) {
    estado.PauseTiming();
    banco().llenar(estado.range(0));
    banco().acumulado().seleccionar(banco().dispersos());
    banco().pintar();
    estado.ResumeTiming();
    banco().pulsar("cmdEliminar");
  }
}

void Seleccionar(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  const std::vector<std::size_t> dispersos = banco().dispersos();
  for (auto _ : estado) {
    banco().acumulado().seleccionar(dispersos);
    banco().pintar();
  }
}

/// Seleccionar lo hallado cuando es uno de cada dos: un intervalo por registro.
void SeleccionarAlternos(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  std::vector<std::size_t> alternos;
  for (std::size_t i = 2; i + 3 < banco().acumulado().lista().size(); i += 2)
    alternos.push_back(i);
  for (auto _ : estado) {
    banco().acumulado().clearSelection();
    banco().acumulado().seleccionar(alternos);
    banco().pintar();
  }
}

void Desplazar(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  QScrollBar* barra = banco().acumulado().verticalScrollBar();
  int paso = 0;
  for (auto _ : estado) {
    barra->setValue((paso += 77'777) % barra->maximum());
    banco().pintar();
  }
}

/// Lo mismo, leyendo los registros en columnas.
void DesplazarColumnas(benchmark::State& estado) {
  using Modo = principal::VistaRegistros::Modo;
  banco().acumulado().ponerModo(Modo::Columnas);
  Desplazar(estado);
  banco().acumulado().ponerModo(Modo::Texto);
}

/// Pasar de texto a columnas, o al revés, sin dejar de ver la misma fila.
void CambiarModo(benchmark::State& estado) {
  using Modo = principal::VistaRegistros::Modo;
  banco().llenar(estado.range(0));
  for (auto _ : estado) {
    const bool texto = banco().acumulado().modo() == Modo::Texto;
    banco().acumulado().ponerModo(texto ? Modo::Columnas : Modo::Texto);
    banco().pintar();
  }
  banco().acumulado().ponerModo(Modo::Texto);
}

/// Abrir y cerrar el editor en un registro del medio.
void AbrirEditor(benchmark::State& estado) {
  const Contesta contesta;
  banco().llenar(estado.range(0));
  for (auto _ : estado) {
    emit banco().acumulado().dobleClic(static_cast<int>(estado.range(0) / 2));
    banco().pintar();
  }
}

void Accionar(const char* orden) {
  banco().hijo<QAction>(orden)->trigger();
  banco().pintar();
}

/// Deshacer y rehacer una eliminación. MB, lo que ocupa cada paso; los registros, aparte.
void Deshacer(benchmark::State& estado) {
  const Contesta contesta;
  banco().llenar(estado.range(0));
  banco().acumulado().seleccionar(banco().dispersos());
  banco().pulsar("cmdEliminar");
  for (auto _ : estado) {
    Accionar("mnuDeshacer");
    Accionar("mnuRehacer");
  }
  const auto ocupado = banco().historia().ocupacion({});
  estado.counters["MB por paso"] = static_cast<double>(ocupado.propia) /
                                   static_cast<double>(std::max<std::size_t>(ocupado.pasos, 1)) / 1e6;
}

/// Desde que se inserta un adeudo hasta que la línea dice lo que su comprobación, con lo que se espera a que
/// la remesa esté quieta; y lo más que mientras tanto la ventana tarda en atender algo.
void Veredicto(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  banco().acumulado().seleccionarSolo(static_cast<int>(estado.range(0) / 2));
  const auto* linea = banco().hijo<principal::LineaRemesa>("InfoAcumulado");
  qint64 peor = 0;
  for (auto _ : estado) {
    banco().pulsar("cmdInsertar");
    while (linea->accessibleName().contains(u"Comprobando…"_s)) {
      QElapsedTimer reloj;
      reloj.start();
      QApplication::processEvents();
      peor = std::max(peor, reloj.nsecsElapsed());
    }
  }
  estado.counters["peor_ms"] = static_cast<double>(peor) / 1e6;
}

/// Sumar lo seleccionado, que es todo.
void SumarSeleccion(benchmark::State& estado) {
  banco().llenar(estado.range(0));
  const auto* linea = banco().hijo<principal::LineaRemesa>("InfoAcumulado");
  for (auto _ : estado) {
    banco().acumulado().clearSelection();
    banco().pintar();
    banco().acumulado().selectAll();
    while (!linea->accessibleName().contains(u"Selección"_s))
      QApplication::processEvents();
  }
}

void Tamanos(benchmark::internal::Benchmark* medida) {
  for (const int adeudos : kTamanos)
    medida->Arg(adeudos);
  medida->UseRealTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(Elegir)->Name("Ventana: elegir un fichero y verlo")->Apply(Tamanos);
BENCHMARK(ElegirLinea)->Name("Ventana: los mismos bytes en una sola línea")->Apply(Tamanos);
BENCHMARK(Importar)->Name("Ventana: importar")->Apply(Tamanos)->Iterations(5);
BENCHMARK(Insertar)->Name("Ventana: insertar")->Apply(Tamanos);
BENCHMARK(Eliminar)->Name("Ventana: eliminar uno de cada cien")->Apply(Tamanos)->Iterations(3);
BENCHMARK(Seleccionar)->Name("Ventana: seleccionar uno de cada cien")->Apply(Tamanos);
BENCHMARK(SeleccionarAlternos)->Name("Ventana: seleccionar uno de cada dos")->Apply(Tamanos);
BENCHMARK(Desplazar)->Name("Ventana: desplazar la lista")->Apply(Tamanos);
BENCHMARK(DesplazarColumnas)->Name("Ventana: desplazar la lista en columnas")->Apply(Tamanos);
BENCHMARK(CambiarModo)->Name("Ventana: pasar de texto a columnas")->Apply(Tamanos);
BENCHMARK(Veredicto)->Name("Ventana: del cambio al veredicto")->Apply(Tamanos)->Iterations(3);
BENCHMARK(SumarSeleccion)->Name("Ventana: seleccionar todo y sumarlo")->Apply(Tamanos)->Iterations(5);
BENCHMARK(AbrirEditor)->Name("Ventana: abrir y cerrar el editor")->Apply(Tamanos);
BENCHMARK(Deshacer)->Name("Ventana: deshacer y rehacer una eliminación")->Apply(Tamanos);

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  comunes::Aplicacion aplicacion(argc, argv);
  Banco propio;
  elBanco = &propio;  // cppcheck-suppress danglingLifetime ; nadie la usa después
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
