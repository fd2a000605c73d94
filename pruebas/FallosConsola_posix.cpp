// El programa `q19` entero, contra lo que puede fallarle alrededor: discos, permisos, ficheros que no lo son
// o que cambian, muertes y otros programas.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <csignal>
#include <random>

namespace {

using namespace Qt::StringLiterals;

using Nombres = QStringList;

/// Lo más que tarda, en un equipo cargado y con los saneadores, algo que no ha de esperar por nada.
constexpr int kEnseguidaMs = 10000;

struct Salida {
  int codigo;
  QString dicho, avisado;
};

class FallosConsola : public testing::Test {
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

  QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }

  /// Pasa `orden` en la carpeta, con Q por el programa. Si `corriente`, sin los permisos del superusuario.
  Salida bash(const QString& orden, bool corriente = false) const {
    QProcess proceso;
    proceso.setWorkingDirectory(carpeta_.path());
    QStringList linea{"bash", "-c", "Q=$PWD/bin/q19; " + orden};
    if (corriente && ::geteuid() == 0)
      linea = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"} + linea;
    QElapsedTimer reloj;
    reloj.start();
    proceso.start(linea.takeFirst(), linea);
    EXPECT_TRUE(proceso.waitForFinished(60000)) << orden.toStdString();
    EXPECT_LT(reloj.elapsed(), kEnseguidaMs) << orden.toStdString();
    EXPECT_EQ(proceso.exitStatus(), QProcess::NormalExit) << orden.toStdString();
    return {proceso.exitCode(), QString::fromUtf8(proceso.readAllStandardOutput()),
            QString::fromUtf8(proceso.readAllStandardError())};
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

  QByteArray leer(const QString& nombre) const {
    QFile f(ruta(nombre));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
  }
  /// La remesa de ejemplo con sus registros tantas veces más, de 29 KB cada una.
  void escribirGrande(const QString& nombre, int veces) const {
    const QByteArray una = leer("entrada.Q19");
    QFile f(ruta(nombre));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write(una + una.mid(602 * 2).repeated(veces)) > 0);
  }
  /// Los temporales que han quedado.
  Nombres temporales() const {
    return QDir(carpeta_.path()).entryList({".*.unirq19-tmp"}, QDir::Files | QDir::Hidden);
  }
  /// Una remesa de una sola línea sin fin, que no ocupa disco y se tarda en leer.
  void escribirLarga(const QString& nombre, qint64 bytes) const {
    QFile f(ruta(nombre));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write("0119143001") == 10 && f.resize(bytes));
  }

  static constexpr const char* kFoto =
      "find . -printf '%p %y %m %l ' -type f -exec sha256sum {} \\; -o -printf '\\n'";
  QTemporaryDir carpeta_;
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

