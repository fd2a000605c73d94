#include "ventanas/principal/Navegador.h"

#include <QDir>
#include <QFile>
#include <QScrollBar>
#include <QStorageInfo>
#include <QTemporaryDir>

#include "VentanaPrincipal.h"
#include "ventanas/principal/Patrones.h"

using namespace principal;

namespace {

using namespace Qt::StringLiterals;

struct Listas {
  Listas() {
    QObject::connect(&navegador, &Navegador::elegido, [this](const QString& ruta) { elegidos << ruta; });
    for (QWidget* lista : std::initializer_list<QWidget*>{&discos, &carpetas, &ficheros})
      lista->show();
  }
  QStringList nombres(const QAbstractItemView& vista) const {
    QStringList todos;
    for (int i = 0; i < vista.model()->rowCount(); ++i)
      todos << vista.model()->index(i, 0).data().toString();
    return todos;
  }
  ListaDiscos discos;
  ListaCarpetas carpetas;
  ListaFicheros ficheros;
  Navegador navegador{&discos, &carpetas, &ficheros, nullptr};
  QStringList elegidos;
};

class Navegacion : public testing::Test {
 protected:
  void SetUp() override {
    raiz = QDir(temporal.path()).canonicalPath();
    for (const char* carpeta : {"a & <b>", "dentro", ".oculta"})
      QDir(raiz).mkdir(QString::fromUtf8(carpeta));
    for (const char* fichero : {"b.Q19", "a.q19", "nota.txt", ".oculto.Q19", "dentro/c.Q19"})
      crear(fichero);
  }
  void crear(const char* nombre) {
    QFile fichero(raiz + '/' + QString::fromUtf8(nombre));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
  }
  QTemporaryDir temporal;
  QString raiz;
};

}  // namespace

TEST(Patrones, SinDistinguirMayusculasYSeparadosPorPuntoYComa) {
  struct Caso {
    const char *nombre, *patrones;
    bool cumple;
  };
  for (const auto& [nombre, patrones, cumple] :
       std::initializer_list<Caso>{{"a.q19", "*.Q19", true},
                                   {"a.q190", "*.Q19", false},
                                   {"aq19", "*.Q19", false},
                                   {"x.TXT", "*.q19; *.txt", true},
                                   {"sin punto", "*.*", true},
                                   {"AB.q19", "a?.q19", true},
                                   {"A.q19", "a?.q19", false},
                                   {"[1].q19", "[1].q19", true},
                                   {"1.q19", "[1].q19", false},
                                   {"PEÑA.q19", "peña.*", true},
                                   {"a.q19", "", false},
                                   {"a.q19", " ; ", false},
                                   {"a.Q19.bak", "*.q19;*.ba", false},
                                   {"a\nb.q19", "*.q19", true}})
    EXPECT_EQ(CumplePatron(QString::fromUtf8(nombre), QString::fromUtf8(patrones)), cumple)
        << nombre << " | " << patrones;
}

TEST_F(Navegacion, ArranqueDesdeLosAjustes) {
  Listas l;
  l.navegador.iniciar("C:", raiz, "*.Q19");
  EXPECT_EQ(l.carpetas.ruta(), raiz);
  EXPECT_EQ(l.nombres(l.ficheros), QStringList({"a.q19", "b.Q19"}));
  EXPECT_EQ(l.nombres(l.carpetas).mid(l.nombres(l.carpetas).size() - 3),
            QStringList({QDir(raiz).dirName(), "a & <b>", "dentro"}));
  EXPECT_EQ(l.discos.unidad(), QStorageInfo(raiz).rootPath());
  EXPECT_EQ(l.discos.currentData().toString(), l.discos.unidad());
  for (const QString& origen : {QString(), raiz + "/no existe", raiz + "/b.Q19", u"D:\\Remesas"_s}) {
    Listas otras;
    otras.navegador.iniciar("C:", origen, "*.Q19");
    EXPECT_EQ(otras.carpetas.ruta(), QDir(QDir::homePath()).absolutePath()) << origen.toStdString();
  }
}

