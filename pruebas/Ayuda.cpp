// La ventana de ayuda: qué lee, qué se niega a leer y cómo se busca en ella.

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QtTest>

#include "comunes/dialogos/MiniHelp.h"
#include "comunes/dialogos/TextoAyuda.h"
#include "comunes/dialogos/VisorAyuda.h"
#include "pruebas/EnCarpeta.h"

using namespace comunes;

class Ayuda : public pruebas::EnCarpeta {};

TEST_F(Ayuda, ReconoceElFormatoYLaPaginaDeCodigos) {
  using Formato = TextoAyuda::Formato;
  struct Caso {
    const char* nombre;
    QByteArray bytes;
    const char* texto;  // nulo: no se lee
    Formato formato = Formato::Llano;
  };
  const Caso casos[] = {{"a.txt", "ESPA\xC3\x91", "ESPAÑ"},
                        {"b.txt", "ESPA\xD1 \x80", "ESPAÑ €"},
                        {"c.md", "\xEF\xBB\xBF# \xC3\x91", "# Ñ", Formato::Markdown},
                        {"d.txt", QByteArray("\xFF\xFE\xD1\x00", 4), "Ñ"},
                        {"e.HTM", "<b>x</b>", "<b>x</b>", Formato::Html},
                        {"f", "<!DOCTYPE html><p>x", "<!DOCTYPE html><p>x", Formato::Html},
                        {"g.txt", QByteArray("a\0b", 3), nullptr},
                        {"h.txt", QByteArray(5 * 1024 * 1024, 'a'), nullptr}};
  for (const auto& c : casos) {
    SCOPED_TRACE(c.nombre);
    const TextoAyuda ayuda = LeerAyuda(escribir(c.nombre, c.bytes));
    EXPECT_EQ(c.texto == nullptr, !ayuda.fallo.isEmpty());
    EXPECT_EQ(QString(c.texto), ayuda.texto);
    EXPECT_EQ(c.formato, ayuda.formato);
  }
  EXPECT_NE("", LeerAyuda(ruta("no-existe")).fallo);
  EXPECT_NE("", LeerAyuda(carpeta_.path()).fallo);
}

TEST_F(Ayuda, NoSaleDeLaCarpetaDelTema) {
  QDir(carpeta_.path()).mkpath("manual/img");
  const auto imagen = [&](const QString& nombre) {
    QImage punto(4, 4, QImage::Format_RGB32);
    punto.fill(Qt::red);
    EXPECT_TRUE(punto.save(ruta(nombre), "PNG"));
  };
  imagen("secreto.png");
  imagen("manual/img/a.png");
  QFile::link(ruta("secreto.png"), ruta("manual/enlace.png"));
  VisorAyuda visor;
  visor.Cargar(escribir("manual/tema.md", "![a](img/a.png)"));
  const auto se_lee = [&](const QString& nombre) {
    return visor.loadResource(QTextDocument::ImageResource, QUrl(nombre)).isValid();
  };
  EXPECT_TRUE(se_lee("img/a.png"));
  EXPECT_TRUE(se_lee(QUrl::fromLocalFile(ruta("manual/img/a.png")).toString()));
  for (const QString& nombre :
       {QString("../secreto.png"), QString("img/../../secreto.png"), QString("enlace.png"),
        QUrl::fromLocalFile(ruta("secreto.png")).toString(), QString("file://servidor/x/a.png"),
        QString("http://127.0.0.1/a.png"), QString("img/no-existe.png"), QString("img")}) {
    EXPECT_FALSE(se_lee(nombre)) << nombre.toStdString();
  }
}

TEST_F(Ayuda, SeBuscaYSeSiguenLosEnlacesDeDentro) {
  escribir("otro.md", "# Otro tema");
  const QString tema =
      escribir("tema.md", "# Guía\n\n[ir](#último-paso) [otro](otro.md) [red](http://127.0.0.1/)\n\n" +
                              QByteArray("Una línea.\n\n").repeated(200) + "## Último paso\n\nfinal único\n");
  MiniHelp ayuda;
  ayuda.Cargar(tema);
  ayuda.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&ayuda));
  auto* visor = ayuda.findChild<VisorAyuda*>();
  auto* buscado = ayuda.findChild<QLineEdit*>("Buscado");
  QTest::keyClick(visor, Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(buscado->hasFocus());
  QTest::keyClicks(buscado, "final");
  for (int vuelta = 0; vuelta < 2; ++vuelta) {
    QTest::keyClick(buscado, Qt::Key_Return);
    EXPECT_EQ("final", visor->textCursor().selectedText());
    EXPECT_EQ("", ayuda.findChild<QLabel*>("Hallazgo")->text());
  }
  QTest::keyClicks(buscado, "zz");
  QTest::keyClick(buscado, Qt::Key_Return);
  EXPECT_EQ("No aparece", ayuda.findChild<QLabel*>("Hallazgo")->text());
  QTest::keyClick(buscado, Qt::Key_Escape);
  EXPECT_FALSE(buscado->isVisible());

  emit visor->anchorClicked(QUrl("#último-paso"));
  EXPECT_EQ("Último paso", visor->textCursor().block().text());
  emit visor->anchorClicked(QUrl("http://127.0.0.1/"));
  EXPECT_TRUE(visor->toPlainText().startsWith("Guía"));
  emit visor->anchorClicked(QUrl("otro.md"));
  EXPECT_EQ("Otro tema", visor->toPlainText());
  EXPECT_EQ("Ayuda: Otro tema", ayuda.windowTitle());
  QTest::keyClick(visor, Qt::Key_Escape);
  EXPECT_FALSE(ayuda.isVisible());
}
