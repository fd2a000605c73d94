// Las preguntas de la caja: valor, intervalo, lista, rejilla y color, tecleadas y pulsadas de verdad.

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

#include "comunes/dialogos/ListaCaja.h"
#include "comunes/dialogos/MiniHelp.h"
#include "comunes/dialogos/SelectorColor.h"
#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"
#include "pruebas/Cajas.h"
#include "pruebas/EnCarpeta.h"
#include "pruebas/EnEspana.h"

using namespace comunes;

namespace {

QLineEdit* Campo(MyBox& caja) {
  return caja.findChild<QLineEdit*>("CampoTexto");
}
QLineEdit* Hasta(MyBox& caja) {
  return caja.findChild<QLineEdit*>("CampoHasta");
}

/// Teclea sobre lo que tenga el foco; "\r" es Intro.
void Teclear(MyBox& caja, const QString& teclas) {
  for (const QChar c : teclas) {
    if (c == u'\r')
      QTest::keyClick(caja.focusWidget(), Qt::Key_Return);
    else
      QTest::keyClick(caja.focusWidget(), c.toLatin1());
    QCoreApplication::processEvents();
  }
}

QString Pedir(const QString& tipo, const QString& defecto, const Cajas::Accion& accion,
              const QString& tema = {}) {
  Cajas cajas;
  cajas.Hacer([&](MyBox& caja) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&caja));
    accion(caja);
  });
  return MyInputBox("Dato;nuevo", "Título", 4, tipo, defecto, -1, -1, nullptr, tema);
}

class PreguntasCaja : public pruebas::EnCarpeta {
  pruebas::EnEspana espana_;
};

}  // namespace

TEST_F(PreguntasCaja, UnValorSeTecleaSeDejaYVuelveEnSuFormaDeEdicion) {
  struct Caso {
    const char *tipo, *defecto, *teclas;
    const char* ensena;  // al dejar el campo
    const char* devuelto;
  };
  const Caso casos[] = {{"T(N) A(D) L(12)", "", "1234,5\r", "1.234,50", "1234.50"},
                        {"T(F) A(D) L(10)", "", "5-3\r", "05 mar 2026", "05/03/2026"},
                        {"T(I) A(I) L(34)", "", "es9121000\r", "ES91 2100 0", "ES9121000"},
                        {"T(M) A(I) L(15)", "Previo", "\r", "Previo", "Previo"},
                        {"T(M) A(I) L(3)", "", "abc", "ABC", "ABC"}};
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.tipo) + " " + c.teclas);
    EXPECT_EQ(QString(c.devuelto), Pedir(c.tipo, c.defecto, [&](MyBox& caja) {
                EXPECT_TRUE(Campo(caja)->hasFocus());
                Teclear(caja, c.teclas);
                EXPECT_TRUE(caja.Boton(1)->hasFocus());
                EXPECT_EQ(QString::fromUtf8(c.ensena), Campo(caja)->text());
                Teclear(caja, "\r");
              }));
  }
}

TEST_F(PreguntasCaja, LaOrdenDejaElCampoYSoloAceptarDevuelve) {
  const std::pair<const char*, std::function<void(MyBox&)>> ordenes[] = {
      {"1500.00", [](MyBox& caja) { QTest::mouseClick(caja.Boton(1), Qt::LeftButton); }},
      {"1500.00", [](MyBox& caja) { QTest::keyClick(Campo(caja), Qt::Key_A, Qt::AltModifier); }},
      {"", [](MyBox& caja) { QTest::mouseClick(caja.Boton(0), Qt::LeftButton); }},
      {"", [](MyBox& caja) { QTest::keyClick(Campo(caja), Qt::Key_Escape); }}};
  for (const auto& [devuelto, orden] : ordenes)
    EXPECT_EQ(devuelto, Pedir("T(n) A(D) L(12)", "", [&orden = orden](MyBox& caja) {
                Teclear(caja, "1500");
                orden(caja);
                EXPECT_TRUE(QTest::qWaitFor([&] { return !caja.isVisible(); }));
              }));
}

TEST_F(PreguntasCaja, SinCancelarEscapeEsUnaTeclaMas) {
  MyBox caja;
  caja.PonerBotones(1, 1);
  caja.PonerValor("T(X) A(I) L(9)", "");
  caja.show();
  QTest::keyClick(Campo(caja), Qt::Key_Escape);
  EXPECT_TRUE(caja.isVisible());
  EXPECT_EQ(0, caja.Resultado());
}

TEST_F(PreguntasCaja, LoSecretoSeVeConAsteriscos) {
  EXPECT_EQ("abc", Pedir("T(Z) A(I) L(9) (PWD)", "", [](MyBox& caja) {
              Teclear(caja, "abc");
              EXPECT_EQ("***", Campo(caja)->displayText());
              caja.Boton(1)->click();
            }));
}

