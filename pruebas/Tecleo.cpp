// Cajas descritas: teclas, pegado, foco y deshacer en controles de verdad.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QVBoxLayout>
#include <QtTest>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Teclas.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/plataforma/Aviso.h"
#include "pruebas/EnEspana.h"

using namespace comunes;

namespace {

/// Una ventana activa con la caja descrita y otra a la que pasar.
class Tecleando : public testing::Test {
 protected:
  Tecleando() : caja(new QLineEdit(&ventana)), otra(new QLineEdit(&ventana)) {
    auto* columna = new QVBoxLayout(&ventana);
    columna->addWidget(caja);
    columna->addWidget(otra);
    otra->setFocus();
    ventana.show();
    ventana.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&ventana));
  }

  CajaDescrita* Entra(const QString& descriptor, const QString& texto = {}) {
    CajaDescrita* descrita = Describir(caja, descriptor);
    otra->setFocus();
    PonerTexto(caja, texto);
    caja->setFocus();
    return descrita;
  }
  static void Teclea(const QString& teclas) {
    for (const QChar c : teclas) {
      if (c == '\n')
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      else
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(c),
                            Qt::NoModifier);
    }
  }
  bool SeHaMovido() {
    QCoreApplication::sendPostedEvents();
    return QApplication::focusWidget() != caja;
  }

  pruebas::EnEspana espana;
  QDialog ventana;
  QLineEdit* caja;
  QLineEdit* otra;
};

}  // namespace

// La tecla que llena la caja se escribe y pasa; la que sobra pasa sin escribirse; la rechazada, ni lo uno.
TEST_F(Tecleando, CadaTipoDejaPasarLoSuyo) {
  struct Caso {
    const char *antes, *teclas, *despues;
    bool mueve;
    int cursor = -1;  // -1: al final; -2: todo seleccionado
  };
  const std::vector<std::pair<const char*, std::vector<Caso>>> grupos = {
      {"T(n) A(D) L(12) D(2)",
       {{"", "-12,", "12.", false},
        {"12.50", "3", "12.50", false},
        {"12.50", "3", "3", false, -2},
        {"12.50", ".", ".", false, -2},
        {"12.50", ".", "12.50", false, 1},
        {"12.50", "9", "12.50", false, 4}}},
      {"T(N) A(D) L(12)", {{"12.00", "-", "-12.00", false, 0}, {"12.00", "-", "12.00", false, 1}}},
      {"T(N) A(D) L(12) D(0)", {{"", "1.x2", "12", false}}},
      {"T(C) A(I) L(9)", {{"43", ".2", "43.", false}}},
      {"T(D) A(C) L(6)", {{"", "1-2.3", "123", false}}},
      {"T(F) A(D) L(10)", {{"", "/3-4.6/7", "3/4/67", false}, {"", "3--4", "3/4", false}}},
      {"T(f) A(D) L(10)", {{"", "3.4a", "3/4", false}}},
      {"T(H) A(D) L(5)", {{"", "9.3/0", "9:30", false}}},
      {"T(M) A(I) L(9)", {{"", "peña 1", "PEÑA 1", false}}},
      {"T(X) A(I) L(12)",
       {{"12345678", "?", "12345678Z", false}, {"X1234567", "?", "X12345677", false}, {"", "?", "", false}}},
      {"T(I) A(I) L(24)", {{"", "es9", "ES9", false}}},
      {"T(M) A(I) L(5)",
       {{"abcd", "e", "abcdE", true}, {"abcde", "f", "abcde", true}, {"abcde", "f", "F", false, -2}}},
      {"T(D) A(I) L(5)", {{"12345", "f", "12345", false}}},
      {"T(M) A(I) L(5)", {{"abc", "\n", "abc", true}}},
      {"T(M) A(I) L(5) +[x y]", {{"abc", "+", "x y", true}}},
      {"T(M) A(I) L(5) +[]", {{"abc", "+", "", true}}},
      {"T(M) A(I) L(5)", {{"abc", "+", "abc", true}}}};
  for (const auto& [descriptor, casos] : grupos)
    for (const auto& c : casos) {
      SCOPED_TRACE(std::string(descriptor) + " |" + c.antes + "| " + c.teclas);
      Entra(descriptor);
      PonerTexto(caja, c.antes);
      if (c.cursor >= 0) caja->setCursorPosition(c.cursor);
      if (c.cursor == -2) caja->selectAll();
      Teclea(c.teclas);
      EXPECT_EQ(c.despues, caja->text().toStdString());
      EXPECT_EQ(c.mueve, SeHaMovido());
    }
}

