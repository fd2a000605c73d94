// La ventana contra discos, permisos y ajustes que fallan: se dice una vez y la acumulación sigue entera.

#include <sys/resource.h>
#include <sys/stat.h>

#include <QTimer>
#include <ctime>

#include "UsuarioCorriente.h"
#include "VentanaPrincipal.h"
#include "comunes/plataforma/Sistema.h"
#include "ventanas/editor/EdiSEPA.h"

using namespace pruebas;
namespace fs = std::filesystem;

namespace {

class FallosVentana : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    comunes::PrepararProceso("prueba");
    fs::permissions(carpeta_, fs::perms::all);
    std::string bytes = leer(DIR_EJEMPLOS "/gimnasio-acuario.Q19");
    escribir("enero.Q19", bytes);
    fs::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
  }
};

/// Un límite al tamaño de los ficheros, que es como se ve un disco lleno sin llenarlo.
struct DiscoPequeno {
  explicit DiscoPequeno(rlim_t bytes) {
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &antes), 0);
    const struct rlimit poco { bytes, antes.rlim_max };
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &poco), 0);
  }
  ~DiscoPequeno() { ::setrlimit(RLIMIT_FSIZE, &antes); }
  struct rlimit antes {};
};

// Detrás de un enlace, ".." es la carpeta de verdad: en la línea de órdenes y al guardar.
TEST_F(FallosVentana, LasRutasSonLasDelSistema) {
  fs::create_directories(carpeta_ / "lejos" / "dentro");
  fs::create_directory_symlink("lejos/dentro", carpeta_ / "enlace");
  escribir("lejos/enero.Q19", Fichero(Remesa("20260405", {"00000000345"})));
  escribir("z.Q19", "lo de antes");
  Ventana v(carpeta_, comunes::DesdeRuta(carpeta_ / "enlace" / ".." / "enero.Q19"));
  EXPECT_EQ(v.texto("InfoAcumulado"), "1 fichero · 1 adeudo · 3,45 €");
  const ConDestino destino(carpeta_ / "enlace" / ".." / "z");
  v.pulsar("Guardar");
  EXPECT_EQ(leer(carpeta_ / "z.Q19"), "lo de antes");
  EXPECT_EQ(leer(carpeta_ / "lejos" / "z.Q19").size(), 602U * 6);
  EXPECT_TRUE(v.veredicto().endsWith(" en " + comunes::DesdeRuta(carpeta_ / "lejos" / "z.Q19")));
}

TEST_F(FallosVentana, GuardarDondeNoSePuedeNoPierdeNada) {
  fs::create_directory(carpeta_ / "carpeta.Q19");
  ASSERT_EQ(::mkfifo((carpeta_ / "cola.Q19").c_str(), 0666), 0);
  fs::create_symlink("/dev/full", carpeta_ / "dispositivo.Q19");
  fs::create_directory(carpeta_ / "ajena");
  fs::permissions(carpeta_ / "ajena", fs::perms::owner_read | fs::perms::owner_exec);
  Ventana v(carpeta_);
  v.importar("enero.Q19");
  v.Acumulado->seleccionarSolo(3);
  v.pulsar("cmdInsertar");
  const auto antes = v.acumulado();
  const auto intentar = [&](const fs::path& ruta, const char* mensaje, int preguntas = 0) {
    Cajas cajas{"Aceptar"};
    for (int i = 0; i < preguntas; ++i)
      cajas.Responder("Aceptar");
    const auto nombresAntes = nombres();
    const ConDestino destino(ruta);
    v.pulsar("Guardar");
    const QString dicho = cajas.Mensaje(static_cast<std::size_t>(preguntas));
    EXPECT_TRUE(dicho.startsWith(mensaje)) << dicho.toStdString();
    EXPECT_TRUE(dicho.endsWith(comunes::DesdeRuta(ruta))) << dicho.toStdString();
    EXPECT_EQ(v.acumulado(), antes) << ruta;
    EXPECT_TRUE(v.importado());
    EXPECT_EQ(nombres(), nombresAntes) << ruta;
  };
  intentar(carpeta_ / "carpeta.Q19", "Error 75: Error de acceso a la ruta o el archivo: es una carpeta");
  // Ya existen: antes se pregunta si se sustituyen.
  intentar(carpeta_ / "cola.Q19",
           "Error 75: Error de acceso a la ruta o el archivo: no es un fichero corriente", 1);
  intentar(carpeta_ / "dispositivo.Q19", "Error 75:", 1);
  intentar(carpeta_ / "no hay" / "x.Q19", "Error 76:");
  {
    const UsuarioCorriente usuario;
    intentar(carpeta_ / "ajena" / "x.Q19", "Error 70: Permiso denegado");
  }
  {
    const DiscoPequeno disco(5000);
    intentar(carpeta_ / "nuevo.Q19", "Error 61: Disco lleno");
    intentar(carpeta_ / "enero.Q19", "Error 61: Disco lleno", 1);
  }
  const ConDestino destino(carpeta_ / "al fin.Q19");
  v.pulsar("Guardar");
  EXPECT_EQ(leer(carpeta_ / "al fin.Q19"), Fichero(antes));
  EXPECT_TRUE(v.acumulado().empty());
}

TEST_F(FallosVentana, AjustesHostiles) {
  std::mt19937 numeros(5000);  // NOLINT: que se pueda repetir
  std::string azar, secciones;
  for (int i = 0; i < 300'000; ++i)
    azar += static_cast<char>(numeros());
  for (int i = 0; i < 5000; ++i)
    secciones += "[Sección " + std::to_string(i) + "]\r\nClave=" + std::string(60, 'x') + "\r\n";
  const std::string buenos = leer(carpeta_ / "Tarvo.INI");
  const struct {
    std::string bytes;
    std::uintmax_t largo;  // si no es 0, los bytes y ceros hasta ahí
    bool sirven;
  } casos[] = {{azar, 0, false},
               {secciones + buenos, 0, true},
               {azar + "\r\n" + buenos, 0, true},
               {buenos, 100 << 20, false}};
  for (const auto& caso : casos) {
    escribir("Tarvo.INI", caso.bytes);
    if (caso.largo > 0) fs::resize_file(carpeta_ / "Tarvo.INI", caso.largo);
    Cajas cajas;
    if (caso.largo > 0) cajas.Responder("Aceptar");
    const std::clock_t antes = std::clock();
    Ventana v(carpeta_);
    v.importar("enero.Q19");
    v.Acumulado->seleccionarSolo(2);
    QString aviso = "sin editor";
    QTimer espera;
    QObject::connect(&espera, &QTimer::timeout, [&] {
      auto* editor = qobject_cast<editor::EdiSEPA*>(QApplication::activeModalWidget());
      if (editor == nullptr) return;
      aviso = editor->findChild<QLabel*>("Aviso")->text();
      editor->reject();
    });
    espera.start(10);
    QTest::keyClick(v.Acumulado, Qt::Key_Return);
    EXPECT_EQ(aviso.isEmpty(), caso.sirven) << aviso.toStdString();
    EXPECT_LT((std::clock() - antes) / CLOCKS_PER_SEC, 4);
    const QString dicho = cajas.Mensaje(0);
    EXPECT_EQ(dicho.contains("pasa de 4 MB"), caso.largo > 0) << dicho.toStdString();
  }
}

}  // namespace