TEST_F(PreguntasCaja, ElIntervaloSeCompruebaSegunSuTipo) {
  struct Caso {
    const char *tipo, *defecto;
    const char* devuelto;  // nulo: se rechaza
  };
  const Caso casos[] = {{"T(F) A(D) L(10)(/)", "31/12/2024ƒ01/01/2024", nullptr},
                        {"T(F) A(D) L(10)(/)", "01/02/2024ƒ01/02/2024", "01/02/2024ƒ01/02/2024"},
                        {"T(F) A(D) L(10)(/)", "31/12/2024ƒ", "31/12/2024ƒ"},
                        {"T(D) A(D) L(6)(/)", "9ƒ10", "     9ƒ    10"},
                        {"T(D) A(D) L(6)(/)", "10ƒ9", nullptr},
                        {"T(N) A(D) L(12)(/)", "-2000ƒ1000.5", "-2000.00ƒ1000.50"},
                        {"T(Z) A(I) L(9)(/)", "bƒa", nullptr},
                        {"T(Z) A(I) L(9)(/)", "Bƒa", "Bƒa"},
                        {"T(Z) A(I) L(9)(/)", "aƒbƒc", "aƒbƒc"},
                        {"T(Z) A(I) L(9)(/)", "a", "ƒ"}};
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.tipo) + " " + c.defecto);
    EXPECT_EQ(QString(c.devuelto), Pedir(c.tipo, c.defecto, [&](MyBox& caja) {
                EXPECT_TRUE(Campo(caja)->hasFocus());
                EXPECT_TRUE(Hasta(caja)->isVisible());
                EXPECT_EQ(Campo(caja)->y(), Hasta(caja)->y());
                EXPECT_EQ(c.devuelto != nullptr, caja.DesdeHastaOk());
                caja.Boton(1)->click();
                EXPECT_EQ(c.devuelto == nullptr, caja.isVisible());
                if (caja.isVisible()) QTest::keyClick(Hasta(caja), Qt::Key_Escape);
              }));
  }
  EXPECT_EQ("ƒ01/01/2024", Pedir("T(F) A(D) L(10)(/)", "31/12/2024ƒ01/01/2024", [](MyBox& caja) {
              QTest::keyClick(Campo(caja), Qt::Key_A, Qt::AltModifier);
              EXPECT_FALSE(QTest::qWaitFor([&] { return !caja.isVisible(); }, 300));
              Campo(caja)->selectAll();
              QTest::keyClick(Campo(caja), Qt::Key_Delete);
              caja.Boton(1)->click();
            }));
}

TEST_F(PreguntasCaja, LaListaSeCortaPorSuSeparadorOSeLeeDeUnFichero) {
  const QString tabla = escribir("tabla", AWindows1252("España\r\nsegundo;x\n\ntercero\r").c_str());
  const std::pair<QString, QStringList> casos[] = {{"A;B<<C", {"A", "B<<C"}},
                                                   {"A<<B<<", {"A", "B"}},
                                                   {"A;;B;", {"A", "", "B"}},
                                                   {"", {""}},
                                                   {";", {""}},
                                                   {"@" + tabla, {"España", "segundo;x", "", "tercero"}},
                                                   {"@" + escribir("v", ""), {}},
                                                   {"@" + ruta("no-existe"), {}}};
  for (const auto& [valor, esperado] : casos)
    EXPECT_EQ(esperado, ElementosLista(valor)) << valor.toStdString();
  EXPECT_THROW(ElementosLista("@" + carpeta_.path()), ficheros::ErrorEjecucion);
  EXPECT_EQ("B", Pedir("TABLA", "A;B;C", [](MyBox& caja) {
              auto* lista = caja.findChild<QComboBox*>("cbxTabla");
              EXPECT_EQ("A", lista->currentText());
              EXPECT_TRUE(caja.Boton(1)->hasFocus());
              EXPECT_FALSE(Campo(caja)->isVisible());
              QTest::keyClick(lista, Qt::Key_Down);
              caja.Boton(1)->click();
            }));
}

