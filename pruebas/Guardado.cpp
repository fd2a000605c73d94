#include "remesa/Guardado.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>

#include "Registros.h"

using namespace remesa;
namespace fs = std::filesystem;
using pruebas::Lista;
using pruebas::NumeroError;
using pruebas::UsuarioCorriente;

namespace {

using Nombres = std::vector<std::string>;

class Guardados : public pruebas::Carpeta {
 protected:
  static void guardar(const fs::path& destino, std::string_view bytes) {
    EscrituraSegura salida(destino);
    salida.escribir(bytes);
    salida.confirmar();
  }
};

TEST_F(Guardados, CadaRegistroOcupa600YAcabaEnCRLF) {
  const std::string justo(600, 'j'), corto(598, 'c'), largo(610, 'l');
  GuardarRemesa(carpeta_ / "r.Q19", Lista({justo, corto, largo, ""}));
  EXPECT_EQ(leer(carpeta_ / "r.Q19"), justo + "\r\n" + corto + "  \r\n" + std::string(600, 'l') + "\r\n" +
                                          std::string(600, ' ') + "\r\n");
  GuardarRemesa(carpeta_ / "r.Q19", {});
  EXPECT_EQ(leer(carpeta_ / "r.Q19"), "");
  EXPECT_EQ(nombres(), Nombres{"r.Q19"});
}

TEST_F(Guardados, MezclaTrozosGrandesYPequenosEnOrden) {
  EscrituraSegura salida(carpeta_ / "f");
  std::string todo;
  for (const std::size_t largo :
       {1ul, 300'000ul, 2ul, 1'048'576ul, 0ul, 5ul, 3'000'000ul, 1'048'575ul, 7ul}) {
    const std::string trozo(largo, static_cast<char>('a' + largo % 23));
    salida.escribir(trozo);
    todo += trozo;
  }
  salida.confirmar();
  EXPECT_EQ(leer(carpeta_ / "f"), todo);
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
  EXPECT_EQ(NumeroError([&] { guardar(carpeta_ / "circular", ""); }), 75);
}

TEST_F(Guardados, LoQueNoSePuedeSustituirSeRechaza) {
  ASSERT_EQ(::mkfifo((carpeta_ / "cola").c_str(), 0600), 0);
  fs::create_directory(carpeta_ / "dir");
  const std::pair<fs::path, int> casos[] = {{carpeta_ / "dir", 75},
                                            {carpeta_ / "dir" / "", 75},
                                            {carpeta_ / "cola", 75},
                                            {"/dev/null", 75},
                                            {carpeta_ / "no" / "f", 76},
                                            {carpeta_ / std::string(300, 'x'), 52},
                                            {"", 75}};
  for (const auto& [ruta, numero] : casos)
    EXPECT_EQ(NumeroError([&, r = ruta] { guardar(r, "x"); }), numero) << ruta;
  EXPECT_EQ(nombres(), (Nombres{"cola", "dir"}));
  guardar(carpeta_ / std::string(255, 'y'), "x");
}

TEST_F(Guardados, RespetaLaProteccionContraEscritura) {
  fs::permissions(carpeta_, fs::perms::all);
  const UsuarioCorriente usuario;
  const auto fichero = escribir("f", "viejo");
  fs::permissions(fichero, fs::perms::owner_read);
  EXPECT_EQ(NumeroError([&] { guardar(fichero, "nuevo"); }), 70);
  fs::permissions(fichero, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_directory(carpeta_ / "cerrada");
  std::ofstream(carpeta_ / "cerrada" / "g") << "viejo";
  fs::permissions(carpeta_ / "cerrada", fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_EQ(NumeroError([&] { guardar(carpeta_ / "cerrada" / "g", "nuevo"); }), 70);
  EXPECT_EQ(leer(carpeta_ / "cerrada" / "g"), "viejo");
  EXPECT_EQ(leer(fichero), "viejo");
  EXPECT_EQ(nombres(), (Nombres{"cerrada", "f"}));
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

TEST_F(Guardados, UnDiscoLlenoDejaElFicheroComoEstaba) {
  const auto fichero = escribir("f", "viejo");
  std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit antes {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &antes), 0);
  struct rlimit poco = antes;
  poco.rlim_cur = 100'000;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &poco), 0);
  const ListaRegistros lista = Lista(std::vector<std::string>(1000, std::string(600, 'x')));
  const int numero = NumeroError([&] { GuardarRemesa(fichero, lista); });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &antes), 0);
  EXPECT_EQ(numero, 61);
  EXPECT_EQ(leer(fichero), "viejo");
  EXPECT_EQ(nombres(), Nombres{"f"});
  EXPECT_EQ(lista.size(), 1000u);
}

TEST_F(Guardados, SinConfirmarNoQuedaNada) {
  const auto fichero = escribir("f", "viejo");
  {
    EscrituraSegura salida(fichero);
    salida.escribir(std::string(2 << 20, 'x'));
    EXPECT_EQ(nombres().size(), 2u);
  }
  EXPECT_EQ(NumeroError([&] {
              GuardarRemesa(fichero, Lista(std::vector<std::string>(5000, "x")),
                            [](std::size_t, std::size_t) { throw ErrorEjecucion(18); });
            }),
            18);
  EXPECT_EQ(leer(fichero), "viejo");
  EXPECT_EQ(nombres(), Nombres{"f"});
}

TEST_F(Guardados, NoBorraElTemporalDeUnProgramaVivo) {
  EscrituraSegura uno(carpeta_ / "f");
  uno.escribir("uno");
  guardar(carpeta_ / "f", "dos");
  guardar(carpeta_ / "g", "tres");
  uno.confirmar();
  EXPECT_EQ(leer(carpeta_ / "f"), "uno");
  EXPECT_EQ(nombres(), (Nombres{"f", "g"}));
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
