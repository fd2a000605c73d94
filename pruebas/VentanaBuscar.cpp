#include <QLineEdit>
#include <QScrollBar>

#include "VentanaPrincipal.h"
#include "ventanas/principal/BarraBuscar.h"
#include "ventanas/principal/TextoBuscado.h"

using namespace pruebas;

namespace {

/// Un adeudo de cada tres es de Núñez.
std::vector<std::string> RemesaBuscada() {
  std::vector<std::string> registros = Remesa("20260405", {});
  for (int i = 0; i < 300; ++i) {
    std::string adeudo = Adeudo("REF" + std::to_string(i), "00000005210");
    remesa::EscribirCampo(adeudo, remesa::kNombreDeudor,
                          i % 3 == 0 ? "N\xFA\xF1"
                                       "ez P\xE9rez, Ana"
                                     : "Otro");
    remesa::EscribirCampo(adeudo, remesa::kCuentaDeudor, "ES9121000418450200051332");
    registros.insert(registros.end() - 3, adeudo);
  }
  return registros;
}

class VentanaBuscar : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    escribir("a.Q19", Fichero(RemesaBuscada()));
  }
};

}  // namespace

TEST_F(VentanaBuscar, RecorreSeleccionaYSigueALaLista) {
  Ventana v(carpeta_);
  v.importar("a.Q19");
  const std::vector<std::string> antes = v.acumulado();
  auto* barra = v.hijo<principal::BarraBuscar>("BarraBuscar");
  auto* caja = v.hijo<QLineEdit>("Buscado");
  v.Acumulado->setFocus();
  QTest::keyClick(v.Acumulado, Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(barra->isVisible());
  EXPECT_EQ(barra->parentWidget(), v.Acumulado->parentWidget());
  EXPECT_EQ(QApplication::focusWidget(), caja);

  const auto dice = [&](const QString& que) {
    return QTest::qWaitFor([&] { return v.texto("Hallados") == que; }) ? std::string()
                                                                       : v.texto("Hallados").toStdString();
  };
  const auto escribir = [&](const QString& texto) {
    caja->selectAll();
    QTest::keyClicks(caja, texto);
  };
  const auto sola = [&](std::size_t fila) {
    EXPECT_EQ(v.Acumulado->actual(), static_cast<int>(fila));
    EXPECT_EQ(v.Acumulado->seleccion(), std::vector<std::size_t>{fila});
    EXPECT_TRUE(
        v.Acumulado->viewport()->rect().intersects(v.Acumulado->visualRect(v.Acumulado->currentIndex())));
  };
  escribir("NUNEZ pe");
  EXPECT_EQ(dice("1 de 100"), "");
  sola(2);
  EXPECT_GT(v.Acumulado->horizontalScrollBar()->value(), 0) << "el nombre está lejos del principio";
  QTest::keyClick(caja, Qt::Key_Return);
  EXPECT_EQ(dice("2 de 100"), "");
  sola(5);
  QTest::keyClick(caja, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClick(&v.frm, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(dice("100 de 100 · se ha vuelto al final"), "");
  sola(299);
  QTest::keyClick(&v.frm, Qt::Key_F3);
  EXPECT_EQ(dice("1 de 100 · se ha vuelto al principio"), "");

  v.pulsar("BuscarTodos");
  EXPECT_EQ(v.Acumulado->seleccion().size(), 100U);
  EXPECT_EQ(v.acumulado(), antes) << "buscar no cambia nada";

  // Lo que se elimina deja de estar, y la fila actual es la que quedó, no otra hallada.
  Cajas cajas;
  cajas.Responder("Si");
  v.pulsar("cmdEliminar");
  const int fila = v.Acumulado->actual();
  EXPECT_EQ(dice("Sin resultados"), "");
  EXPECT_EQ(v.Acumulado->actual(), fila);
  caja->setFocus();
  escribir("es91 2100 0418");
  EXPECT_EQ(dice("1 de 200"), "");
  escribir("52,1 eur");
  EXPECT_EQ(dice("1 de 200"), "");
  v.pulsar("Empezar");
  EXPECT_EQ(dice("Sin resultados"), "");

  // En la vista previa, con el foco en ella; Escape cierra y se lo devuelve.
  v.frm.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&v.frm));
  v.Preview->setFocus();
  QTest::keyClick(v.Preview, Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(barra->parentWidget(), v.Preview->parentWidget());
  escribir("nunez");
  EXPECT_EQ(dice("1 de 100"), "");
  EXPECT_EQ(v.Preview->actual(), 2);
  QTest::keyClick(caja, Qt::Key_Escape);
  EXPECT_FALSE(barra->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), v.Preview);

  cajas.Hacer([](comunes::MyBox& pregunta) {
    auto* numero = pregunta.findChild<QLineEdit*>("CampoTexto");
    numero->setText("1000");
    Cajas::Pulsar(pregunta, "Aceptar");
    EXPECT_TRUE(pregunta.isVisible()) << "no hay tantos";
    numero->setText("305");
    Cajas::Pulsar(pregunta, "Aceptar");
  });
  QTest::keyClick(v.Preview, Qt::Key_G, Qt::ControlModifier);
  EXPECT_EQ(v.Preview->actual(), 304);
}

TEST(TextoBuscado, Importes) {
  const std::pair<const char*, std::optional<qint64>> casos[] = {{"52,10", 5210},
                                                                 {"52,1", 5210},
                                                                 {"52", 5200},
                                                                 {"1.234,50", 123450},
                                                                 {"1234,5 €", 123450},
                                                                 {"52.10", 5210},
                                                                 {"1.234", 123400},
                                                                 {"1,234.5", 123450},
                                                                 {" 7 EUR ", 700},
                                                                 {"0,05", 5},
                                                                 {"12.34,5", {}},
                                                                 {"1,234567", {}},
                                                                 {"52,", {}},
                                                                 {"-3", {}},
                                                                 {"12a", {}},
                                                                 {"", {}},
                                                                 {"€", {}},
                                                                 {"9999999999999999", {}}};
  for (const auto& [texto, centimos] : casos)
    EXPECT_EQ(principal::ImporteEscrito(QString::fromUtf8(texto)), centimos) << texto;
  // Lo que un registro no puede tener se busca por su letra.
  EXPECT_TRUE(
      principal::BusquedaDe(QString::fromUtf8("nu\u0301n\u0303ez")).en(RemesaBuscada()[2]).has_value());
  EXPECT_TRUE(principal::BusquedaDe(QString::fromUtf8("Pěrez")).en(RemesaBuscada()[2]).has_value());
  EXPECT_FALSE(principal::BusquedaDe(QString::fromUtf8("Ж")).en(RemesaBuscada()[2]).has_value());
}
