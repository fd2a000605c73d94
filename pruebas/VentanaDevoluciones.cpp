#include "ventanas/devoluciones/VentanaDevoluciones.h"

#include <QClipboard>
#include <QDateEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableView>

#include "VentanaPrincipal.h"
#include "comunes/plataforma/Formatos.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

const QString kEjemplos = u"" DIR_EJEMPLOS u"/"_s;

class PruebaDevoluciones : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    comunes::PonerFechaActual(QDate(2026, 12, 9));
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
  }
  void TearDown() override {
    comunes::PonerFechaActual({});
    comunes::PonerLocaleUsuario({});
    Carpeta::TearDown();
  }
  void copiar(const char* ejemplo, const char* nombre) const {
    std::filesystem::copy(std::string(DIR_EJEMPLOS "/devoluciones/") + ejemplo, carpeta_ / nombre);
  }
};

/// La ventana de devoluciones, por sus controles.
struct Devueltas {
  explicit Devueltas(ventanas::VentanaDevoluciones* v) : ventana(v) {
    if (v != nullptr) visor = v->findChild<QTableView*>("Visor");
    QTest::qWait(0);
  }
  template <class Control = QPushButton>
  Control* hijo(const char* nombre) const {
    return ventana->findChild<Control*>(QLatin1String(nombre));
  }
  QString celda(int fila, int columna) const {
    return visor->model()->index(fila, columna).data().toString();
  }
  QVariant marca(int fila) const { return visor->model()->index(fila, 0).data(Qt::CheckStateRole); }
  int filas() const { return visor->model()->rowCount(); }
  QString texto(const char* etiqueta) const { return hijo<QLabel>(etiqueta)->text(); }
  void pulsar(const char* boton) const { QTest::mouseClick(hijo(boton), Qt::LeftButton); }

  ventanas::VentanaDevoluciones* ventana;
  QTableView* visor = nullptr;
};

struct ConFicheros {
  explicit ConFicheros(const QStringList& rutas)
      : anterior(
            comunes::PonerSelectorFicheros([rutas](const comunes::PeticionFicheros&) { return rutas; })) {}
  ~ConFicheros() { comunes::PonerSelectorFicheros(anterior); }
  comunes::SelectorFicheros anterior;
};

TEST_F(PruebaDevoluciones, FiltraBuscaMarcaYOrdena) {
  ventanas::VentanaDevoluciones ventana;
  ventana.show();
  {
    Cajas cajas{"Aceptar"};
    ventana.anadir({kEjemplos + u"devoluciones/gimnasio-devueltos.Q19"_s, kEjemplos + u"falta.Q19"_s,
                    kEjemplos + u"devoluciones/comunidad-anotaciones.xml"_s});
    EXPECT_TRUE(cajas.Mensaje(0).startsWith(u"falta.Q19: "_s));
  }
  const Devueltas d(&ventana);
  ASSERT_EQ(d.filas(), 9);
  EXPECT_EQ(d.texto("Total"), u"9 adeudos, 476,10 €"_s);
  EXPECT_EQ(d.texto("Marcadas"), u"Para otra vez: 4 adeudos, 218,10 €"_s);
  EXPECT_EQ(d.hijo<QPlainTextEdit>("Avisos")->toPlainText(),
            u"comunidad-anotaciones.xml: 1 anotación que no es una devolución: no se enseña."_s);
  EXPECT_EQ(d.hijo<QDateEdit>("FechaCobro")->date(), QDate(2026, 12, 10));
  EXPECT_EQ(d.marca(8), QVariant()) << "no se puede marcar lo que no admite otro intento";

  d.hijo<QListWidget>("PorMotivo")->setCurrentRow(1);
  EXPECT_EQ(d.filas(), 3);
  EXPECT_EQ(d.texto("Cuenta"), u"3 de 9 devoluciones"_s);
  QTest::keyClicks(d.hijo<QLineEdit>("Buscado"), u"pena 9981"_s.left(4));
  EXPECT_EQ(d.filas(), 1);
  EXPECT_EQ(d.celda(0, 1), "Inigo Zubia Pena");
  d.hijo<QListWidget>("PorMotivo")->setCurrentRow(0);
  d.hijo<QLineEdit>("Buscado")->setText(u"9991 0003"_s);
  EXPECT_EQ(d.filas(), 0);
  d.hijo<QLineEdit>("Buscado")->clear();
  EXPECT_EQ(d.filas(), 9);

  // Por importe, y la casilla sigue siendo de su devolución.
  emit d.visor->horizontalHeader()->sectionClicked(2);
  EXPECT_EQ(d.celda(0, 2), "24,50");
  EXPECT_EQ(d.celda(8, 2), "76,75");
  d.visor->setCurrentIndex(d.visor->model()->index(0, 1));
  const bool marcada = d.marca(0).toInt() == Qt::Checked;
  QTest::keyClick(d.visor, Qt::Key_Space);
  EXPECT_EQ(d.marca(0).toInt() == Qt::Checked, !marcada);
  EXPECT_EQ(d.texto("Marcadas"), u"Para otra vez: 3 adeudos, 193,60 €"_s);
  QTest::keyClick(d.visor, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().count(u'\n'), 1);
}

