// El programa `q19` entero, contra lo que puede fallarle alrededor: discos, permisos y ficheros que no lo
// son.

#include <unistd.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include "EnCarpeta.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

/// Lo más que tarda, en un equipo cargado y con los saneadores, algo que no ha de esperar por nada.
constexpr int kEnseguidaMs = 10000;

class FallosConsola : public EnCarpeta {
 protected:
  // El programa se copia a donde lo alcance un usuario corriente, con los ajustes que trae.
  void SetUp() override {
    ASSERT_TRUE(QDir(carpeta_.path()).mkdir("bin"));
    ASSERT_TRUE(QFile::copy(PROGRAMA_Q19, ruta("bin/q19")));
    ASSERT_TRUE(QFile::copy(DIR_PROYECTO "/app/Tarvo.INI", ruta("bin/Tarvo.INI")));
    ASSERT_TRUE(QFile::copy(DIR_EJEMPLOS "/gimnasio-acuario.Q19", ruta("entrada.Q19")));
    ASSERT_EQ(bash("chmod -R a+rwX . && echo 'lo de antes' >salida.Q19 && chmod a+rw salida.Q19").codigo, 0);
  }

  void TearDown() override { bash("chmod -R u+rwX ."); }

  /// Pasa `orden` en la carpeta, con Q por el programa. Si `corriente`, sin los permisos del superusuario.
  Salida bash(const QString& orden, bool corriente = false) const {
    QStringList linea{"bash", "-c", "Q=$PWD/bin/q19; " + orden};
    if (corriente && ::geteuid() == 0)
      linea = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"} + linea;
    QElapsedTimer reloj;
    reloj.start();
    const QString programa = linea.takeFirst();
    const Salida salida = ejecutar(programa, linea);
    EXPECT_LT(reloj.elapsed(), kEnseguidaMs) << orden.toStdString();
    return salida;
  }

  /// Todas las órdenes han de fallar con ese mensaje, y todo lo que hay en la carpeta, seguir igual.
  void fallan(const QStringList& ordenes, const QString& mensaje) const {
    const QString antes = bash(kFoto).dicho;
    const Salida s = bash(ordenes.join("; echo $?; ") + "; echo $?", true);
    EXPECT_EQ(s.dicho, QString("1\n").repeated(ordenes.size())) << ordenes[0].toStdString();
    EXPECT_EQ(s.avisado.count(mensaje), ordenes.size())
        << mensaje.toStdString() << " no está, o no siempre, en\n"
        << s.avisado.toStdString();
    EXPECT_EQ(s.avisado.count("q19: "), ordenes.size()) << s.avisado.toStdString();
    EXPECT_EQ(bash(kFoto).dicho, antes) << ordenes[0].toStdString();
  }

  /// La remesa de ejemplo con sus registros tantas veces más, de 29 KB cada una.
  void escribirGrande(const QString& nombre, int veces) const {
    const QByteArray una = leer(ruta("entrada.Q19"));
    escribir(nombre, una + una.mid(602 * 2).repeated(veces));
  }
  /// Una remesa de una sola línea sin fin, que no ocupa disco y se tarda en leer.
  void escribirLarga(const QString& nombre, qint64 bytes) const {
    ASSERT_TRUE(QFile::resize(escribir(nombre, "0119143001"), bytes));
  }
  /// Megas que llega a ocupar una orden. Lo soltado no cuenta.
  long memoria(const QString& orden) const {
    const QString medida =
        "import resource, subprocess, sys\n"
        "codigo = subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL).returncode\n"
        "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024 if codigo in (0, 1) else 1 << "
        "20)";
    return bash(
               u"ASAN_OPTIONS=detect_leaks=0:quarantine_size_mb=1 python3 -c '%1' $Q %2"_s.arg(medida, orden))
        .dicho.toLong();
  }

  static constexpr const char* kFoto =
      "find . -printf '%p %y %m %l ' -type f -exec sha256sum {} \\; -o -printf '\\n'";
};

