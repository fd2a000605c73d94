#include "ventanas/principal/VentanaAnteriores.h"

#include <QAction>
#include <QTableView>
#include <QTimer>

#include "EnEspana.h"
#include "VentanaPrincipal.h"
#include "comunes/plataforma/Enlace.h"
#include "ventanas/principal/Antecedentes.h"
#include "ventanas/principal/VentanaHallazgos.h"

using namespace pruebas;

namespace {

/// La ventana con una remesa del gimnasio enviada, sus devoluciones y otra con los mismos adeudos.
class VentanaConAnteriores : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::create_directory(carpeta_ / "antes");
    const std::string bytes = leer(DIR_EJEMPLOS "/gimnasio-acuario.Q19");
    escribir("antes/enviada.Q19", bytes);
    std::filesystem::copy(DIR_EJEMPLOS "/devoluciones/gimnasio-devueltos.Q19", carpeta_ / "antes");
    std::string otra = bytes;
    otra.replace(123, 11, "PRE20270101");
    escribir("otra.Q19", otra);
  }
  /// Pone los ajustes y espera a que se lea lo que digan.
  principal::Antecedentes& leidos(Ventana& v, const std::string& ajustes) {
    escribir("Tarvo.INI", "[Comunes]\r\n" + ajustes + "\r\n");
    auto* antes = v.frm.findChild<principal::Antecedentes*>();
    antes->iniciar();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return antes->estado() != principal::Antecedentes::Estado::Leyendo; }, 60'000));
    return *antes;
  }
  EnEspana espana_{{2026, 11, 25}};
};

TEST_F(VentanaConAnteriores, LasCarpetasSonLasDeSuClaveOLaDeGuardar) {
  using E = principal::Antecedentes::Estado;
  const std::string antes = (carpeta_ / "antes").string();
  const struct {
    std::string ajustes;
    E estado;
    std::size_t ficheros;
  } casos[] = {{"", E::Apagado, 0},
               {"DestinoQ19=" + antes, E::Leido, 2},
               {"DestinoQ19=" + antes + "\r\nAnterioresQ19=", E::Apagado, 0},
               {"AnterioresQ19=" + antes + ";" + antes + "/no está", E::Leido, 2}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.ajustes);
    Ventana v(carpeta_);
    const principal::Antecedentes& leido = leidos(v, caso.ajustes);
    EXPECT_EQ(leido.estado(), caso.estado);
    EXPECT_EQ(leido.indice() ? leido.indice()->ficheros().size() : 0, caso.ficheros);
    // De la carpeta que no está se avisa, y el aviso lleva a por qué.
    auto* enlace = v.hijo<comunes::Enlace>("EnlaceAntecedentes");
    EXPECT_EQ(enlace->isVisible(), caso.ajustes.ends_with("no está"));
    EXPECT_EQ(enlace->text().startsWith("No se lee una carpeta"), enlace->isVisible());
  }
}

TEST_F(VentanaConAnteriores, LaRemesaSeComparaYSusCobrosSeVen) {
  Ventana v(carpeta_);
  const principal::Antecedentes& antes = leidos(v, "AnterioresQ19=" + (carpeta_ / "antes").string());
  v.importar("otra.Q19");
  ASSERT_TRUE(QTest::qWaitFor([&] { return antes.comparada().avisos > 0; }, 60'000));
  EXPECT_EQ(antes.comparada().avisos, 45U);
  EXPECT_TRUE(v.texto("AvisoAcumulado").contains("ya guardados en"))
      << v.texto("AvisoAcumulado").toStdString();
  v.frm.findChild<QAction*>("mnuComprobar")->trigger();
  auto* hallazgos = v.frm.findChild<principal::VentanaHallazgos*>();
  ASSERT_NE(hallazgos, nullptr);
  EXPECT_TRUE(hallazgos->findChild<QLabel*>("Resumen")->text().contains("Comparada con 1 remesa de antes."));
  hallazgos->close();

  // El registro 5 es de un adeudo que volvió: lo enviado y la devolución.
  v.Acumulado->seleccionarSolo(4);
  v.Acumulado->setFocus();
  int filas = -1;
  QTimer::singleShot(0, &v.frm, [&] {
    auto* ventana = v.frm.findChild<principal::VentanaAnteriores*>();
    ASSERT_NE(ventana, nullptr);
    auto* visor = ventana->findChild<QTableView*>("Visor");
    auto* resumen = ventana->findChild<QLabel*>("Resumen");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !resumen->text().contains("Buscando"); }, 60'000));
    EXPECT_TRUE(resumen->text().endsWith("1 cobro y 1 devolución.")) << resumen->text().toStdString();
    filas = visor->model()->rowCount();
    ventana->reject();
  });
  v.frm.findChild<QAction*>("mnuAnteriores")->trigger();
  EXPECT_EQ(filas, 2);
}

}  // namespace