TEST_F(Tecleando, LoTecleadoDePrisaSigueEnElCampoSiguiente) {
  Describir(otra, "T(D) A(C) L(5)");
  Entra("T(D) A(C) L(3)");
  // Sin dejar que corran los eventos encolados, como con un lector de códigos de barras.
  for (const char c : {'1', '2', '3', '4', '5'})
    QTest::keyClick(caja->hasFocus() ? caja : otra, c);
  EXPECT_EQ("123", caja->text().toStdString());
  EXPECT_EQ("45", otra->text().toStdString());
}

TEST_F(Tecleando, SinLongitudAvisaYNoEscribe) {
  int avisos = 0;
  const auto anterior = PonerAvisador([&](GradoAviso, const QString&, const QString&) { ++avisos; });
  Entra("T(M) A(I)");
  Teclea("a");
  EXPECT_EQ("", caja->text().toStdString());
  EXPECT_TRUE(SeHaMovido());
  EXPECT_GT(avisos, 0);
  PonerAvisador(anterior);
}

TEST_F(Tecleando, EntraEnFormaDeEdicionYSaleEnLaDeMostrar) {
  caja->setStyleSheet({});
  const QPalette propia = caja->palette();
  const CajaDescrita* descrita = Entra("T(N) A(D) L(12)", "1.234,50");
  EXPECT_EQ("1234.50", caja->text().toStdString());
  EXPECT_EQ("1234.50", caja->selectedText().toStdString());
  EXPECT_EQ(QColor(192, 255, 255), caja->palette().color(QPalette::Base));
  EXPECT_EQ("16777215", GetTag(Descriptor(caja), "P").value_or("-").toStdString());
  otra->setFocus();
  EXPECT_FALSE(descrita->dentro());
  EXPECT_EQ("1.234,50", caja->text().toStdString());
  EXPECT_EQ(propia, caja->palette());
  EXPECT_EQ(propia.resolveMask(), caja->palette().resolveMask());
  EXPECT_EQ(caja, Tecleo().ultimaCaja);

  PonerTexto(caja, "7");
  caja->setFocus();
  PonerDescriptor(caja, SetTag(Descriptor(caja), "P", "255"));
  otra->setFocus();
  EXPECT_EQ(QColor(Qt::red), caja->palette().color(QPalette::Base));
}

TEST_F(Tecleando, SoloPasarAOtroControlEsSalir) {
  CajaDescrita* descrita = Entra("T(N) A(D) L(12)", "1.234,50");
  QSignalSpy salidas(descrita, &CajaDescrita::haSalido);
  QDialog aviso;
  aviso.show();
  aviso.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&aviso));
  EXPECT_TRUE(descrita->dentro());
  aviso.hide();
  ventana.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
  EXPECT_EQ("1234.50", caja->text().toStdString());
  EXPECT_TRUE(salidas.isEmpty());

  // Una orden deja la caja sin moverle el foco; lo siguiente que se teclea vuelve a entrar.
  DejarCampo(&ventana);
  DejarCampo(&ventana);
  EXPECT_EQ("1.234,50", caja->text().toStdString());
  EXPECT_EQ(1, salidas.size());
  Teclea("5");
  EXPECT_EQ("5", caja->text().toStdString());

  // El foco cambia mientras la ventana no está activa.
  aviso.show();
  aviso.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&aviso));
  otra->setFocus();
  aviso.hide();
  ventana.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
  EXPECT_EQ("5,00", caja->text().toStdString());

  // Cerrar la ventana no comprueba nada.
  caja->setFocus();
  salidas.clear();
  ventana.close();
  EXPECT_FALSE(descrita->dentro());
  EXPECT_EQ("5,00", caja->text().toStdString());
  EXPECT_TRUE(salidas.isEmpty());
}

