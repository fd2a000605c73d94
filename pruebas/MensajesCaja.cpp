// MyMsgBox por sus botones, teclas y ratón de verdad.

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QtTest>

#include "comunes/dialogos/ColocarCaja.h"
#include "pruebas/Cajas.h"

using namespace comunes;

namespace {

int Preguntar(int juego, int defecto, const Cajas::Accion& accion) {
  Cajas cajas;
  cajas.Hacer(accion);
  return MyMsgBox("¿ Sigue ?", "", 16, juego, defecto);
}

int ConTecla(int juego, int defecto, Qt::Key tecla, Qt::KeyboardModifiers mod = Qt::NoModifier) {
  return Preguntar(juego, defecto, [=](MyBox& caja) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&caja));
    QTest::keyClick(caja.focusWidget(), tecla, mod);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !caja.isVisible(); }));
  });
}

}  // namespace

TEST(MensajesCaja, CadaJuegoTieneSusBotonesSuDefectoYSuSalida) {
  struct Caso {
    int juego;
    QStringList botones;
    int defectos[4];  // lo que da Enter con Defecto 1, 2, 3 y 0
    int escape;       // 0: no cierra
  };
  const Caso casos[] = {
      {1, {"Aceptar"}, {1, 1, 1, 1}, 1},
      {2, {"Aceptar", "Cancelar"}, {1, 2, 2, 2}, 2},
      {3, {"Si", "No"}, {6, 7, 7, 7}, 7},
      {4, {"Si", "No", "Cancelar"}, {6, 7, 2, 2}, 2},
      {5, {"Abortar", "Reintentar", "Ignorar"}, {3, 4, 5, 5}, 0},
      {6, {"Reintentar", "Cancelar"}, {4, 2, 2, 2}, 2},
      {9, {"Aceptar"}, {1, 1, 1, 1}, 1},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.juego);
    const int defectos[] = {1, 2, 3, 0};
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(c.defectos[i], ConTecla(c.juego, defectos[i], Qt::Key_Return)) << "Defecto " << defectos[i];
    }
    int anterior = -1;
    for (const QString& rotulo : c.botones) {
      Cajas cajas;
      cajas.Hacer([&](MyBox& caja) {
        EXPECT_LT(caja.Boton(1)->isVisible() ? caja.Boton(1)->x() : -1, caja.Boton(0)->x());
        Cajas::Pulsar(caja, rotulo);
      });
      const int codigo = MyMsgBox("Texto", "", 1, c.juego, 1);
      EXPECT_EQ(c.botones, cajas.Vistas().at(0).botones);
      EXPECT_NE(anterior, codigo);
      anterior = codigo;
    }
    for (bool cerrar : {false, true}) {
      EXPECT_EQ(c.escape != 0 ? c.escape : 5, Preguntar(c.juego, 1, [&](MyBox& caja) {
                  cerrar ? static_cast<void>(caja.close()) : QTest::keyClick(&caja, Qt::Key_Escape);
                  EXPECT_EQ(c.escape == 0, caja.isVisible());
                  if (caja.isVisible()) Cajas::Pulsar(caja, "Ignorar");
                }));
    }
  }
}

TEST(MensajesCaja, ElPuntoYComaCambiaDeLineaYElTextoEsLlano) {
  Cajas cajas({"Aceptar", "Aceptar"});
  MyMsgBox("uno;dos", "Título", 3, 1, 1);
  MyMsgBox("A & B;;<b>ñ</b>", "", 1, 1, 1);
  EXPECT_EQ("uno\ndos", cajas.Mensaje(0));
  EXPECT_EQ("A & B\n\n<b>ñ</b>", cajas.Mensaje(1));
  EXPECT_EQ("Título", cajas.Vistas().at(0).titulo);
  EXPECT_EQ("", cajas.Vistas().at(1).titulo);
  EXPECT_EQ(3, cajas.Vistas().at(0).icono);
}

TEST(MensajesCaja, SinModalVuelveConCeroYLaCajaViveHastaQueSePulsa) {
  EXPECT_EQ(0, MyMsgBox("Sigo aquí", "", 1, 2, 1, -1, -1, nullptr, false));
  QPointer<MyBox> caja;
  for (QWidget* ventana : QApplication::topLevelWidgets()) {
    if (auto* una = qobject_cast<MyBox*>(ventana)) caja = una;
  }
  ASSERT_TRUE(caja);
  EXPECT_TRUE(caja->isVisible());
  QTest::mouseClick(caja->Boton(0), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([&] { return caja.isNull(); })) << "la caja no se destruyó";
}

TEST(MensajesCaja, SoloCuentaLaPrimeraPulsacionYCadaBotonTieneSuTecla) {
  EXPECT_EQ(kAbortar, ConTecla(5, 3, Qt::Key_B, Qt::AltModifier));
  EXPECT_EQ(kSi, Preguntar(3, 1, [](const MyBox& caja) {
              caja.Boton(1)->click();
              caja.Boton(0)->click();
            }));
}

TEST(MensajesCaja, SeArrastraPorCualquierSitio) {
  Preguntar(1, 1, [](MyBox& caja) {
    auto* mensaje = caja.findChild<QWidget*>("Mensaje");
    const QPoint antes = caja.pos();
    QTest::mousePress(mensaje, Qt::LeftButton, {}, {5, 5});
    QTest::mouseMove(mensaje, {45, 25});
    EXPECT_EQ(antes + QPoint(40, 20), caja.pos());
    caja.close();
  });
}

TEST(MensajesCaja, ElSitioVaEnTwipsYNuncaSaleDeLaPantalla) {
  const QRect pantalla(0, 0, 1000, 800);
  const QRect libre(0, 0, 1000, 760);
  const QRect nada;
  const QSize caja(400, 200);
  EXPECT_EQ(QPoint(300, 300), EsquinaCaja(caja, -1, -1, nada, pantalla, libre));
  EXPECT_EQ(QPoint(300, 10), EsquinaCaja(caja, 150, -1, nada, pantalla, libre));
  EXPECT_EQ(QPoint(20, 300), EsquinaCaja(caja, -1, 300, nada, pantalla, libre));
  EXPECT_EQ(QPoint(150, 200), EsquinaCaja(caja, 150, 300, QRect(300, 250, 100, 100), pantalla, libre));
  EXPECT_EQ(QPoint(600, 560), EsquinaCaja(caja, 90000, 90000, nada, pantalla, libre));
  EXPECT_EQ(QPoint(0, 0), EsquinaCaja({2000, 2000}, -1, -1, nada, pantalla, libre));
}

TEST(MensajesCaja, UnTextoEnormeSePuedeLeerEnteroSinSalirDeLaPantalla) {
  const QString ruta = "/" + QString(3000, 'x');
  for (const QString& texto : {QString("palabra ").repeated(4000), ruta, QString("línea;").repeated(200)}) {
    Cajas cajas;
    cajas.Hacer([](MyBox& caja) {
      const QRect pantalla = caja.screen()->availableGeometry();
      EXPECT_TRUE(pantalla.contains(caja.geometry())) << caja.height();
      EXPECT_TRUE(caja.rect().contains(caja.Boton(0)->geometry()));
      auto* marco = caja.findChild<QScrollArea*>("MarcoMensaje");
      auto* mensaje = marco->widget();
      EXPECT_LE(mensaje->width(), marco->viewport()->width());
      EXPECT_GE(mensaje->height(), mensaje->heightForWidth(mensaje->width()));
      caja.close();
    });
    MyMsgBox(texto, "", 1, 1, 1);
  }
}