TEST_F(Navegacion, EntrarSubirYLoQueNoSePuedeAbrir) {
  Listas l;
  l.navegador.iniciar({}, raiz, "*.q19");
  const auto punto = [&](const char* nombre) {
    return l.carpetas.visualItemRect(l.carpetas.findItems(nombre, Qt::MatchExactly).constLast()).center();
  };
  QTest::mouseClick(l.carpetas.viewport(), Qt::LeftButton, {}, punto("dentro"));
  EXPECT_EQ(l.carpetas.ruta(), raiz) << "un clic solo señala";
  QTest::mouseDClick(l.carpetas.viewport(), Qt::LeftButton, {}, punto("dentro"));
  EXPECT_EQ(l.carpetas.ruta(), raiz + "/dentro");
  EXPECT_EQ(l.nombres(l.ficheros), QStringList{"c.Q19"});
  QTest::keyClick(&l.carpetas, Qt::Key_Up);
  QTest::keyClick(&l.carpetas, Qt::Key_Return);
  EXPECT_EQ(l.carpetas.ruta(), raiz);
  EXPECT_FALSE(l.carpetas.ponerRuta(raiz + "/nada"));
  EXPECT_FALSE(l.carpetas.ponerRuta(raiz + "/b.Q19"));
  EXPECT_EQ(l.carpetas.ruta(), raiz);
  EXPECT_EQ(l.ficheros.model()->rowCount(), 2);
  EXPECT_TRUE(l.ficheros.isEnabled() && l.carpetas.isEnabled());
  EXPECT_TRUE(l.elegidos.isEmpty());

  // Una ayuda técnica selecciona: en las carpetas es entrar y en los ficheros, elegir.
  const QModelIndex dentro = l.carpetas.model()->index(l.carpetas.count() - 1, 0);
  l.carpetas.selectionModel()->select(dentro, QItemSelectionModel::ClearAndSelect);
  QCoreApplication::processEvents();
  EXPECT_EQ(l.carpetas.ruta(), raiz + "/dentro");
  l.ficheros.selectionModel()->select(l.ficheros.model()->index(0, 0), QItemSelectionModel::Select);
  QCoreApplication::processEvents();
  EXPECT_EQ(l.elegidos, QStringList{raiz + "/dentro/c.Q19"});
}

TEST_F(Navegacion, ElegirConRatonYTeclas) {
  Listas l;
  l.navegador.iniciar({}, raiz, "*.q19;*.txt");
  const auto punto = [&](int fila) {
    return l.ficheros.visualRect(l.ficheros.model()->index(fila, 0)).center();
  };
  const auto elegidos = [&] {
    QStringList nombres;
    for (const QString& ruta : std::exchange(l.elegidos, {}))
      nombres << ruta.mid(raiz.size() + 1);
    return nombres.join(',').toStdString();
  };
  QTest::mouseClick(l.ficheros.viewport(), Qt::LeftButton, {}, punto(1));
  EXPECT_EQ(elegidos(), "b.Q19");
  QTest::mouseClick(l.ficheros.viewport(), Qt::LeftButton, {}, punto(1));
  EXPECT_EQ(elegidos(), "b.Q19") << "otra vez el mismo";
  QTest::mouseClick(l.ficheros.viewport(), Qt::LeftButton, {}, punto(0));
  QTest::mouseDClick(l.ficheros.viewport(), Qt::LeftButton, {}, punto(0));
  QTest::mouseRelease(l.ficheros.viewport(), Qt::LeftButton, {}, punto(0));
  EXPECT_EQ(elegidos(), "a.q19") << "un doble clic elige una vez";
  QTest::mouseClick(l.ficheros.viewport(), Qt::RightButton, {}, punto(1));
  QTest::mouseClick(l.ficheros.viewport(), Qt::LeftButton, {}, punto(2) + QPoint(0, 100));
  EXPECT_EQ(elegidos(), "") << "ni el otro botón ni el hueco";
  l.ficheros.marcar("a.q19");
  QTest::keyClick(&l.ficheros, Qt::Key_Down);
  QTest::keyClick(&l.ficheros, Qt::Key_Return);
  QTest::keyClick(&l.ficheros, Qt::Key_N);
  EXPECT_EQ(elegidos(), "b.Q19,b.Q19,nota.txt");
  // Con la tecla mantenida se elige al soltarla.
  for (int i = 0; i < 2; ++i) {
    QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Up, {}, QString(), true);
    QApplication::sendEvent(&l.ficheros, &repetida);
  }
  EXPECT_EQ(elegidos(), "");
  QTest::keyRelease(&l.ficheros, Qt::Key_Up);
  EXPECT_EQ(elegidos(), "a.q19");
}

TEST_F(Navegacion, LoQueCambiaFueraSeVe) {
  Listas l;
  l.navegador.iniciar({}, raiz + "/dentro", "*.q19");
  l.ficheros.marcar("c.Q19");
  crear("dentro/b.Q19");
  EXPECT_TRUE(QTest::qWaitFor([&] { return l.ficheros.model()->rowCount() == 2; }, 3000));
  EXPECT_EQ(l.ficheros.marcado(), "c.Q19");
  QDir(raiz + "/dentro").removeRecursively();
  EXPECT_TRUE(QTest::qWaitFor([&] { return l.carpetas.ruta() == raiz; }, 3000)) << "se abre la que queda";
  EXPECT_EQ(l.ficheros.model()->rowCount(), 2);
  EXPECT_TRUE(l.elegidos.isEmpty());
}
