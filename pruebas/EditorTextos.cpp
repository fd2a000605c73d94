// El MicroEditor: qué bytes lee y escribe, y la ventana manejada por sus controles.

#include <QClipboard>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QtTest>
#include <utility>

#include "Cajas.h"
#include "EnCarpeta.h"
#include "comunes/dialogos/SelectorColor.h"
#include "comunes/herramientas/CargarGrabarTexto.h"
#include "comunes/herramientas/Encriptar.h"
#include "comunes/herramientas/LineasAjustes.h"
#include "comunes/herramientas/frmEditor.h"
#include "comunes/plataforma/IniFiles.h"
#include "ficheros/ErrorEjecucion.h"

using namespace herramientas;

namespace {

/// El editor de verdad, sobre un fichero con esos bytes.
struct Editor {
  explicit Editor(QString fichero, const QStringList& valores = {}) : ruta(std::move(fichero)) {
    EXPECT_TRUE(frm.Cargar(ruta, valores));
    frm.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&frm));
  }
  template <typename Control = QPushButton>
  Control* hijo(const char* nombre) {
    return frm.findChild<Control*>(QLatin1String(nombre));
  }
  void pulsar(const char* boton) { QTest::mouseClick(hijo(boton), Qt::LeftButton); }
  QString marca() { return texto->property("Tag").toString(); }

  QString ruta;
  frmEditor frm;
  QPlainTextEdit* texto = hijo<QPlainTextEdit>("txtEditor");
};

class EditorTextos : public pruebas::EnCarpeta {
 protected:
  QString con(const QByteArray& bytes) { return escribir("a.txt", bytes); }
};

}  // namespace

TEST_F(EditorTextos, CargarYGrabarSoloCambiaLosFinalesDeLinea) {
  QByteArray todos;
  for (int byte = 0; byte < 256; ++byte)
    if (byte != '\r' && byte != '\n') todos += static_cast<char>(byte);
  QByteArray diezMegas;
  while (diezMegas.size() < 10'000'000)
    diezMegas +=
        "Una l\xEDnea de diez megas, larga como las de un listado de clientes con sus domicilios,\xA0\r\n";
  const QByteArray marca = "\xEF\xBB\xBF";
  const std::pair<QByteArray, QByteArray> casos[] = {
      {"uno\r\ndos\r\ntres\r\n", "uno\r\ndos\r\ntres\r\n"},
      {"uno\r\ndos\r\ntres", "uno\r\ndos\r\ntres\r\n"},
      {"a\nb\rc\r\n\n\r\rd", "a\r\nb\r\nc\r\n\r\n\r\n\r\nd\r\n"},
      {"a\n\r\n", "a\r\n\r\n"},
      {"\n", "\r\n"},
      {"", "\r\n"},
      {todos, todos + "\r\n"},
      {diezMegas, diezMegas},
      {marca + "Ω ñ\xC2\xA0\n", marca + "Ω ñ\xC2\xA0\r\n"},
      // Con la marca pero sin ser UTF-8, o con lo que la caja tomaría por un final de párrafo.
      {marca + "\xF1\r\n", marca + "\xF1\r\n"},
      {marca + "a\u2029b\r\n", marca + "a\u2029b\r\n"},
      // Sin marca, UTF-8 es lo que no puede ser otra cosa; el salto dentro de otro carácter no acaba línea.
      {"Ω ñ\n", "Ω ñ\r\n"},
      {pruebas::Utf16("Ω\u010A ñ\n", false), pruebas::Utf16("Ω\u010A ñ\r\n", false)},
      {pruebas::Utf16("Ω\u0D0A ñ\r\n", true), pruebas::Utf16("Ω\u0D0A ñ\r\n", true)},
  };
  QString fichero = ruta("a.txt");
  for (const auto& [leido, grabado] : casos) {
    SCOPED_TRACE(leido.left(40).toStdString());
    con(leido);
    QPlainTextEdit caja("lo anterior");
    EXPECT_TRUE(CargarGrabarTexto("CARGAR", fichero, caja));
    EXPECT_EQ(-1, PrimeroSinGrabar(caja));
    EXPECT_TRUE(CargarGrabarTexto("REGRABAR", fichero, caja));
    EXPECT_TRUE(grabado == leer(fichero));
  }
  QPlainTextEdit caja("lo anterior");
  EXPECT_FALSE(CargarGrabarTexto("Cargar", fichero, caja));
  fichero = ruta("no-existe");
  EXPECT_TRUE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_EQ("", caja.toPlainText());
}