TEST_F(FallosConsola, EntradasQueNoSePuedenLeer) {
  ASSERT_EQ(
      bash("mkfifo cola; mkdir carpeta; ln -s nada roto; ln -s vuelta vuelta; ln -s /dev/zero dispositivo;"
           "cp entrada.Q19 cerrada; chmod 0 cerrada; mkdir tapada; cp entrada.Q19 tapada; chmod 0 tapada")
          .codigo,
      0);
  const QString corriente = "Error de acceso a la ruta o el archivo: no es un fichero corriente (error 75)";
  const std::pair<const char*, QString> entradas[] = {
      {"cola", corriente},
      {"dispositivo", corriente},
      {"carpeta", "Error de acceso a la ruta o el archivo: es una carpeta (error 75)"},
      {"roto", "No se encontró el archivo (error 53)"},
      {"vuelta", "Error de acceso a la ruta o el archivo (error 75)"},
      {"cerrada", "Permiso denegado (error 70)"},
      {"tapada/entrada.Q19", "Permiso denegado (error 70)"},
      {"entrada.Q19/dentro", "No se encontró la ruta de acceso (error 76)"},
  };
  for (const auto& [nombre, mensaje] : entradas)
    fallan({u"$Q unir -o salida entrada.Q19 %1"_s.arg(nombre), u"$Q listar -o salida.Q19 %1"_s.arg(nombre),
            u"$Q comprobar %1"_s.arg(nombre), u"$Q ver %1"_s.arg(nombre)},
           u"q19: %1: %2"_s.arg(nombre, mensaje));
  // Sin ajustes que leer tampoco se espera: una cola no contestaría nunca.
  ASSERT_EQ(bash("rm bin/Tarvo.INI; mkfifo bin/Tarvo.INI").codigo, 0);
  fallan({"$Q ver entrada.Q19"}, "bin/Tarvo.INI: No se encontró el archivo (error 53)");
}

TEST_F(FallosConsola, SalidasQueNoSePuedenEscribir) {
  ASSERT_EQ(
      bash("mkfifo cola.Q19; mkdir carpeta.Q19; ln -s /dev/full dispositivo.Q19; ln -s no/existe roto.Q19;"
           "ln -s vuelta.Q19 vuelta.Q19; echo viejo >protegida.Q19; chmod a-w protegida.Q19;"
           "mkdir ajena; echo viejo >ajena/f.Q19; chmod 666 ajena/f.Q19; chmod a-w ajena")
          .codigo,
      0);
  const std::pair<const char*, const char*> salidas[] = {
      {"cola", "no es un fichero corriente (error 75)"},
      {"dispositivo", "no es un fichero corriente (error 75)"},
      {"carpeta", "es una carpeta (error 75)"},
      {"vuelta", "(error 75)"},
      {"protegida", "Permiso denegado (error 70)"},
      {"ajena/f", "Permiso denegado (error 70)"},
      {"roto", "No se encontró la ruta de acceso (error 76)"},
  };
  escribirGrande("grande.Q19", 400);
  const auto fallan2 = [&](const QString& orden, const QString& mensaje) {
    fallan({orden.arg("unir"), orden.arg("listar")}, mensaje);
  };
  for (const auto& [nombre, mensaje] : salidas)
    fallan2(u"$Q %1 -o "_s + nombre + ".Q19 entrada.Q19", mensaje);
  // La carpeta actual ya no está.
  fallan2("(mkdir q && cd q && rmdir ../q && $Q %1 -o x.Q19 $OLDPWD/entrada.Q19)",
          "x.Q19: No se encontró la ruta de acceso (error 76)");
  // La señal de pasar del límite mataría al programa.
  fallan2("prlimit --fsize=20000 $Q %1 -o salida.Q19 grande.Q19", "salida.Q19: Disco lleno (error 61)");
}