TEST_F(Tecleando, NadaEntraSinFiltrarYTodoSeDeshace) {
  const auto pega = [this] { QTest::keySequence(caja, QKeySequence::Paste); };
  const auto suelta = [this] {
    QMimeData datos;
    datos.setText("1a2b3c4d");
    QDragEnterEvent entra({2, 2}, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(caja, &entra);
    QDropEvent evento(QPointF(2, 2), Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(caja, &evento);
  };
  const auto metodo = [this] {
    QInputMethodEvent evento;
    evento.setCommitString("1a2b3c4d");
    QApplication::sendEvent(caja, &evento);
  };
  const auto menu = [this] {
    QContextMenuEvent evento(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(caja, &evento);
    auto* abierto = caja->findChild<QMenu*>();
    ASSERT_TRUE(abierto);
    abierto->actions().at(5)->trigger();
    abierto->close();
  };
  QGuiApplication::clipboard()->setText("1a2b3c4d");
  int n = 0;
  for (const std::function<void()>& llega : std::vector<std::function<void()>>{pega, suelta, metodo, menu}) {
    SCOPED_TRACE(n++);
    Entra("T(D) A(I) L(5)");
    PonerTexto(caja, "9");
    llega();
    EXPECT_EQ(5, caja->text().size());
    EXPECT_TRUE(caja->text().contains("1234")) << caja->text().toStdString();
    EXPECT_FALSE(SeHaMovido());
    QTest::keySequence(caja, QKeySequence::Undo);
    EXPECT_EQ("9", caja->text().toStdString());
    // Un número que no cabe no se corta, que sería otro.
    Entra("T(D) A(I) L(4)");
    QSignalSpy rechazos(CajaDescrita::De(caja), &CajaDescrita::rechazada);
    PonerTexto(caja, "9");
    llega();
    EXPECT_EQ("9", caja->text().toStdString());
    EXPECT_EQ(1, rechazos.size());
  }
  // Caminos sin deshacer: la ranura de pegar y las ayudas técnicas.
  Entra("T(D) A(I) L(4)");
  caja->paste();
  EXPECT_EQ("1234", caja->text().toStdString());
  auto* ayuda = QAccessible::queryAccessibleInterface(caja)->editableTextInterface();
  ayuda->replaceText(1, 2, "56789");
  EXPECT_EQ("1234", caja->text().toStdString());
  ayuda->replaceText(0, 4, "x7y");
  EXPECT_EQ("7", caja->text().toStdString());
  // Un número entero sobre otro no se lee por partes.
  for (const char* antes : {"1000.00", "1234.50", "1500"}) {
    Entra("T(n) A(D) L(11)");
    PonerTexto(caja, antes);
    QAccessible::queryAccessibleInterface(caja)->setText(QAccessible::Value, "1.500,00");
    EXPECT_EQ("1500.00", caja->text().toStdString()) << antes;
  }
  // Sin entrar en ella, queda como al dejarla; una deshabilitada no cambia.
  otra->setFocus();
  CajaDescrita* descrita = Describir(caja, "T(N) A(D) L(9)");
  QSignalSpy salidas(descrita, &CajaDescrita::haSalido);
  QAccessible::queryAccessibleInterface(caja)->setText(QAccessible::Value, "a1.23,567");
  EXPECT_EQ("1,23", caja->text().toStdString());
  ayuda->replaceText(0, 4, "1.234,5");
  EXPECT_EQ("1.234,50", caja->text().toStdString());
  ayuda->replaceText(0, 8, "1234567,89");
  EXPECT_EQ("1.234,50", caja->text().toStdString()) << "no cabe: sigue el que había";
  EXPECT_EQ(3, salidas.size());
  caja->setEnabled(false);
  ayuda->replaceText(0, 1, "9");
  EXPECT_EQ("1.234,50", caja->text().toStdString());
}

TEST_F(Tecleando, LoQueComponeUnaTeclaMuertaEsUnaTecla) {
  const auto compone = [this](const char* texto) {
    QInputMethodEvent evento;
    evento.setCommitString(QString::fromUtf8(texto));
    QApplication::sendEvent(caja, &evento);
  };
  Entra("T(M) A(I) L(3) +[x]", "AB");
  compone("é");
  EXPECT_EQ("É", caja->text().toStdString());  // todo estaba seleccionado
  EXPECT_FALSE(SeHaMovido());
  compone("à");
  compone("ê");
  EXPECT_EQ("ÉÀÊ", caja->text().toStdString());
  EXPECT_TRUE(SeHaMovido());
}

TEST_F(Tecleando, ElRatonQueEntraSeleccionaTodoYLuegoPoneElCursor) {
  Entra("T(D) A(C) L(6)", "000042");
  otra->setFocus();
  QTest::mouseClick(caja, Qt::LeftButton, {}, {12, 8});
  EXPECT_EQ("000042", caja->selectedText().toStdString());
  QTest::mouseClick(caja, Qt::LeftButton, {}, {12, 8});
  EXPECT_EQ("", caja->selectedText().toStdString());
}

TEST_F(Tecleando, SeDeshaceLoTecleadoYVivenLasTeclasDeEdicion) {
  Entra("T(M) A(I) L(9)", "ANTES");
  Teclea("abc");
  QTest::keySequence(caja, QKeySequence::Undo);
  EXPECT_EQ("ANTES", caja->text().toStdString());
  QTest::keySequence(caja, QKeySequence::Redo);
  for (const auto tecla : {Qt::Key_Backspace, Qt::Key_Home, Qt::Key_Delete})
    QTest::keyClick(caja, tecla);
  EXPECT_EQ("B", caja->text().toStdString());
  QTest::keySequence(caja, QKeySequence::SelectAll);
  QTest::keySequence(caja, QKeySequence::Cut);
  QTest::keyClick(caja, Qt::Key_X, Qt::AltModifier);
  EXPECT_EQ("", caja->text().toStdString());
  EXPECT_EQ("B", QGuiApplication::clipboard()->text().toStdString());
  PressKey('J', "S");
  PressKey(36, "");
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ("J", caja->text().toStdString());
  EXPECT_EQ(0, caja->cursorPosition());
}

TEST_F(Tecleando, MasPoneElDefectoDeCasillasYListas) {
  QCheckBox casilla("Sí", &ventana);
  QComboBox lista(&ventana);
  lista.addItems({"uno", " dos ", "dos"});
  casilla.show();
  lista.show();
  const QPalette propia = casilla.palette();
  Describir(&casilla, "T(Z) +[1]");
  Describir(&lista, "T(Z) +[dos]");
  casilla.setFocus();
  EXPECT_EQ(QColor(192, 255, 255), casilla.grab().toImage().pixelColor(casilla.width() - 1, 0));
  Teclea("+");
  QCoreApplication::sendPostedEvents();
  EXPECT_TRUE(casilla.isChecked());
  EXPECT_FALSE(casilla.hasFocus());
  EXPECT_FALSE(casilla.autoFillBackground());
  EXPECT_EQ(propia, casilla.palette());
  lista.setFocus();
  Teclea("+");
  EXPECT_EQ(1, lista.currentIndex());
  PonerDescriptor(&lista, SetTag(Descriptor(&lista), "+", "tres"));
  lista.setFocus();
  Teclea("+");
  EXPECT_EQ(1, lista.currentIndex());
}
