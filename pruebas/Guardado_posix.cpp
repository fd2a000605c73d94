#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>

#include "Guardado.h"
#include "UsuarioCorriente.h"
#include "remesa/Fichero.h"

// Lo que leer y guardar deben a un sistema POSIX: permisos, enlaces, colas, señales.

using namespace remesa;
namespace fs = std::filesystem;
using pruebas::Guardados;
using pruebas::Nombres;
using pruebas::NumeroError;
using pruebas::UsuarioCorriente;

namespace {

TEST_F(Guardados, UnFicheroQueCambiaMientrasSeLeeEsUnError) {
  const std::string bytes(3 << 20, 'x');
  const struct {
    const char* que;
    std::function<void(const fs::path&)> cambio;
    int numero;
  } casos[] = {
      {"nada", [](const fs::path&) {}, 0},
      {"cortado", [](const fs::path& ruta) { fs::resize_file(ruta, 1 << 20); }, ficheros::kFinDeArchivo},
      {"crecido", [](const fs::path& ruta) { std::ofstream(ruta, std::ios::app) << "más"; },
       ficheros::kErrorDeAcceso},
      {"reescrito", [](const fs::path& ruta) { std::fstream(ruta, std::ios::in | std::ios::out) << "y"; },
       ficheros::kErrorDeAcceso},
      {"sustituido", [](const fs::path& ruta) { guardar(ruta, "otro"); }, 0},
  };
  for (const auto& caso : casos) {
    const auto ruta = escribir("f", bytes);
    // Como mucho, la fecha de un fichero se mueve con el reloj del sistema.
    fs::last_write_time(ruta, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const auto cambiar = [&](std::uintmax_t leidos, std::uintmax_t) {
      if (leidos == 1 << 20) caso.cambio(ruta);
    };
    EXPECT_EQ(NumeroError([&] { LeerFichero(ruta, cambiar); }), caso.numero) << caso.que;
  }
}

TEST_F(Guardados, SigueLosEnlacesSinDeshacerlos) {
  fs::create_directory(carpeta_ / "sub");
  fs::create_symlink("sub/f", carpeta_ / "enlace");
  fs::create_symlink("enlace", carpeta_ / "doble");
  fs::create_symlink("circular", carpeta_ / "circular");
  guardar(carpeta_ / "enlace", "nuevo");  // aún no lleva a ningún fichero
  guardar(carpeta_ / "doble", "otro");
  EXPECT_EQ(leer(carpeta_ / "sub" / "f"), "otro");
  EXPECT_TRUE(fs::is_symlink(carpeta_ / "enlace"));
  EXPECT_TRUE(fs::is_symlink(carpeta_ / "doble"));
  EXPECT_EQ(NumeroError([&] { guardar(carpeta_ / "circular", ""); }), ficheros::kErrorDeAcceso);
}

TEST_F(Guardados, LoQueNoSePuedeSustituirSeRechaza) {
  ASSERT_EQ(::mkfifo((carpeta_ / "cola").c_str(), 0600), 0);
  fs::create_directory(carpeta_ / "dir");
  const std::pair<fs::path, int> casos[] = {{carpeta_ / "dir", ficheros::kErrorDeAcceso},
                                            {carpeta_ / "dir" / "", ficheros::kErrorDeAcceso},
                                            {carpeta_ / "cola", ficheros::kErrorDeAcceso},
                                            {"/dev/null", ficheros::kErrorDeAcceso},
                                            {carpeta_ / "no" / "f", ficheros::kRutaNoEncontrada},
                                            {carpeta_ / std::string(300, 'x'), ficheros::kNombreIncorrecto},
                                            {"", ficheros::kErrorDeAcceso}};
  for (const auto& [ruta, numero] : casos)
    EXPECT_EQ(NumeroError([&, r = ruta] { guardar(r, "x"); }), numero) << ruta;
  EXPECT_EQ(nombres(), (Nombres{"cola", "dir"}));
  guardar(carpeta_ / std::string(255, 'y'), "x");
  ficheros::EscrituraSegura salida(carpeta_ / "dir" / "f");
  fs::remove_all(carpeta_ / "dir");
  EXPECT_EQ(NumeroError([&] { salida.confirmar(); }), ficheros::kRutaNoEncontrada);
}

TEST_F(Guardados, DeLosTemporalesSoloQuitaLosFicherosDeLosMuertos) {
  fs::permissions(carpeta_, fs::perms::all);
  const UsuarioCorriente usuario;
  fs::permissions(escribir(".f.1-0.unirq19-tmp", ""), fs::perms::owner_write);
  fs::create_symlink("f", carpeta_ / ".e.unirq19-tmp");
  fs::create_directory(carpeta_ / ".c.unirq19-tmp");
  ASSERT_EQ(::mkfifo((carpeta_ / ".p.unirq19-tmp").c_str(), 0600), 0);
  guardar(carpeta_ / "f", "x");
  guardar(carpeta_ / "g", "x");
  EXPECT_EQ(nombres(), (Nombres{".c.unirq19-tmp", ".e.unirq19-tmp", ".p.unirq19-tmp", "f", "g"}));
}

TEST_F(Guardados, ConservaPermisosYDueno) {
  const auto fichero = escribir("f", "viejo");
  fs::permissions(fichero, fs::perms(0640));
  const uid_t dueno = ::geteuid() == 0 ? 65534 : ::geteuid();
  ASSERT_EQ(::chown(fichero.c_str(), dueno, static_cast<gid_t>(-1)), 0);
  guardar(fichero, "nuevo");
  struct stat estado {};
  ASSERT_EQ(::stat(fichero.c_str(), &estado), 0);
  EXPECT_EQ(estado.st_mode & 07777u, 0640u);
  EXPECT_EQ(estado.st_uid, dueno);
  EXPECT_EQ(leer(fichero), "nuevo");
}

TEST_F(Guardados, UnaMuerteEnCualquierMomentoDejaLoViejoOLoNuevoEntero) {
  const auto fichero = carpeta_ / "f";
  const std::string contenidos[] = {std::string(400'000, 'a'), std::string(400'000, 'b')};
  guardar(fichero, contenidos[0]);
  bool quedoTemporal = false;
  for (unsigned vuelta = 0; vuelta < 30; ++vuelta) {
    const pid_t hijo = ::fork();
    if (hijo == 0) {
      for (std::size_t i = 1;; ++i)
        guardar(fichero, contenidos[i % 2]);
    }
    ::usleep(1000 + vuelta * 301);
    ::kill(hijo, SIGKILL);
    ASSERT_EQ(::waitpid(hijo, nullptr, 0), hijo);
    const std::string queda = leer(fichero);
    ASSERT_TRUE(queda == contenidos[0] || queda == contenidos[1]) << vuelta;
    quedoTemporal = quedoTemporal || nombres().size() > 1;
  }
  EXPECT_TRUE(quedoTemporal);  // si no, no se mató a nadie a medias
  guardar(carpeta_ / "otro", "x");
  EXPECT_EQ(nombres(), (Nombres{"f", "otro"}));
}

}  // namespace