// Sin salidas, lo que se dice no puede acabar en la remesa; con ellas llenas, se avisa.
TEST_F(FallosConsola, SalidasCerradasOLlenas) {
  ASSERT_EQ(bash("$Q unir -o bien entrada.Q19").codigo, 0);
  for (const char* cierre : {">&-", "2>&-", "<&- >&- 2>&-", ">/dev/full 2>/dev/full"}) {
    const Salida s = bash(u"$Q unir -o salida entrada.Q19 entrada.Q19 %1"_s.arg(cierre));
    EXPECT_EQ(s.codigo, 0) << cierre;
    EXPECT_EQ(leer(ruta("salida.Q19")), leer(ruta("bien.Q19"))) << cierre;
  }
  const Salida s = bash("$Q unir -o salida entrada.Q19 >/dev/full");
  EXPECT_TRUE(s.avisado.endsWith("q19: no se puede escribir la salida\n")) << s.avisado.toStdString();
  for (const char* orden :
       {"comprobar entrada.Q19", "ver entrada.Q19", "--help", "--version", "iban ES", "nif 1"}) {
    const Salida llena = bash(u"$Q %1 >/dev/full"_s.arg(orden));
    EXPECT_EQ(llena.codigo, 1) << orden;
    EXPECT_EQ(llena.avisado, "q19: no se puede escribir la salida\n") << orden;
  }
}

// Los nombres son los del sistema: ".." detrás de un enlace es la carpeta de verdad, y dos que solo se
// parecen son dos ficheros.
TEST_F(FallosConsola, CadaNombreEsSuFichero) {
  ASSERT_EQ(bash("mkdir -p lejos/dentro; ln -s lejos/dentro enlace; echo viejo >z.Q19;"
                 "cp entrada.Q19 e.Q19; cp " DIR_EJEMPLOS "/comunidad-fuente-nora.Q19 lejos/e.Q19;"
                 "for f in E.q19 straße.Q19 strasse.Q19; do cp lejos/e.Q19 $f; done")
                .codigo,
            0);
  const Salida s =
      bash("$Q unir -o enlace/../z e.Q19 enlace/../e.Q19 E.q19 straße.Q19 strasse.Q19 lejos/dentro/../e.Q19");
  EXPECT_EQ(s.codigo, 0);
  EXPECT_TRUE(s.dicho.startsWith("Ficheros: 5\nAdeudos: 125\n")) << s.dicho.toStdString();
  EXPECT_TRUE(s.dicho.endsWith("/lejos/z.Q19\n")) << s.dicho.toStdString();
  EXPECT_EQ(s.avisado.count("ya importado"), 1) << s.avisado.toStdString();
  EXPECT_EQ(leer(ruta("z.Q19")), "viejo\n");
  EXPECT_EQ(leer(ruta("lejos/z.Q19")).count('\n'), 45 + 4 * 20 + 5);
}

TEST_F(FallosConsola, LaMemoriaNoDependeDelTamano) {
  // 54.000 adeudos, 32 MB; y 100 MB sin un fin de línea.
  escribirGrande("muchos.Q19", 1200);
  escribirLarga("larga.Q19", 100 << 20);
  for (const auto& [orden, grande] : {std::pair{"unir -o salida %1", "muchos.Q19"},
                                      {"unir -o salida %1", "larga.Q19"},
                                      {"ver --registro 1 %1", "muchos.Q19"},
                                      {"ver --registro 1 %1", "larga.Q19"},
                                      {"comprobar %1", "larga.Q19"}})
    EXPECT_LE(memoria(QString(orden).arg(grande)), memoria(QString(orden).arg("entrada.Q19")) + 6)
        << orden << grande;
}

// Lo que tarda da señales en la terminal, y no deja rastro de ellas.
TEST_F(FallosConsola, LoQueTardaDaSenalesDeVida) {
  const QString terminal = "script -qc \"%1\" /dev/null </dev/null";
  escribirLarga("larga.Q19", qint64{64} << 30);
  for (const auto& [orden, linea] : {std::pair{"unir -o salida larga.Q19", "\rUniendo larga.Q19: "},
                                     {"comprobar larga.Q19", "\rComprobando larga.Q19: "},
                                     {"ver larga.Q19 --registro 2", "\rLeyendo larga.Q19: "}}) {
    const Salida s = bash(terminal.arg(u"timeout 2 $Q %1"_s.arg(orden)));
    EXPECT_GT(s.dicho.count(linea), 0) << s.dicho.toStdString();
  }
  const QString visto = bash(terminal.arg("$Q unir -o nueva entrada.Q19")).dicho;
  EXPECT_TRUE(visto.contains(QRegularExpression("\rLlevando al disco nueva.Q19…\r +\rFicheros: 1\r")))
      << visto.toStdString();
  EXPECT_EQ(bash("$Q unir -o otra entrada.Q19").avisado, "");
}

}  // namespace
