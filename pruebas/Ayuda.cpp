// La ventana de ayuda: qué lee, qué se niega a leer y cómo se busca en ella.

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

#include "comunes/dialogos/MiniHelp.h"
#include "comunes/dialogos/TextoAyuda.h"
#include "comunes/dialogos/VisorAyuda.h"

using namespace comunes;

namespace {

QString Escribir(const QString& ruta, const QByteArray& bytes) {
  QFile fichero(ruta);
  EXPECT_TRUE(fichero.open(QIODevice::WriteOnly) && fichero.write(bytes) == bytes.size());
  return ruta;
}

}  // namespace

TEST(Ayuda, ReconoceElFormatoYLaPaginaDeCodigos) {
  QTemporaryDir carpeta;
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
    const TextoAyuda ayuda = LeerAyuda(Escribir(carpeta.filePath(c.nombre), c.bytes));
    EXPECT_EQ(c.texto == nullptr, !ayuda.fallo.isEmpty());
    EXPECT_EQ(QString(c.texto), ayuda.texto);
    EXPECT_EQ(c.formato, ayuda.formato);
  }
  EXPECT_NE("", LeerAyuda(carpeta.filePath("no-existe")).fallo);
  EXPECT_NE("", LeerAyuda(carpeta.path()).fallo);
}

TEST(Ayuda, NoSaleDeLaCarpetaDelTema) {
  QTemporaryDir fuera;
  QDir(fuera.path()).mkpath("manual/img");
  const auto imagen = [&](const QString& nombre) {
    QImage punto(4, 4, QImage::Format_RGB32);
    punto.fill(Qt::red);
    EXPECT_TRUE(punto.save(fuera.filePath(nombre), "PNG"));
  };
  imagen("secreto.png");
  imagen("manual/img/a.png");
  QFile::link(fuera.filePath("secreto.png"), fuera.filePath("manual/enlace.png"));
  VisorAyuda visor;
  visor.Cargar(Escribir(fuera.filePath("manual/tema.md"), "![a](img/a.png)"));
  const auto se_lee = [&](const QString& nombre) {
    return visor.loadResource(QTextDocument::ImageResource, QUrl(nombre)).isValid();
  };
  EXPECT_TRUE(se_lee("img/a.png"));
  EXPECT_TRUE(se_lee(QUrl::fromLocalFile(fuera.filePath("manual/img/a.png")).toString()));
  for (const QString& nombre :
       {QString("../secreto.png"), QString("img/../../secreto.png"), QString("enlace.png"),
        QUrl::fromLocalFile(fuera.filePath("secreto.png")).toString(), QString("file://servidor/x/a.png"),
        QString("http://127.0.0.1/a.png"), QString("img/no-existe.png"), QString("img")}) {
    EXPECT_FALSE(se_lee(nombre)) << nombre.toStdString();
  }
}

TEST(Ayuda, SeBuscaYSeSiguenLosEnlacesDeDentro) {
  QTemporaryDir carpeta;
  Escribir(carpeta.filePath("otro.md"), "# Otro tema");
  const QString tema =
      Escribir(carpeta.filePath("tema.md"),
               "# Guía\n\n[ir](#último-paso) [otro](otro.md) [red](http://127.0.0.1/)\n\n" +
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
