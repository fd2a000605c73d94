#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QTimer>

#include "comunes/impresion/Progreso.h"
#include "comunes/impresion/VentanaProgreso.h"

namespace {

using namespace comunes;

class PruebaProgreso : public testing::Test {
 protected:
  void TearDown() override {
    TerminarProgreso();
    PonerTemporizador(-1);
  }
  static QWidget* ventana() {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (w->objectName() == "Progreso") return w;
    }
    return nullptr;
  }
  static QString etiqueta(const char* nombre) { return ventana()->findChild<QLabel*>(nombre)->text(); }
  static int barra() { return ventana()->findChild<QProgressBar*>("Barra")->value(); }
};

TEST_F(PruebaProgreso, RedibujaCadaCentesimaAlFinalYForzado) {
  PonerTemporizador(100);
  IniciarProgreso(0, 400, "Cargando");
  EXPECT_EQ(etiqueta("BarraTitulo"), "Cargando");
  PonerTemporizador(110);
  BarraProgreso(1, false);
  BarraProgreso(2, false);
  BarraProgreso(3, false);
  EXPECT_EQ(etiqueta("BarraPor"), "");
  BarraProgreso(150, false);
  EXPECT_EQ(etiqueta("BarraPor"), "37.50 %");
  EXPECT_EQ(barra(), 150);
  EXPECT_EQ(etiqueta("BarraTra"), "00:10");
  EXPECT_EQ(etiqueta("BarraEst"), "00:26");
  BarraProgreso(200, true);
  EXPECT_EQ(etiqueta("BarraPor"), "50.00 %");
  BarraProgreso(500, true);
  EXPECT_EQ(etiqueta("BarraPor"), "125.00 %");
  EXPECT_EQ(barra(), 200);
  BarraProgreso(400, false);
  EXPECT_EQ(etiqueta("BarraPor"), "100.00 %");
}

TEST_F(PruebaProgreso, ElCeroNoEstimaYUnMaximoPequenoRedibujaSiempre) {
  IniciarProgreso(0, 50, "x");
  BarraProgreso(0, false);
  EXPECT_EQ(etiqueta("BarraEst"), "");
  EXPECT_EQ(etiqueta("BarraPor"), ".00 %");
  BarraProgreso(1, false);
  EXPECT_EQ(etiqueta("BarraPor"), "2.00 %");
}

TEST_F(PruebaProgreso, LaMedianocheNoLoAltera) {
  PonerTemporizador(86395);
  IniciarProgreso(0, 10, "x");
  PonerTemporizador(5);
  BarraProgreso(5, false);
  EXPECT_EQ(etiqueta("BarraTra"), "00:10");
  EXPECT_EQ(etiqueta("BarraEst"), "00:20");
  EXPECT_EQ(TextoTiempo(3725), "1:02:05");
}

TEST_F(PruebaProgreso, UnTrabajoBreveNoMuestraNadaYUnoLargoSePuedeDetener) {
  {
    Avance breve("breve");
    EXPECT_TRUE(breve.avanzar(1, 2));
    EXPECT_EQ(ventana(), nullptr);
  }
  Avance largo("largo");
  QTest::qSleep(520);
  EXPECT_TRUE(largo.avanzar(1, 4));
  ASSERT_NE(ventana(), nullptr);
  EXPECT_TRUE(ventana()->isModal());
  EXPECT_EQ(etiqueta("BarraPor"), "25.00 %");
  QTest::keyClick(ventana(), Qt::Key_Escape);
  EXPECT_FALSE(largo.avanzar(2, 4));
}

TEST_F(PruebaProgreso, SinIntervaloLaBarraQuedaIndeterminada) {
  IniciarProgreso(0, 0, "x");
  BarraProgreso(3, false);
  EXPECT_EQ(etiqueta("BarraPor"), "");
  EXPECT_EQ(ventana()->findChild<QProgressBar*>("Barra")->maximum(), 0);
}

}  // namespace