TEST_F(PruebaDevoluciones, DeLaRemesaALaAcumulacion) {
  copiar("gimnasio-devueltos.Q19", "devueltos.Q19");
  copiar("aguas-rechazos.xml", "aguas.Q19");
  std::filesystem::copy(DIR_EJEMPLOS "/gimnasio-acuario.Q19", carpeta_ / "gimnasio.Q19");
  Ventana v(carpeta_);
  v.elegir("gimnasio.Q19");
  v.pulsar("Importar");
  EXPECT_FALSE(v.hijo("AbrirDevoluciones")->isVisible());

  v.elegir("devueltos.Q19");
  EXPECT_EQ(v.Preview->lista().size(), 14U);
  EXPECT_TRUE(v.texto("AvisoPreview").contains(u"Es un fichero de adeudos devueltos: no se importa."_s));
  v.pulsar("AbrirDevoluciones");
  const Devueltas d([] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* suya = qobject_cast<ventanas::VentanaDevoluciones*>(w)) return suya;
    return static_cast<ventanas::VentanaDevoluciones*>(nullptr);
  }());
  ASSERT_NE(d.visor, nullptr);
  EXPECT_EQ(d.filas(), 7);
  {
    Cajas cajas{"Aceptar"};
    d.pulsar("cmdPresentar");
    EXPECT_TRUE(cajas.Mensaje(0).contains(u"Busque antes en las remesas enviadas."_s));
  }
  {
    const ConFicheros elegidas({comunes::DesdeRuta(carpeta_ / "gimnasio.Q19")});
    d.pulsar("cmdRemesa");
  }
  EXPECT_EQ(d.texto("Mensaje"), u"En las remesas: 7 halladas, 0 dudosas, 0 que no están."_s);
  EXPECT_EQ(d.celda(0, 11), "gimnasio.Q19, registro 5");
  const auto antes = v.acumulado();
  for (const char* respuesta : {"No", "Si"}) {
    Cajas cajas{"Si", respuesta};
    d.pulsar("cmdPresentar");
    EXPECT_TRUE(
        cajas.Mensaje(0).contains(u"La remesa nueva lleva 3 adeudos, 141,35 €, con cobro el 10/12/2026."_s));
    EXPECT_TRUE(cajas.Mensaje(1).contains(u"hay ya 45 adeudos"_s));
    EXPECT_EQ(v.acumulado() == antes, respuesta == std::string("No"));
  }
  ASSERT_EQ(v.acumulado().size(), 8U);
  EXPECT_TRUE(v.acumulado()[1].starts_with("0219143002ES33000B99654105                   20261210"));

  // Un XML no cambia lo que se ve; una doble pulsación lo abre con los demás.
  v.elegir("aguas.Q19");
  EXPECT_EQ(v.Preview->lista().size(), 14U);
  EXPECT_TRUE(v.texto("AvisoPreview").contains(u"No se ha tomado aguas.Q19: es un XML"_s));
  emit v.Ficheros->doubleClicked({});
  EXPECT_EQ(d.filas(), 10);
  d.ventana->close();

  Ventana alArrancar(carpeta_, comunes::DesdeRuta(carpeta_ / "aguas.Q19"));
  EXPECT_TRUE(alArrancar.acumulado().empty());
}

}  // namespace
