#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>

#include "VentanaPrincipal.h"
#include "comunes/plataforma/Formatos.h"
#include "remesa/Fichero.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

class VariosFicheros : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
    escribir("a.Q19", Fichero(Remesa("20260405", {"00000001000"})));
    escribir("b.Q19", Fichero(Remesa("20260405", {"00000000200", "00000000030"})));
    escribir("c.Q19", Fichero(Remesa("20260505", {"00000000004"})));
    escribir("nada.Q19", "0119144001");
    std::filesystem::copy(DIR_EJEMPLOS "/devoluciones/gimnasio-devueltos.Q19", carpeta_ / "vueltos.Q19");
  }
  void TearDown() override {
    comunes::PonerLocaleUsuario({});
    Carpeta::TearDown();
  }
  /// Lo que quedaría al importarlos de uno en uno.
  std::vector<std::string> juntos(std::initializer_list<const char*> nombres) const {
    remesa::ListaRegistros lista;
    for (const char* nombre : nombres) {
      remesa::Importar(lista, remesa::LeerFichero(carpeta_ / nombre));
      remesa::RecalcularTotales(lista);
    }
    return Bytes(lista);
  }
};

QPoint Fila(const Ventana& v, int fila) {
  return v.Ficheros->visualRect(v.Ficheros->model()->index(fila, 0)).center();
}

void Anadir(const Ventana& v, int fila) {
  QTest::mouseClick(v.Ficheros->viewport(), Qt::LeftButton, Qt::ControlModifier, Fila(v, fila));
}

/// El menú que se abre al pedirlo en una fila (-1, con el teclado).
QMenu* MenuDe(Ventana& v, int fila) {
  QContextMenuEvent pedido(fila < 0 ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse, Fila(v, fila),
                           v.Ficheros->viewport()->mapToGlobal(Fila(v, fila)));
  QApplication::sendEvent(v.Ficheros->viewport(), &pedido);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  EXPECT_NE(menu, nullptr);
  return menu;
}

void Pulsar(QMenu* menu, const QString& rotulo) {
  ASSERT_NE(menu, nullptr);
  for (QAction* accion : menu->actions())
    if (accion->text().remove(u'&').startsWith(rotulo)) {
      menu->setActiveAction(accion);
      QTest::keyClick(menu, Qt::Key_Return);
      return QCoreApplication::processEvents();
    }
  ADD_FAILURE() << "el menú no tiene " << rotulo.toStdString();
}

}  // namespace

