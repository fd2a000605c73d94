#include "comunes/plataforma/Explorar.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "pruebas/EnCarpeta.h"

using namespace comunes;

namespace {

/// Sustituye el selector mientras vive.
struct ConSelector {
  explicit ConSelector(SelectorFicheros nuevo) : anterior(PonerSelectorFicheros(std::move(nuevo))) {}
  ~ConSelector() { PonerSelectorFicheros(anterior); }
  SelectorFicheros anterior;
};

const ReglaNombre kRegla = [](const QString& ruta) { return QuitarExtension(ruta) + ".Q19"; };

class Dialogo : public pruebas::EnCarpeta {};

}  // namespace

TEST(Explorar, QuitarExtension) {
  for (const auto& [nombre, esperado] : {std::pair{"C:\\a.b\\x.q19", "C:\\a.b\\x"},
                                         {"C:\\a.b\\x", "C:\\a"},
                                         {".Q19", ""},
                                         {"x", "x"},
                                         {"x.tar.gz", "x.tar"},
                                         {"", ""}})
    EXPECT_EQ(QuitarExtension(nombre), esperado) << nombre;
}

TEST(Explorar, Filtros) {
  const auto filtro = [](const char* texto) {
    QString todo;
    for (const auto& f : ConstruirFiltro(QString::fromUtf8(texto)))
      todo += f.descripcion + u'>' + f.patrones + u'\n';
    return todo.toStdString();
  };
  EXPECT_EQ(filtro("q19"), "Ficheros (*.q19)>*.Q19\n");
  EXPECT_EQ(filtro("@*.q19;*.txt"), "Ficheros (*.q19;*.txt)>*.q19;*.txt\n");
  EXPECT_EQ(filtro("|Remesas|*.q19|Todos|*.*"), "Remesas>*.q19\nTodos>*.*\n");
  EXPECT_EQ(filtro("|Remesas|*.q19|"), "Remesas>*.q19\n");
}

TEST_F(Dialogo, PeticionYResultado) {
  const QString actual = QDir::currentPath();
  PeticionFicheros pedida;
  QStringList elegidas{ruta("uno.q19"), ruta("dos.q19")};
  const ConSelector selector([&](const PeticionFicheros& p) {
    pedida = p;
    QDir::setCurrent(carpeta_.path());
    return elegidas;
  });

  EXPECT_EQ(DialogoFichero(true, nullptr, " " + carpeta_.path() + " ", "q19", true, "x"),
            carpeta_.path() + QChar() + "uno.q19" + QChar() + "dos.q19" + QChar() + QChar());
  EXPECT_EQ(pedida.titulo, "Abrir Fichero");
  EXPECT_EQ(pedida.carpeta, carpeta_.path());
  EXPECT_EQ(pedida.nombre, "x");
  EXPECT_EQ(QDir::currentPath(), actual);

  EXPECT_EQ(DialogoFichero(false, nullptr, "  ", "q19", false, ""), elegidas[0]);
  EXPECT_EQ(pedida.titulo, "Guardar Fichero");
  EXPECT_TRUE(QFileInfo(pedida.carpeta).isDir());

  elegidas.clear();
  EXPECT_EQ(DialogoFichero(false, nullptr, "", "q19", false, ""), "");
  QDir::setCurrent(actual);
}

TEST_F(Dialogo, PreguntaPorElNombreFinal) {
  escribir("vieja.Q19", {});
  QList<PeticionFicheros> pedidas;
  QStringList respuestas{ruta("vieja.txt"), ruta("nueva.txt")};
  const ConSelector selector([&](const PeticionFicheros& p) {
    pedidas.append(p);
    return QStringList{respuestas[pedidas.size() - 1]};
  });

  QString pregunta;
  const auto contestar = [&](const char* boton) {
    QTimer::singleShot(0, [&pregunta, boton] {
      auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(caja, nullptr);
      pregunta = caja->text();
      EXPECT_EQ(caja->textFormat(), Qt::PlainText);
      EXPECT_EQ(caja->defaultButton()->text(), "&No");
      for (auto* b : caja->buttons())
        if (b->text() == boton) b->click();
    });
  };

  contestar("&No");
  EXPECT_EQ(DialogoFichero(false, nullptr, "", "q19", false, "", kRegla), respuestas[1]);
  EXPECT_TRUE(pregunta.contains("vieja.Q19")) << pregunta.toStdString();
  ASSERT_EQ(pedidas.size(), 2);
  EXPECT_EQ(pedidas[1].carpeta, carpeta_.path());
  EXPECT_EQ(pedidas[1].nombre, "vieja.txt");

  pedidas.clear();
  contestar("&Sí");
  EXPECT_EQ(DialogoFichero(false, nullptr, "", "q19", false, "", kRegla), respuestas[0]);
  EXPECT_EQ(pedidas.size(), 1);
}

TEST_F(Dialogo, ElDialogoDeVerdad) {
  for (const char* nombre : {"a.q19", "B.Q19", "c.txt"})
    escribir(nombre, {});
  QStringList vistos;
  QTimer::singleShot(0, [&] {
    auto* dialogo = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialogo, nullptr);
    EXPECT_EQ(dialogo->objectName(), "DialogoFichero");
    EXPECT_EQ(dialogo->windowTitle(), "Guardar Fichero");
    EXPECT_EQ(dialogo->nameFilters().size(), 1);
    auto* lista = dialogo->findChild<QListView*>("listView");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lista->model()->rowCount(lista->rootIndex()) == 2; }));
    for (int i = 0; i < lista->model()->rowCount(lista->rootIndex()); ++i)
      vistos << lista->model()->index(i, 0, lista->rootIndex()).data().toString();
    auto* nombre = dialogo->findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(nombre->text(), "propuesto");
    EXPECT_EQ(lista->model()->index(0, 2, lista->rootIndex()).data(), "Fichero Q19");
    // La ruta entera de uno que existe vale, y el diálogo no debe preguntar por su cuenta.
    nombre->setText(ruta("a.q19"));
    const auto* guardar = dialogo->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save);
    EXPECT_TRUE(QTest::qWaitFor([&] { return guardar->isEnabled(); }));
    QTest::keyClick(nombre, Qt::Key_Return);
    if (dialogo->isVisible()) dialogo->reject();
  });
  EXPECT_EQ(DialogoFichero(false, nullptr, carpeta_.path(), "q19", false, "propuesto"), ruta("a.q19"));
  EXPECT_EQ(vistos.size(), 2) << vistos.join(' ').toStdString();
  EXPECT_TRUE(vistos.contains("a.q19") && vistos.contains("B.Q19"));
}
