// El fichero de la agenda con varios programas a la vez, y con uno que muere al guardar.

#include <sys/wait.h>

#include <QDir>
#include <csignal>

#include "Carpeta.h"
#include "Registros.h"
#include "UsuarioCorriente.h"
#include "comunes/herramientas/FicheroAgenda.h"
#include "comunes/plataforma/Texto.h"

using namespace herramientas;

namespace {

using namespace Qt::StringLiterals;

QStringList Nombres(const Agenda& agenda) {
  QStringList nombres;
  for (const Contacto& contacto : agenda.contactos)
    nombres += contacto.datos[kNombre];
  return nombres;
}

class FicheroDeAgenda : public pruebas::Carpeta {
 protected:
  QString ruta() const { return comunes::DesdeRuta(carpeta_ / "datos" / "Telefonos.csv"); }
  Agenda leida() const {
    FicheroAgenda fichero(ruta());
    fichero.releer();
    return fichero.agenda();
  }
  static void anadir(FicheroAgenda& fichero, const QString& nombre) {
    const Contacto nuevo{ClaveNueva(), {nombre, {}, {}, {}}, {}};
    fichero.cambiar([&](Agenda& agenda) { Aplicar(agenda, {std::nullopt, nuevo}); });
  }
  /// Otro programa que añade contactos "letra 0", "letra 1"… hasta `cuantos`.
  pid_t otroPrograma(QChar letra, int cuantos) const {
    const pid_t hijo = ::fork();
    if (hijo != 0) return hijo;
    int fallo = 1;
    try {
      FicheroAgenda fichero(ruta());
      for (int i = 0; i < cuantos; ++i)
        anadir(fichero, u"%1 %2"_s.arg(letra).arg(i));
      fallo = 0;
    } catch (...) {
    }
    ::_exit(fallo);
  }
};

TEST_F(FicheroDeAgenda, DosProgramasALaVezNoPierdenNada) {
  constexpr int kCuantos = 20;
  const pid_t hijo = otroPrograma(u'a', kCuantos);
  FicheroAgenda propio(ruta());
  for (int i = 0; i < kCuantos; ++i)
    anadir(propio, u"c %1"_s.arg(i));
  int estado = -1;
  ASSERT_EQ(::waitpid(hijo, &estado, 0), hijo);
  EXPECT_EQ(estado, 0);
  QStringList nombres = Nombres(leida());
  EXPECT_EQ(nombres.removeDuplicates(), 0);
  EXPECT_EQ(nombres.size(), 2 * kCuantos);
  EXPECT_TRUE(propio.releer() || propio.agenda().contactos.size() == 2u * kCuantos);
}

TEST_F(FicheroDeAgenda, UnaMuerteAlGuardarDejaLoViejoOLoNuevo) {
  FicheroAgenda propio(ruta());
  anadir(propio, "primero");
  std::size_t contactos = 1;
  bool aMedias = false;
  // En un equipo lento puede costar más vueltas dar con uno a medio guardar.
  for (unsigned vuelta = 0; vuelta < 20 || (!aMedias && vuelta < 200); ++vuelta) {
    const pid_t hijo = otroPrograma(u'x', 1'000'000);
    ::usleep(3000 + vuelta * 707);
    ::kill(hijo, SIGKILL);
    ASSERT_EQ(::waitpid(hijo, nullptr, 0), hijo);
    aMedias = aMedias || QDir(QFileInfo(ruta()).path()).entryList(QDir::Files | QDir::Hidden).size() > 2;
    const Agenda queda = leida();
    // Cada contacto se guarda por separado: han de estar, enteros y en orden, los que le dio tiempo.
    for (std::size_t i = contactos; i < queda.contactos.size(); ++i)
      ASSERT_EQ(queda.contactos[i].datos[kNombre], u"x %1"_s.arg(i - contactos));
    ASSERT_GE(queda.contactos.size(), contactos);
    anadir(propio, "después");  // el cerrojo del muerto no estorba
    contactos = leida().contactos.size();
    ASSERT_EQ(contactos, queda.contactos.size() + 1);
  }
  EXPECT_TRUE(aMedias);  // si no, no se mató a nadie guardando
  EXPECT_EQ(QDir(QFileInfo(ruta()).path()).entryList(QDir::Files | QDir::Hidden),
            QStringList({"Telefonos.csv", "Telefonos.csv.lock"}));
}

// Solo la que no existe está vacía: sobre la que ahora no se deja mirar no se guarda.
TEST_F(FicheroDeAgenda, LaQueNoSeDejaMirarNoEstaVacia) {
  FicheroAgenda otra(ruta());
  anadir(otra, u"Ana"_s);
  std::filesystem::permissions(carpeta_, std::filesystem::perms::all);
  std::filesystem::permissions(carpeta_ / "datos", std::filesystem::perms::none);
  {
    const pruebas::UsuarioCorriente usuario;
    FicheroAgenda fichero(ruta());
    EXPECT_EQ(pruebas::NumeroError([&] { fichero.releer(); }), ficheros::kPermisoDenegado);
  }
  std::filesystem::permissions(carpeta_ / "datos", std::filesystem::perms::all);
  EXPECT_EQ(Nombres(leida()), QStringList("Ana"));
}

TEST_F(FicheroDeAgenda, LoQueNoSePuedeGuardarNoCambiaNada) {
  FicheroAgenda fichero(ruta());
  anadir(fichero, "Ana");
  std::filesystem::remove(carpeta_ / "datos" / "Telefonos.csv.lock");
  std::filesystem::create_directory(carpeta_ / "datos" / "Telefonos.csv.lock");
  EXPECT_EQ(pruebas::NumeroError([&] { anadir(fichero, "Eva"); }), ficheros::kErrorDeAcceso);
  std::filesystem::remove(carpeta_ / "datos" / "Telefonos.csv.lock");
  EXPECT_EQ(Nombres(fichero.agenda()), QStringList("Ana"));
  EXPECT_EQ(Nombres(leida()), QStringList("Ana"));
  escribir("datos/Telefonos.csv", "no es una agenda");
  EXPECT_EQ(pruebas::NumeroError([&] { anadir(fichero, "Eva"); }), ficheros::kFormatoNoValido);
  EXPECT_EQ(leer(carpeta_ / "datos" / "Telefonos.csv"), "no es una agenda");
  EXPECT_EQ(Nombres(fichero.agenda()), QStringList("Ana"));
}

}  // namespace