TEST_F(FallosConsola, DiscoLleno) {
  QFile guion(ruta("disco.sh"));
  ASSERT_TRUE(guion.open(QIODevice::WriteOnly));
  guion.write(R"(set -e
mkdir -p d; mount -t tmpfs -o size=1m nada d
[ $# != 0 ] || exit 0
echo viejo >d/salida.Q19
! "$Q" "$1" -o d/salida.Q19 grande.Q19
ls -A d; cat d/salida.Q19
"$Q" "$1" -o d/salida.Q19 entrada.Q19 >&2
)");
  guion.close();
  const QString orden =
      u"export Q; unshare --mount %1 bash disco.sh "_s.arg(::geteuid() == 0 ? "" : "--map-root-user");
  if (bash(orden).codigo != 0) GTEST_SKIP() << "aquí no se pueden montar discos";
  escribirGrande("grande.Q19", 400);
  for (const char* cual : {"unir", "listar"}) {
    const Salida s = bash(orden + cual);
    EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
    EXPECT_EQ(s.dicho, "salida.Q19\nviejo\n");
    EXPECT_TRUE(s.avisado.contains("d/salida.Q19: Disco lleno (error 61)")) << s.avisado.toStdString();
  }
}

// Sin salidas, lo que se dice no puede acabar en la remesa; con ellas llenas, se avisa.
TEST_F(FallosConsola, SalidasCerradasOLlenas) {
  ASSERT_EQ(bash("$Q unir -o bien entrada.Q19").codigo, 0);
  for (const char* cierre : {">&-", "2>&-", "<&- >&- 2>&-", ">/dev/full 2>/dev/full"}) {
    const Salida s = bash(u"$Q unir -o salida entrada.Q19 entrada.Q19 %1"_s.arg(cierre));
    EXPECT_EQ(s.codigo, 0) << cierre;
    EXPECT_EQ(leer("salida.Q19"), leer("bien.Q19")) << cierre;
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

TEST_F(FallosConsola, EnlacesYDosProgramasConUnNombre) {
  ASSERT_EQ(bash("mkdir sub; ln -s sub/otro.Q19 enlace.Q19; cat entrada.Q19 entrada.Q19 >doble.Q19;"
                 "$Q unir -o uno entrada.Q19 && $Q unir -o dos doble.Q19")
                .codigo,
            0);
  const QByteArray posibles[] = {leer("uno.Q19"), leer("dos.Q19")};
  ASSERT_NE(posibles[0], posibles[1]);
  for (int vuelta = 0; vuelta < 5; ++vuelta) {
    const Salida s = bash(
        "for f in entrada doble entrada doble; do $Q unir -o enlace $f.Q19 & done;"
        "for p in $(jobs -p); do wait $p || exit; done");
    EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
    EXPECT_TRUE(std::ranges::count(posibles, leer("sub/otro.Q19")) == 1);
    EXPECT_TRUE(QFileInfo(ruta("enlace.Q19")).isSymLink());
    EXPECT_EQ(QDir(ruta("sub")).entryList(QDir::Files | QDir::Hidden), Nombres{"otro.Q19"});
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
  EXPECT_EQ(leer("z.Q19"), "viejo\n");
  EXPECT_EQ(leer("lejos/z.Q19").count('\n'), 45 + 4 * 20 + 5);
}

// Con poca memoria el listado sale entero, o con el error 7 y sin dejar nada.
TEST_F(FallosConsola, ListarSinMemoria) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "los saneadores apartan más memoria de la que hay";
#endif
  escribirGrande("grande.Q19", 200);
  const auto listar = [&](int megas, const char* nombre) {
    return bash(u"prlimit --as=%1 $Q listar -o l.pdf %2 2>&1; echo $?"_s.arg(qint64{megas} << 20).arg(nombre))
        .dicho;
  };
  const QString hecho = "Escrito: l.pdf\n0\n";
  int megas = 50;
  while (listar(megas, "entrada.Q19") != hecho)
    ASSERT_LT(megas += 3, 1000);  // hasta que le llega para arrancar
  ASSERT_EQ(bash("rm -f l.pdf .*.unirq19-tmp").codigo, 0);
  int fallidos = 0;
  for (QString dicho; (dicho = listar(megas, "grande.Q19")) != hecho; megas += 3, ++fallidos) {
    EXPECT_TRUE(dicho.endsWith("Memoria insuficiente (error 7)\n1\n")) << megas << dicho.toStdString();
    EXPECT_EQ(temporales(), Nombres{}) << megas;
    EXPECT_FALSE(QFile::exists(ruta("l.pdf")));
  }
  EXPECT_GE(fallidos, 2);
}

/// Una unión detenida a media lectura de `nombre`; deja de estarlo con `seguir`.
class Detenida {
 public:
  Detenida(const QString& carpeta, const QString& nombre, const QString& salida) {
    for (int intento = 0; intento < 50 && !detenida(); ++intento) {
      proceso_.waitForFinished();
      proceso_.setWorkingDirectory(carpeta);
      proceso_.start(PROGRAMA_Q19, {"unir", "-o", salida, nombre});
      EXPECT_TRUE(proceso_.waitForStarted());
      while (proceso_.state() == QProcess::Running && leidos(nombre) <= kCabeza)
        proceso_.waitForFinished(0);
      if (proceso_.state() != QProcess::Running) continue;
      ::kill(static_cast<pid_t>(proceso_.processId()), SIGSTOP);
      QThread::msleep(20);
      const qint64 van = leidos(nombre);
      detenida_ = van > kCabeza && van < QFileInfo(carpeta + '/' + nombre).size() / 2;
      if (!detenida_) ::kill(static_cast<pid_t>(proceso_.processId()), SIGCONT);
    }
    EXPECT_TRUE(detenida_);
  }
  bool detenida() const { return detenida_; }
  Salida seguir() {
    ::kill(static_cast<pid_t>(proceso_.processId()), SIGCONT);
    EXPECT_TRUE(proceso_.waitForFinished(60000));
    EXPECT_EQ(proceso_.exitStatus(), QProcess::NormalExit);
    return {proceso_.exitCode(), QString::fromUtf8(proceso_.readAllStandardOutput()),
            QString::fromUtf8(proceso_.readAllStandardError())};
  }

 private:
  // Más de lo que se lee, antes de unir, para saber si es una remesa: cambiado entonces, se une lo cambiado.
  static constexpr qint64 kCabeza = qint64{8} << 20;

  /// Bytes que lleva leídos del fichero; 0 si no lo tiene abierto.
  qint64 leidos(const QString& nombre) const {
    const QString procesos = u"/proc/%1/"_s.arg(proceso_.processId());
    for (int fd = 3; fd < 16; ++fd) {
      const QString enlace = QFile::symLinkTarget(procesos + u"fd/%1"_s.arg(fd));
      QFile datos(procesos + u"fdinfo/%1"_s.arg(fd));
      if (enlace.endsWith('/' + nombre) && datos.open(QIODevice::ReadOnly))
        return datos.readLine().mid(4).trimmed().toLongLong();
    }
    return 0;
  }

  QProcess proceso_;
  bool detenida_ = false;
};

TEST_F(FallosConsola, LaEntradaOLaCarpetaCambianALaMitad) {
  constexpr qint64 kLarga = qint64{400} << 20;
  const struct {
    const char *cambio, *mensaje;
  } casos[] = {
      {"truncate -s 1M larga.Q19",
       "larga.Q19: La entrada de datos sobrepasa el final del archivo: otro programa lo "
       "ha cortado (error 62)"},
      {"echo más >>larga.Q19",
       "larga.Q19: Error de acceso a la ruta o el archivo: otro programa lo está cambiando "
       "(error 75)"},
      {"echo más | dd of=larga.Q19 conv=notrunc seek=1", "otro programa lo está cambiando (error 75)"},
      {"rm -r donde", "donde/salida.Q19: No se encontró la ruta de acceso (error 76)"},
      {"rm larga.Q19", nullptr},
      {"cp entrada.Q19 otra && mv otra larga.Q19", nullptr},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.cambio);
    ASSERT_EQ(bash("mkdir -p donde; rm -f donde/*").codigo, 0);
    escribirLarga("larga.Q19", kLarga);
    Detenida union_(carpeta_.path(), "larga.Q19", "donde/salida");
    bash(caso.cambio);
    const Salida s = union_.seguir();
    // Borrado o cambiado por otro, el que se leía es todavía el de antes, entero: una línea de 400 MB.
    EXPECT_EQ(s.codigo, caso.mensaje == nullptr ? 0 : 1) << s.avisado.toStdString();
    EXPECT_TRUE(s.avisado.contains(caso.mensaje == nullptr ? "aviso: 1 registro de más de 600 posiciones"
                                                           : caso.mensaje))
        << s.avisado.toStdString();
    EXPECT_EQ(leer("donde/salida.Q19").size(), caso.mensaje == nullptr ? 602 : 0);
    EXPECT_LE(QDir(ruta("donde")).entryList(QDir::Files | QDir::Hidden).size(), 1);
  }
}

// El temporal de un programa que vive, aunque esté parado, se respeta; el de uno muerto, no.
TEST_F(FallosConsola, SoloSeQuitanLosTemporalesDeLosMuertos) {
  escribirLarga("larga.Q19", qint64{400} << 20);
  Detenida parada(carpeta_.path(), "larga.Q19", "salida");
  const Nombres suyo = temporales();
  ASSERT_EQ(suyo.size(), 1);
  ASSERT_EQ(bash("touch .f.1-0.unirq19-tmp && chmod 200 .f.1-0.unirq19-tmp && chown 65534 .f.1-0.unirq19-tmp;"
                 "ln -s entrada.Q19 .e.unirq19-tmp; mkdir .c.unirq19-tmp; mkfifo .p.unirq19-tmp")
                .codigo,
            0);
  EXPECT_EQ(bash("$Q unir -o salida entrada.Q19", true).codigo, 0);
  EXPECT_EQ(temporales(), (Nombres{".e.unirq19-tmp"} + suyo)) << "un enlace no es temporal suyo";
  EXPECT_EQ(parada.seguir().codigo, 0);
  EXPECT_EQ(leer("salida.Q19").size(), 602);
  EXPECT_EQ(temporales(), Nombres{".e.unirq19-tmp"});
}

// FALLOS_MUERTES: cuántas.
TEST_F(FallosConsola, UnaMuerteAlUnirDejaLoViejoOLoNuevo) {
  escribirGrande("a.Q19", 60);
  escribirGrande("b.Q19", 61);
  QElapsedTimer reloj;
  ASSERT_EQ(bash("$Q unir -o bien_a a.Q19").codigo, 0);
  reloj.start();
  ASSERT_EQ(bash("$Q unir -o bien_b b.Q19").codigo, 0);
  const auto dura = static_cast<unsigned>(reloj.elapsed() * 1000);
  const QByteArray bien[] = {leer("bien_a.Q19"), leer("bien_b.Q19")};
  QByteArray queda = leer("salida.Q19");
  const int muertes = qEnvironmentVariableIntValue("FALLOS_MUERTES") > 0
                          ? qEnvironmentVariableIntValue("FALLOS_MUERTES")
                          : 200;
  std::mt19937 azar(1914);  // NOLINT: que se pueda repetir
  int aMedias = 0, cambios = 0;
  for (int i = 0; i < muertes; ++i) {
    QProcess proceso;
    proceso.setWorkingDirectory(carpeta_.path());
    const Nombres antes = temporales();
    proceso.start(PROGRAMA_Q19, {"unir", "-o", "salida", i % 2 == 0 ? "a.Q19" : "b.Q19"});
    ASSERT_TRUE(proceso.waitForStarted());
    // Las más de las veces, cuando ya escribe: si no, casi todas caerían al arrancar.
    while (i % 4 != 0 && proceso.state() == QProcess::Running && temporales() == antes)
      proceso.waitForFinished(0);
    QThread::usleep(azar() % dura);
    proceso.kill();
    proceso.waitForFinished();
    const QByteArray ahora = leer("salida.Q19");
    ASSERT_TRUE(ahora == queda || ahora == bien[i % 2]) << "muerte " << i << ": " << ahora.size() << " bytes";
    cambios += ahora != queda;
    queda = ahora;
    aMedias += !temporales().empty();
    ASSERT_LE(temporales().size(), 1) << "los quita el siguiente que guarda";
  }
  EXPECT_GT(aMedias, muertes / 20) << "apenas se ha matado a nadie guardando";
  EXPECT_GT(cambios, 0);
  EXPECT_EQ(bash("$Q unir -o salida a.Q19").codigo, 0);
  EXPECT_EQ(leer("salida.Q19"), bien[0]);
  EXPECT_EQ(temporales(), Nombres{});
}

TEST_F(FallosConsola, AjustesHostiles) {
  const QByteArray buenos = leer("bin/Tarvo.INI");
  QByteArray azar;
  std::mt19937 numeros(5000);  // NOLINT: que se pueda repetir
  for (int i = 0; i < 300'000; ++i)
    azar += static_cast<char>(numeros());
  QByteArray secciones;
  for (int i = 0; i < 5000; ++i)
    secciones += "[Sección " + QByteArray::number(i) + "]\r\nClave=" + QByteArray(60, 'x') + "\r\n";
  const QByteArray casos[] = {azar, secciones + buenos, buenos + secciones, azar + "\r\n" + buenos};
  for (const QByteArray& caso : casos) {
    QFile f(ruta("bin/Tarvo.INI"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(caso) == caso.size());
    f.close();
    const Salida s = bash("$Q ver entrada.Q19 --registro 3");
    EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
    EXPECT_EQ(s.dicho.contains("Registro 3: Adeudo individual"), caso != azar) << s.dicho.toStdString();
  }
  QFile f(ruta("bin/Tarvo.INI"));
  ASSERT_TRUE(f.resize(100 << 20));
  const Salida grande = bash("$Q ver entrada.Q19 --registro 3");
  EXPECT_EQ(grande.codigo, 0);
  EXPECT_EQ(grande.avisado.count("Tarvo.INI: no se ha leído porque pasa de 4 MB"), 1)
      << grande.avisado.toStdString();
  for (const char* estorbo : {"mkdir", "mkfifo", "ln -s /dev/zero", ":"}) {
    const Salida s = bash(u"rm -rf bin/Tarvo.INI; %1 bin/Tarvo.INI; $Q ver entrada.Q19"_s.arg(estorbo));
    EXPECT_EQ(s.codigo, 1) << estorbo;
    EXPECT_TRUE(s.avisado.contains("bin/Tarvo.INI: No se encontró el archivo (error 53)"))
        << s.avisado.toStdString();
  }
}

/// Megas que llega a ocupar el programa.
long Memoria(const QString& carpeta, std::initializer_list<const char*> argumentos) {
  const pid_t hijo = ::fork();
  if (hijo == 0) {
    std::vector<const char*> lista{PROGRAMA_Q19};
    lista.insert(lista.end(), argumentos);
    lista.push_back(nullptr);
    ::setenv("ASAN_OPTIONS", "detect_leaks=0:quarantine_size_mb=1", 1);  // lo soltado no cuenta
    const int nada = ::open("/dev/null", O_WRONLY);
    if (::chdir(carpeta.toLocal8Bit().constData()) == 0 && ::dup2(nada, 1) == 1 && ::dup2(nada, 2) == 2)
      ::execv(PROGRAMA_Q19, const_cast<char* const*>(lista.data()));
    ::_exit(127);
  }
  int estado = -1;
  struct rusage uso {};
  EXPECT_EQ(::wait4(hijo, &estado, 0, &uso), hijo);
  EXPECT_EQ(estado, 0);
  return uso.ru_maxrss / 1024;
}

TEST_F(FallosConsola, LaMemoriaNoDependeDelTamano) {
  // 54.000 adeudos, 32 MB; y 100 MB sin un fin de línea.
  escribirGrande("muchos.Q19", 1200);
  escribirLarga("larga.Q19", 100 << 20);
  for (const char* grande : {"muchos.Q19", "larga.Q19"}) {
    EXPECT_LE(Memoria(carpeta_.path(), {"unir", "-o", "salida", grande}),
              Memoria(carpeta_.path(), {"unir", "-o", "salida", "entrada.Q19"}) + 6)
        << grande;
    EXPECT_LE(Memoria(carpeta_.path(), {"ver", "--registro", "1", grande}),
              Memoria(carpeta_.path(), {"ver", "--registro", "1", "entrada.Q19"}) + 6)
        << grande;
  }
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
  const QString visto = bash(terminal.arg("$Q unir -o salida entrada.Q19")).dicho;
  EXPECT_TRUE(visto.contains(QRegularExpression("\rLlevando al disco salida.Q19…\r +\rFicheros: 1\r")))
      << visto.toStdString();
  EXPECT_EQ(bash("$Q unir -o salida entrada.Q19").avisado, "");
}

}  // namespace
