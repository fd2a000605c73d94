#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "Guardado.h"
#include "UsuarioCorriente.h"
#include "remesa/Fichero.h"

// A quién deja entrar lo que se guarda y por qué enlaces no se llega a ello.

namespace fs = std::filesystem;
using pruebas::Guardados;
using pruebas::NumeroError;
using pruebas::UsuarioCorriente;

namespace {

constexpr uid_t kUsuario = 65534;
constexpr uid_t kOtro = 1;

TEST_F(Guardados, NoSigueElEnlaceQueOtroPusoEnUnaCarpetaCompartida) {
  if (::geteuid() != 0) GTEST_SKIP() << "hace falta el superusuario para dar ficheros a otros";
  const struct {
    uid_t deLaCarpeta, delEnlace;
    mode_t modo;
    bool seSigue;
  } casos[] = {
      {0, kOtro, 01777, false},    {0, kUsuario, 01777, true}, {kOtro, kOtro, 01777, true},
      {kUsuario, 0, 01777, false}, {0, kOtro, 0777, true},     {kUsuario, kOtro, 01775, true},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(testing::Message() << caso.deLaCarpeta << ' ' << caso.delEnlace << ' ' << caso.modo);
    fs::remove_all(carpeta_ / "comun");
    fs::create_directory(carpeta_ / "comun");
    fs::create_symlink("../ajeno", carpeta_ / "comun" / "enlace");
    const auto ajeno = escribir("ajeno", "viejo");
    fs::permissions(ajeno, fs::perms(0666));
    fs::permissions(carpeta_, fs::perms::all);
    ASSERT_EQ(::lchown((carpeta_ / "comun" / "enlace").c_str(), caso.delEnlace, 0), 0);
    ASSERT_EQ(::chown((carpeta_ / "comun").c_str(), caso.deLaCarpeta, 0), 0);
    ASSERT_EQ(::chmod((carpeta_ / "comun").c_str(), caso.modo), 0);
    const UsuarioCorriente usuario;
    const int numero = caso.seSigue ? 0 : ficheros::kPermisoDenegado;
    EXPECT_EQ(NumeroError([&] { remesa::LeerFichero(carpeta_ / "comun" / "enlace"); }), numero);
    EXPECT_EQ(NumeroError([&] { guardar(carpeta_ / "comun" / "enlace", "nuevo"); }), numero);
    EXPECT_EQ(leer(ajeno), caso.seSigue ? "nuevo" : "viejo");
  }
}

constexpr const char* kLista = "system.posix_acl_access";

/// Lista de control: dueño y `usuario` con lectura y escritura, el grupo y los demás con lo dado.
std::string ListaDeControl(uid_t usuario, std::uint16_t grupo, std::uint16_t otros) {
  const struct {
    std::uint16_t clase, permisos;
    std::uint32_t numero;
  } entradas[] = {{0x01, 6, ~0u}, {0x02, 6, usuario}, {0x04, grupo, ~0u}, {0x10, 6, ~0u}, {0x20, otros, ~0u}};
  return std::string("\2\0\0\0", 4) + std::string(reinterpret_cast<const char*>(entradas), sizeof entradas);
}

std::string ListaDe(const fs::path& ruta) {
  std::string lista(256, '\0');
  const ssize_t largo = ::getxattr(ruta.c_str(), kLista, lista.data(), lista.size());
  return lista.substr(0, largo < 0 ? 0 : static_cast<std::size_t>(largo));
}

mode_t Modo(const fs::path& ruta) {
  struct stat estado {};
  return ::stat(ruta.c_str(), &estado) == 0 ? estado.st_mode & 07777u : 0;
}

// La carpeta reparte derechos a `kOtro`: solo son de lo que se crea en ella, no de lo que ya había.
TEST_F(Guardados, LoGuardadoNoGanaDerechos) {
  const auto sin = escribir("sin", "viejo");
  const auto con = escribir("con", "viejo");
  ASSERT_EQ(::chmod(sin.c_str(), 0640), 0);
  const std::string suya = ListaDeControl(kUsuario, 4, 0);
  const std::string deLaCarpeta = ListaDeControl(kOtro, 6, 4);
  if (::setxattr(con.c_str(), kLista, suya.data(), suya.size(), 0) != 0)
    GTEST_SKIP() << "aquí los ficheros no tienen listas de control";
  ASSERT_EQ(
      ::setxattr(carpeta_.c_str(), "system.posix_acl_default", deLaCarpeta.data(), deLaCarpeta.size(), 0), 0);
  for (const auto& fichero : {sin, con, carpeta_ / "nuevo"})
    guardar(fichero, "nuevo");
  EXPECT_EQ(ListaDe(sin), "");
  EXPECT_EQ(Modo(sin), 0640u);
  EXPECT_EQ(ListaDe(con), suya);
  EXPECT_EQ(ListaDe(carpeta_ / "nuevo"), deLaCarpeta);

  // Quien no puede dar el fichero a su dueño ni a su grupo tampoco da al suyo lo que era de aquel.
  if (::geteuid() != 0) return;
  constexpr gid_t kGrupoDeNadie = 4242;
  ASSERT_EQ(::chmod(sin.c_str(), 0662), 0);
  for (const auto& fichero : {sin, con})
    ASSERT_EQ(::chown(fichero.c_str(), 0, kGrupoDeNadie), 0);
  fs::permissions(carpeta_, fs::perms::all);
  {
    const UsuarioCorriente usuario;
    EXPECT_EQ(NumeroError([&] { guardar(sin, "otro"); }), 0);
    EXPECT_EQ(NumeroError([&] { guardar(con, "otro"); }), 0);
  }
  EXPECT_EQ(Modo(sin), 0622u);
  EXPECT_EQ(ListaDe(con), ListaDeControl(kUsuario, 0, 0));
}

}  // namespace