TEST_F(PreguntasCaja, LaRejillaDevuelveLaColumnaDeLaFilaElegida) {
  const std::vector<QStringList> datos = {{"1", "Ana", "10"}, {"2", "Eva", "20"}, {"3", "Íñigo", "30"}};
  const auto elegir = [&](const QString& columna, auto accion) {
    Cajas cajas;
    cajas.Hacer([&](MyBox& caja) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&caja));
      accion(caja, *caja.findChild<QTableView*>("VisorMini"));
    });
    return MyVisorBox("Elija", "#0;Nombre#20;Importe#10>", datos, 4, columna);
  };
  const auto celda = [](QTableView& visor, int fila) {
    return visor.visualRect(visor.model()->index(fila, 1)).center();
  };
  EXPECT_EQ("Eva", elegir("Nombre", [&](MyBox& caja, QTableView& visor) {
              EXPECT_TRUE(caja.Boton(0)->hasFocus());
              EXPECT_TRUE(visor.isColumnHidden(0));
              QTest::mouseClick(visor.viewport(), Qt::LeftButton, {}, celda(visor, 1));
              caja.Boton(1)->click();
            }));
  EXPECT_EQ("30", elegir("Importe", [&](MyBox&, QTableView& visor) {
              QTest::mouseClick(visor.viewport(), Qt::LeftButton, {}, celda(visor, 2));
              QTest::mouseDClick(visor.viewport(), Qt::LeftButton, {}, celda(visor, 2));
            }));
  EXPECT_EQ("Ana", elegir("Nombre", [&](MyBox&, QTableView& visor) {
              visor.setFocus(Qt::TabFocusReason);
              QTest::keyClick(&visor, Qt::Key_Return);
            }));
  EXPECT_EQ("2", elegir("",
                        [&](MyBox& caja, QTableView& visor) {
                          EXPECT_FALSE(caja.Boton(1)->isVisible());
                          QTest::mouseClick(visor.viewport(), Qt::LeftButton, {}, celda(visor, 1));
                          caja.Boton(0)->click();
                        }))
      << "sin columna, la primera";
  for (const char* columna : {"", "Nombre"})
    EXPECT_EQ("", elegir(columna,
                         [&](MyBox& caja, QTableView& visor) {
                           QTest::mouseClick(visor.viewport(), Qt::LeftButton, {}, celda(visor, 1));
                           caja.close();
                         }))
        << "cerrar no elige";
  EXPECT_EQ("Eva", elegir("Nombre",
                          [&](const MyBox& caja, QTableView& visor) {
                            visor.selectionModel()->select(
                                visor.model()->index(1, 0),
                                QItemSelectionModel::Select | QItemSelectionModel::Rows);
                            caja.Boton(1)->click();
                          }))
      << "seleccionada sin hacerla actual, como las ayudas técnicas";
}

TEST_F(PreguntasCaja, LaMuestraDaElColorComoNumero) {
  QColor respuesta;
  QColor inicial;
  const auto anterior = PonerSelectorColor([&](const QColor& color, QWidget*) {
    inicial = color;
    if (!respuesta.isValid()) throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido);
    return respuesta;
  });
  EXPECT_EQ("16764160", Pedir("T(D) A(D) L(8) (RGB)", "255", [&](MyBox& caja) {
              auto* muestra = caja.findChild<QToolButton*>("RGBText");
              ASSERT_TRUE(muestra->isVisible());
              QTest::mouseClick(muestra, Qt::LeftButton);
              QCoreApplication::sendPostedEvents();
              EXPECT_EQ(QColor(Qt::red), inicial);
              EXPECT_EQ("255", Campo(caja)->text().trimmed());
              respuesta = QColor(0x00, 0xCD, 0xFF);
              QTest::mouseClick(muestra, Qt::LeftButton);
              QCoreApplication::sendPostedEvents();
              caja.Boton(1)->click();
            }));
  PonerSelectorColor(anterior);
}

TEST_F(PreguntasCaja, LaAyudaSoloSeVeConUnTemaQueExisteYNoCierraLaCaja) {
  const QString tema = escribir("tema.md", "# Título\n\nTexto");
  const auto ayuda = [](MyBox& caja) { return caja.findChild<QToolButton*>("Ayuda"); };
  for (const QString& ausente : {QString(), tema + "x"}) {
    Pedir(
        "T(M) A(I) L(5)", "",
        [&](MyBox& caja) {
          EXPECT_FALSE(ayuda(caja)->isVisible());
          caja.close();
        },
        ausente);
  }
  const auto responder = [&](MyBox& caja) {
    Teclear(caja, "ab");
    QString titulo;
    QTimer::singleShot(200, [&] {
      titulo = QApplication::activeModalWidget()->windowTitle();
      QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(Campo(caja), Qt::Key_F1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !titulo.isEmpty(); }));
    EXPECT_EQ("Ayuda: Título", titulo);
    EXPECT_EQ(Campo(caja), caja.focusWidget());
    caja.Boton(1)->click();
  };
  EXPECT_EQ("AB", Pedir("T(M) A(I) L(5)", "", responder, tema));
}