TEST_F(VariosFicheros, UnImportarLosTomaEnElOrdenDeLaLista) {
  Ventana v(carpeta_);
  v.elegir("b.Q19");
  Anadir(v, 3);
  EXPECT_EQ(v.Ficheros->marcados(), QStringList{"b.Q19"}) << "lo que no es una remesa no queda elegido";
  EXPECT_TRUE(v.texto("AvisoPreview").startsWith(u"No se ha tomado nada.Q19, que no es una remesa"_s))
      << v.texto("AvisoPreview").toStdString();
  Anadir(v, 0);
  EXPECT_EQ(v.Ficheros->marcados(), (QStringList{"a.Q19", "b.Q19"}));
  EXPECT_TRUE(v.texto("InfoPreview").startsWith(u"2 ficheros elegidos · a.Q19 · "_s));
  EXPECT_EQ(v.Preview->lista().size(), 6U) << "se ve el último";
  Anadir(v, 0);
  EXPECT_TRUE(v.texto("InfoPreview").startsWith(u"b.Q19 · "_s)) << "quitado, se ve el que queda";
  Anadir(v, 1);
  EXPECT_EQ(v.Ficheros->marcados(), QStringList{"b.Q19"}) << "el único no se puede quitar";

  QTest::keyClick(v.Ficheros, Qt::Key_A, Qt::ControlModifier);
  ASSERT_EQ(v.Ficheros->marcados().size(), 5);
  {
    // El tercero es de otra fecha: se dice antes. Con "No" no se importa ninguno.
    Cajas cajas{"No"};
    v.pulsar("Importar");
    EXPECT_TRUE(cajas.Mensaje(0).contains(u"c.Q19: Otra fecha de cobro (05/05/2026)"_s))
        << cajas.Mensaje(0).toStdString();
    EXPECT_TRUE(v.acumulado().empty());
  }
  Cajas cajas{"Si"};
  v.pulsar("Importar");
  EXPECT_EQ(v.acumulado(), juntos({"a.Q19", "b.Q19", "c.Q19"}));
  EXPECT_EQ(v.texto("EstadoMensaje"),
            u"Importados 3 ficheros: 4 adeudos, 12,34 €. No se han tomado nada.Q19, que no es una remesa del "
            u"Cuaderno 19.14, ni vueltos.Q19, que trae devoluciones y se ve en Devoluciones."_s);
  EXPECT_TRUE(v.importado());
  const auto* lista = QAccessible::queryAccessibleInterface(v.Ficheros);
  for (const auto& [fila, nombre] :
       {std::pair{0, "a.Q19, importado"}, {2, "c.Q19, importado"}, {3, "nada.Q19"}}) {
    EXPECT_EQ(lista->child(fila)->text(QAccessible::Name), nombre);
    EXPECT_EQ(v.Ficheros->model()->index(fila, 0).data(Qt::DecorationRole).isNull(), fila == 3);
  }
  const auto antes = v.acumulado();
  v.pulsar("Importar");
  EXPECT_TRUE(v.texto("EstadoMensaje").endsWith(u"Ya estaban a.Q19, b.Q19, c.Q19."_s));
  EXPECT_EQ(v.acumulado(), antes);
  v.pulsar("Empezar");
  EXPECT_TRUE(v.Ficheros->model()->index(0, 0).data(Qt::DecorationRole).isNull());
}

TEST_F(VariosFicheros, SoltarlosEsElegirlosYElMenuNoElige) {
  Ventana v(carpeta_ / "..");
  QMimeData datos;
  QList<QUrl> urls;
  for (const char* nombre : {"c.Q19", "a.Q19"})
    urls << QUrl::fromLocalFile(comunes::DesdeRuta(carpeta_ / nombre));
  datos.setUrls(urls);
  QDragEnterEvent entra({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, {});
  QApplication::sendEvent(&v.frm, &entra);
  EXPECT_TRUE(entra.isAccepted());
  QDropEvent suelta({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, {});
  QApplication::sendEvent(&v.frm, &suelta);
  QCoreApplication::processEvents();
  EXPECT_EQ(v.Ficheros->marcados(), (QStringList{"a.Q19", "c.Q19"}));
  EXPECT_TRUE(v.texto("InfoPreview").startsWith(u"2 ficheros elegidos · c.Q19"_s));
  EXPECT_TRUE(v.acumulado().empty());

  // El menú es de la fila en que se pide, y lo elegido sigue igual.
  Pulsar(MenuDe(v, 1), u"Copiar el nombre"_s);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "b.Q19");
  Pulsar(MenuDe(v, 1), u"Importar b.Q19"_s);
  EXPECT_EQ(v.acumulado(), juntos({"b.Q19"}));
  EXPECT_EQ(v.Ficheros->marcados(), (QStringList{"a.Q19", "c.Q19"}));
  EXPECT_FALSE(v.importado()) << "lo que se ve no se ha importado";
  for (QAction* accion : MenuDe(v, 1)->actions())
    EXPECT_FALSE(accion->text().contains("Importar b")) << "ya está importado";
  QApplication::activePopupWidget()->close();
  Cajas cajas{"Si"};
  Pulsar(MenuDe(v, -1), u"Importar los 2 elegidos"_s);
  EXPECT_EQ(v.acumulado(), juntos({"b.Q19", "a.Q19", "c.Q19"}));
}
