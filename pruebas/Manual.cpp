// El manual que va dentro del programa y los menús que lo abren, a él y a las herramientas.

#include <QAction>
#include <QDirIterator>
#include <QMenu>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTextBlock>

#include "VentanaPrincipal.h"
#include "comunes/dialogos/MiniHelp.h"
#include "comunes/dialogos/VisorAyuda.h"

using pruebas::Ventana;

namespace {

/// El apartado de una ventana, en su formulario o en su código.
constexpr auto kApartado = R"((?:name="Ayuda" stdset="0"><string[^>]*>|setProperty\("Ayuda", u")([^<"]+))";

QString Leer(const QString& ruta) {
  QFile fichero(ruta);
  EXPECT_TRUE(fichero.open(QIODevice::ReadOnly)) << ruta.toStdString();
  return QString::fromUtf8(fichero.readAll());
}

QStringList Capturas(const QString& texto, const char* expresion) {
  QStringList todas;
  for (auto i = QRegularExpression(QString::fromUtf8(expresion)).globalMatch(texto); i.hasNext();)
    todas << i.next().captured(1);
  return todas;
}

QPointer<comunes::MiniHelp> AyudaAbierta() {
  for (QWidget* ventana : QApplication::topLevelWidgets())
    if (auto* ayuda = qobject_cast<comunes::MiniHelp*>(ventana); ayuda && ayuda->isVisible()) return ayuda;
  return nullptr;
}

QString Apartado(const comunes::MiniHelp& ayuda) {
  return ayuda.findChild<comunes::VisorAyuda*>("Tema")->textCursor().block().text();
}

QSet<QWidget*> Visibles() {
  QSet<QWidget*> visibles;
  for (QWidget* ventana : QApplication::topLevelWidgets())
    if (ventana->isVisible() && ventana->windowType() != Qt::Popup) visibles << ventana;
  return visibles;
}

}  // namespace

TEST(Manual, EnlacesImagenesYApartadosDeCadaVentanaExisten) {
  QTemporaryDir carpeta;
  const Ventana ventana(carpeta.path().toStdString());
  const QString texto = Leer(":/manual/manual.md");
  comunes::VisorAyuda visor;
  visor.Cargar(":/manual/manual.md");
  QStringList apartados = Capturas(texto, R"(\]\(#([^)]+)\))");
  EXPECT_FALSE(apartados.isEmpty());
  for (const char* raiz : {"/comunes", "/ventanas"})
    for (QDirIterator i(DIR_PROYECTO + QString(raiz), {"*.ui", "*.cpp"}, QDir::Files,
                        QDirIterator::Subdirectories);
         i.hasNext();)
      apartados += Capturas(Leer(i.next()), kApartado);
  EXPECT_GT(apartados.size(), 5);
  for (const QString& apartado : apartados)
    EXPECT_TRUE(visor.IrASeccion(apartado)) << apartado.toStdString();
  const QStringList imagenes = Capturas(texto, R"(!\[[^\]]+\]\(([^)]+)\))");
  EXPECT_GE(imagenes.size(), 3);
  for (const QString& imagen : imagenes)
    EXPECT_FALSE(visor.loadResource(QTextDocument::ImageResource, QUrl(imagen)).value<QImage>().isNull())
        << imagen.toStdString();
  EXPECT_TRUE(Capturas(texto, R"((\]\(\w+://))").isEmpty()) << "nada sale a la red";
}

TEST(Manual, F1AbreElApartadoDeLaVentanaEnQueSeEsta) {
  QTemporaryDir carpeta;
  Ventana ventana(carpeta.path().toStdString(), QString(DIR_EJEMPLOS "/gimnasio-acuario.Q19"));
  QTRY_VERIFY(ventana.Acumulado->lista().size() > 3);
  QTest::keyClick(&ventana.frm, Qt::Key_F1);
  const QPointer<comunes::MiniHelp> general = AyudaAbierta();
  ASSERT_TRUE(general);
  EXPECT_EQ("Ayuda: Manual de UnirQ19", general->windowTitle());
  QString apartado;
  QTimer::singleShot(50, &ventana.frm, [&] {
    QWidget* editor = QApplication::activeModalWidget();
    ASSERT_TRUE(editor);
    QTest::keyClick(editor->focusWidget() ? editor->focusWidget() : editor, Qt::Key_F1);
    if (const auto ayuda = AyudaAbierta()) {
      apartado = Apartado(*ayuda);
      EXPECT_EQ(editor, ayuda->parentWidget()) << "la ventana modal no la dejaría responder";
    }
    editor->close();
  });
  ventana.Acumulado->seleccionarSolo(2);
  QTest::keyClick(ventana.Acumulado, Qt::Key_F2);
  EXPECT_EQ("El editor de registros", apartado);
  EXPECT_FALSE(general) << "no hay más que una";
}

// La caja es de la ayuda, que estaba activa: abrir otra no puede llevársela.
TEST(Manual, F1EnUnaCajaAbiertaSobreLaAyuda) {
  QTemporaryDir carpeta;
  Ventana ventana(carpeta.path().toStdString());
  QTest::keyClick(&ventana.frm, Qt::Key_F1);
  const QPointer<comunes::MiniHelp> general = AyudaAbierta();
  ASSERT_TRUE(general);
  QTRY_VERIFY(QApplication::activeWindow() == general);
  Cajas cajas;
  cajas.Hacer([&](comunes::MyBox& caja) {
    EXPECT_EQ(caja.parentWidget(), general);
    QTest::keyClick(&caja, Qt::Key_F1);
    Cajas::Pulsar(caja, "Aceptar");
  });
  EXPECT_EQ(comunes::MyMsgBox("Aviso", {}, 1, 1, 1), comunes::kAceptar);
  EXPECT_TRUE(general);
}

TEST(Manual, CadaEntradaDelMenuAbreUnaVentanaYSoloUna) {
  QTemporaryDir carpeta;
  qputenv("XDG_DATA_HOME", carpeta.path().toUtf8());
  ASSERT_TRUE(QFile::copy(DIR_EJEMPLOS "/gimnasio-acuario.Q19", carpeta.filePath("a.Q19")));
  const auto selector = comunes::PonerSelectorFicheros(
      [&](const comunes::PeticionFicheros&) { return QStringList{carpeta.filePath("a.Q19")}; });
  Ventana ventana(carpeta.path().toStdString());
  const QSet<QWidget*> antes = Visibles();
  for (const char* menu : {"menuHerramientas", "menuAyuda"}) {
    for (QAction* accion : ventana.hijo<QMenu>(menu)->actions()) {
      if (accion->isSeparator() || !accion->isVisible()) continue;
      SCOPED_TRACE(accion->text().toStdString());
      EXPECT_TRUE(accion->text().contains(u'&'));
      const QSet<QWidget*> previas = Visibles();
      int modales = 0;
      for (int vez = 1; vez <= 2; ++vez) {
        QTimer::singleShot(20, &ventana.frm, [&modales] {
          QWidget* modal = QApplication::activeModalWidget();
          if (modal == nullptr) return;
          ++modales;
          modal->close();
        });
        accion->trigger();
        QTest::qWait(50);
        const auto abiertas = (Visibles() - previas).size();
        EXPECT_EQ(modales == 0 ? 1 : 0, abiertas);
        EXPECT_EQ(modales == 0 ? 0 : vez, modales);
      }
    }
  }
  EXPECT_TRUE(ventana.frm.close());
  EXPECT_EQ(0, (Visibles() - antes).size()) << "se cierran con la principal";
  comunes::PonerSelectorFicheros(selector);
}