TEST_F(EditorTextos, LoQueTardaOSePerderiaNoSeCargaSinDecirlo) {
  QString fichero = con("corta\r\n" + QByteArray(1'000'001, 'x') + "\r\n");
  QPlainTextEdit caja("lo anterior");
  const Cajas cajas{"Cancelar", "Aceptar", "Cancelar", "Aceptar", "Aceptar"};
  EXPECT_FALSE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_EQ("lo anterior", caja.toPlainText());
  EXPECT_TRUE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_EQ(1'000'007, caja.toPlainText().size());

  fichero = con(QByteArray(600'000, '\n'));
  EXPECT_FALSE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_TRUE(cajas.Mensaje(2).startsWith("El fichero tiene 600.000 líneas: "));
  fichero = con(pruebas::Utf16("a\u2029b", false));
  EXPECT_FALSE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_TRUE(cajas.Mensaje(3).startsWith("El fichero está en UTF-16LE"));
  fichero = con(pruebas::Utf16("a\n", true) + "x");
  EXPECT_FALSE(CargarGrabarTexto("CARGAR", fichero, caja));
  EXPECT_TRUE(cajas.Mensaje(4).startsWith("El fichero empieza como un texto en UTF-16BE"));
}

TEST_F(EditorTextos, GrabarPreguntaAntesDeSustituir) {
  QString fichero = con("antes");
  QPlainTextEdit caja("después");
  const auto grabar = [&](QMessageBox::StandardButton respuesta) {
    QString dicho;
    QTimer::singleShot(0, [&] {
      auto* pregunta = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      dicho = pregunta->text();
      EXPECT_EQ(QMessageBox::Warning, pregunta->icon());
      pregunta->button(respuesta)->click();
    });
    EXPECT_EQ(respuesta == QMessageBox::Ok, CargarGrabarTexto("GRABAR", fichero, caja));
    EXPECT_EQ("Fichero " + fichero + " existe en disco. Se Sobreescribirá.", dicho);
  };
  grabar(QMessageBox::Cancel);
  EXPECT_EQ("antes", leer(fichero));
  grabar(QMessageBox::Ok);
  EXPECT_EQ("despu\xE9s\r\n", leer(fichero));

  // Sin ruta se pide, en la esquina de la caja; cancelar no hace nada y lo que se elige queda puesto.
  const auto pedir = [&](const QString& respuesta) {
    QTimer::singleShot(0, [respuesta] {
      auto* peticion = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
      EXPECT_EQ("Path y Nombre del fichero a GRABAR", peticion->labelText());
      EXPECT_EQ("El MicroEditor de QMX", peticion->windowTitle());
      peticion->setTextValue(respuesta);
      respuesta.isEmpty() ? peticion->reject() : peticion->accept();
    });
    return CargarGrabarTexto("GRABAR", fichero, caja);
  };
  fichero.clear();
  EXPECT_FALSE(pedir(""));
  EXPECT_EQ("", fichero);
  EXPECT_THROW(pedir(ruta("no-hay/b.txt")), ficheros::ErrorEjecucion);
  EXPECT_EQ("", fichero);
  EXPECT_TRUE(pedir(ruta("b.txt")));
  EXPECT_EQ(ruta("b.txt"), fichero);
  EXPECT_EQ("despu\xE9s\r\n", leer(fichero));
}

TEST_F(EditorTextos, Encripta) {
  const std::pair<const char*, const char*> casos[] = {
      {"", ""}, {"V", "00"}, {"zzzzzzz", "2C3F36373B282C"}, {"a\r\n", "374846"}, {"€", "D6"}};
  for (const auto& [texto, encriptado] : casos)
    EXPECT_EQ(encriptado, Encriptar(texto, "VELMAR")) << texto;
  EXPECT_THROW(Encriptar("a", ""), ficheros::ErrorEjecucion);
}

TEST_F(EditorTextos, LaMarcaDiceSiHayCambiosYSalirPregunta) {
  Editor e(con("uno\r\n"));
  EXPECT_EQ("", e.marca());
  EXPECT_EQ("Línea 1, columna 1", e.hijo<QLabel>("Posicion")->text());
  e.texto->insertPlainText("ñ");
  EXPECT_EQ("MODIFICADO", e.marca());
  EXPECT_EQ("Línea 1, columna 2", e.hijo<QLabel>("Posicion")->text());
  Cajas cajas{"Cancelar"};
  e.pulsar("cmdSalir");
  EXPECT_TRUE(e.frm.isVisible());
  ASSERT_EQ(1U, cajas.Vistas().size());
  EXPECT_EQ("Datos han sido modificados. ¿ Desea salir sin grabar ?", cajas.Mensaje(0));
  EXPECT_EQ("Cancelar", cajas.Vistas()[0].enfocado);
  EXPECT_EQ("a.txt", cajas.Vistas()[0].titulo);
  EXPECT_EQ("uno\r\n", leer(e.ruta));

  // Un carácter que se perdería se señala en vez de grabar; deshecho, se graba y se cierra sin preguntar.
  QApplication::clipboard()->setText("Ω");
  QTest::keyClick(e.texto, Qt::Key_V, Qt::ControlModifier);
  cajas.Responder("Aceptar");
  e.pulsar("cmdGrabar");
  EXPECT_TRUE(cajas.Mensaje(1).contains("«Ω» (U+03A9), en la línea 1, columna 2,"))
      << cajas.Mensaje(1).toStdString();
  EXPECT_EQ("Ω", e.texto->textCursor().selectedText());
  EXPECT_EQ("uno\r\n", leer(e.ruta));
  QTest::keyClick(e.texto, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ("ñuno", e.texto->toPlainText());
  QTest::keyClick(e.texto, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ("ñ\nuno", e.texto->toPlainText()) << "con Mayús, un final de línea más";
  EXPECT_EQ(2, e.texto->blockCount());
  QTest::keyClick(e.texto, Qt::Key_Backspace);
  // Si no se puede grabar, la ventana sigue con sus cambios.
  QTest::keyClick(e.texto, Qt::Key_A);
  ASSERT_TRUE(QFile::remove(e.ruta) && QDir().mkdir(e.ruta));
  cajas.Responder("Aceptar");
  e.pulsar("cmdGrabar");
  EXPECT_TRUE(cajas.Mensaje(2).startsWith("Error 75"));
  EXPECT_EQ("MODIFICADO", e.marca());
  ASSERT_TRUE(e.frm.isVisible() && QDir().rmdir(e.ruta));
  e.pulsar("cmdGrabar");
  EXPECT_FALSE(e.frm.isVisible());
  EXPECT_EQ(
      "\xF1"
      "auno\r\n",
      leer(e.ruta));
}

TEST_F(EditorTextos, InsertaLineasPreparadasYColores) {
  comunes::RutaAjustes = "/opt/Tarvo.INI";
  EXPECT_TRUE(LineasAjustes("/otra/a.txt").isEmpty());
  const QStringList lineas = LineasAjustes("/otra/TARVO.ini");
  EXPECT_TRUE(lineas.contains("OrigenQ19=") && lineas.contains("1=Importe;11;1;S;N;C;;EUROS;;"));

  Editor e(con("ab"), {"Clave=", "entera"});
  auto* lista = e.hijo<QListWidget>("QueOpc");
  const auto elegir = [&](int fila) {
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {},
                      lista->visualItemRect(lista->item(fila)).center());
    EXPECT_TRUE(e.texto->hasFocus());
  };
  EXPECT_FALSE(lista->isVisible());
  for (const char* rotulo : {"<<", ">>", "<<"}) {
    e.pulsar("cmdMas");
    EXPECT_EQ(rotulo, e.hijo("cmdMas")->text());
    EXPECT_EQ(2, lista->count());
  }
  ASSERT_TRUE(lista->isVisible());
  elegir(0);
  QTest::keyClick(e.texto, Qt::Key_Right, Qt::ShiftModifier);
  elegir(1);
  EXPECT_EQ("Clave=entera\nb", e.texto->toPlainText());
  e.texto->moveCursor(QTextCursor::End);
  elegir(0);
  EXPECT_EQ("Clave=entera\nb\nClave=", e.texto->toPlainText()) << "al final, en su propia línea";

  QColor pedido;
  QColor elegido(0x12, 0xAB, 0xFF);
  const auto anterior = comunes::PonerSelectorColor([&](const QColor& inicial, QWidget*) {
    pedido = inicial;
    return elegido;
  });
  e.texto->selectAll();
  e.pulsar("cmdColores");
  EXPECT_EQ("&H00FFAB12&", e.texto->toPlainText());
  e.texto->selectAll();
  elegido = QColor();
  e.pulsar("cmdColores");
  EXPECT_EQ(QColor(0x12, 0xAB, 0xFF), pedido);
  EXPECT_EQ("&H00FFAB12&", e.texto->toPlainText());
  comunes::PonerSelectorColor(anterior);
}

TEST_F(EditorTextos, CtrlYBotonDerechoEncriptanLoSeleccionado) {
  Editor e(con("a\r\nb\xA0"));
  QWidget* fondo = e.texto->viewport();
  const auto gesto = [&](Qt::KeyboardModifiers teclas) {
    QTest::mousePress(fondo, Qt::RightButton, teclas, QPoint(5, 5));
    QTest::qWait(20);
  };
  gesto(Qt::ControlModifier);  // sin selección
  e.texto->selectAll();
  gesto(Qt::ControlModifier | Qt::ShiftModifier);
  Cajas cajas{"No", "Si"};
  gesto(Qt::ControlModifier);
  EXPECT_EQ("a\nb\u00A0", e.texto->document()->toRawText().replace(QChar::ParagraphSeparator, u'\n'));
  gesto(Qt::ControlModifier);
  EXPECT_EQ("3748462FE1", e.texto->toPlainText());
  ASSERT_EQ(2U, cajas.Vistas().size());
  EXPECT_EQ("Si", cajas.Vistas()[0].enfocado);
  EXPECT_EQ(17, cajas.Vistas()[0].icono);
  cajas.Responder("Aceptar");
  e.frm.close();
}

TEST_F(EditorTextos, BuscaYCopiaSinCambiarNada) {
  Editor e(con("uno dos\r\nUno\xA0tres\r\n"));
  auto* buscado = e.hijo<QLineEdit>("Buscado");
  QTest::keyClick(e.texto, Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(buscado->hasFocus());
  QTest::keyClicks(buscado, "uno");
  const auto linea = [&] { return e.texto->textCursor().blockNumber() + 1; };
  for (const int esperada : {1, 2, 1}) {
    QTest::keyClick(buscado, Qt::Key_Return);
    EXPECT_EQ(esperada, linea());
  }
  QTest::keyClick(buscado, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(2, linea());
  QTest::keyClicks(buscado, "x");
  QTest::keyClick(buscado, Qt::Key_F3);
  EXPECT_EQ("No aparece", e.hijo<QLabel>("Hallazgo")->text());
  QTest::keyClick(buscado, Qt::Key_Escape);
  EXPECT_TRUE(e.frm.isVisible() && e.texto->hasFocus());
  e.texto->selectAll();
  e.texto->copy();
  e.texto->paste();
  EXPECT_EQ("uno dos\nUno\u00A0tres", TextoDe(*e.texto));
  EXPECT_EQ("uno dos\nUno\u00A0tres", QApplication::clipboard()->text());
  QTest::keyClick(e.texto, Qt::Key_S, Qt::ControlModifier);
  QTest::keyClick(e.texto, Qt::Key_Escape);
  EXPECT_FALSE(e.frm.isVisible());
}
