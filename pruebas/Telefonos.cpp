// La ventana de la agenda, por sus controles.

#include "comunes/herramientas/Telefonos.h"

#include <QtTest/qtestspontaneevent.h>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>

#include "Cajas.h"
#include "Carpeta.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"

using namespace herramientas;

namespace {

using namespace Qt::StringLiterals;

class LaAgenda : public pruebas::Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    ruta_ = comunes::DesdeRuta(carpeta_ / "Telefonos.csv");
    escribir("Telefonos.csv", "Nombre;Teléfono;Fax;eMail o Código;Clave\r\n" + todos_);
    ventana_ = std::make_unique<Telefonos>(nullptr, ruta_);
    ventana_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ventana_.get()));
  }

  template <typename Control = QPushButton>
  Control* hijo(const char* nombre) {
    return ventana_->findChild<Control*>(QLatin1String(nombre));
  }
  void pulsar(const char* boton) { QTest::mouseClick(hijo(boton), Qt::LeftButton); }
  /// Lo que se ve en una columna, de arriba abajo.
  QString columna(int cual) {
    QStringList textos;
    for (int fila = 0; fila < visor()->model()->rowCount(); ++fila)
      textos += visor()->model()->index(fila, cual).data().toString();
    return textos.join(u'|');
  }
  QTableView* visor() { return hijo<QTableView>("Visor"); }
  QString cuenta() { return hijo<QLabel>("Cuenta")->text(); }

  /// En cuanto se abra la ventana modal `nombre`, le hace `accion`.
  static void enModal(const QString& nombre, const std::function<void(QWidget&)>& accion) {
    QTimer::singleShot(0, [nombre, accion] {
      QWidget* modal = QApplication::activeModalWidget();
      ASSERT_NE(modal, nullptr) << nombre.toStdString();
      ASSERT_EQ(modal->objectName(), nombre);
      accion(*modal);
    });
  }
  static void ficha(std::initializer_list<std::pair<const char*, const char*>> datos) {
    enModal("FichaContacto", [datos = std::vector(datos)](QWidget& modal) {
      for (const auto& [caja, texto] : datos) {
        auto* linea = modal.findChild<QLineEdit*>(QLatin1String(caja));
        linea->setFocus();
        linea->selectAll();
        QTest::keyClicks(linea, texto);
      }
      // Dentro de una caja, Intro solo pasa a la siguiente.
      QTest::mouseClick(modal.findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
    });
  }
  static void conFichero(const std::filesystem::path& ruta) {
    comunes::PonerSelectorFicheros([ruta](const comunes::PeticionFicheros& peticion) {
      EXPECT_TRUE(!peticion.abrir || peticion.carpeta == comunes::DesdeRuta(ruta.parent_path()));
      return QStringList{comunes::DesdeRuta(ruta)};
    });
  }
  void TearDown() override {
    comunes::PonerSelectorFicheros({});
    Carpeta::TearDown();
  }

  std::string todos_ = "Zoé;3;;;k3\r\nÁlvaro Peña;600 11 22 33;9;a@x.es;k1\r\nMarta;2;;;k2\r\n";
  QString ruta_;
  std::unique_ptr<Telefonos> ventana_;
};

TEST_F(LaAgenda, SeBuscaSeOrdenaYSeRecorre) {
  EXPECT_TRUE(visor()->isColumnHidden(0));
  EXPECT_EQ(columna(1), "Álvaro Peña|Marta|Zoé");
  EXPECT_EQ(cuenta(), "3 contactos");
  QTest::mouseClick(visor()->horizontalHeader()->viewport(), Qt::LeftButton, {},
                    QPoint(visor()->columnViewportPosition(2) + 5, 5));
  EXPECT_EQ(columna(2), "2|3|600 11 22 33");
  visor()->setColumnWidth(2, 77);
  visor()->setFocus();
  QTest::keyClicks(visor(), "pe");
  hijo<QLineEdit>("Buscado")->insert("ña 60011");
  EXPECT_EQ(columna(1), "Álvaro Peña");
  EXPECT_EQ(cuenta(), "1 de 3 contactos");
  EXPECT_EQ(visor()->columnWidth(2), 77);
  QTest::keyClick(visor(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "Álvaro Peña\t600 11 22 33\t9\ta@x.es");
  QTest::keyClicks(hijo<QLineEdit>("Buscado"), "zzz");
  EXPECT_FALSE(hijo("cmdCambiar")->isEnabled() || hijo("cmdQuitar")->isEnabled() ||
               hijo("cmdImprimir")->isEnabled());
  QTest::keyClick(ventana_.get(), Qt::Key_Escape);
  EXPECT_EQ(cuenta(), "3 contactos");
  QTest::keyClick(hijo<QLineEdit>("Buscado"), Qt::Key_Down);
  EXPECT_EQ(visor()->selectionModel()->selectedRows().size(), 1);

  // La rueda mueve la lista también desde la línea de búsqueda.
  FicheroAgenda(ruta_).cambiar([](Agenda& agenda) {
    for (int i = 0; i < 200; ++i)
      agenda.contactos.push_back({ClaveNueva(), {u"Cliente %1"_s.arg(i), {}, {}, {}}, {}});
  });
  EXPECT_TRUE(QTest::qWaitFor([this] { return cuenta() == "203 contactos"; }));  // lo de otro programa se ve
  QWidget* buscado = hijo<QLineEdit>("Buscado");
  const auto rueda = [&](int pasos) {
    QWheelEvent suceso(QPointF(5, 5), buscado->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120 * pasos),
                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&suceso);
    qApp->notify(buscado, &suceso);
    return visor()->verticalScrollBar()->value();
  };
  EXPECT_TRUE(QTest::qWaitFor([this] { return visor()->verticalScrollBar()->maximum() > 100; }));
  visor()->verticalScrollBar()->setValue(0);
  EXPECT_GT(rueda(2), 0);
  EXPECT_EQ(rueda(-1000), 0);
  QTest::keyClick(ventana_.get(), Qt::Key_Escape);
  EXPECT_FALSE(ventana_->isVisible());
}

TEST_F(LaAgenda, SeAnadeSeCambiaYSeQuita) {
  {
    Cajas cajas;
    cajas.Hacer([](comunes::MyBox& caja) {
      QTimer::singleShot(0, [] { ficha({{"Nombre", "Bea"}}); });
      Cajas::Pulsar(caja, "Aceptar");
    });
    ficha({{"Telefono", "+5"}});
    pulsar("cmdAnadir");
    EXPECT_EQ(cajas.Mensaje(0), "Falta el nombre del contacto");
  }
  EXPECT_EQ(columna(1), "Álvaro Peña|Bea|Marta|Zoé");
  EXPECT_EQ(columna(2), "600 11 22 33|+5|2|3");
  {
    Cajas cajas({"Si"});
    ficha({{"Nombre", "marta"}, {"Telefono", "2"}});
    pulsar("cmdAnadir");
    EXPECT_TRUE(cajas.Mensaje(0).startsWith("Ya hay un contacto con ese nombre"));
  }
  EXPECT_EQ(cuenta(), "5 contactos");

  // Mientras se cambia el correo de Bea, otro programa le cambia el correo y el fax.
  hijo<QLineEdit>("Buscado")->setText("bea");
  FicheroAgenda otro(ruta_);
  {
    Cajas cajas({"Aceptar"});
    enModal("FichaContacto", [&](QWidget&) {
      otro.cambiar([](Agenda& agenda) {
        for (Contacto& contacto : agenda.contactos)
          if (contacto.datos[kNombre] == "Bea") contacto.datos[kCorreo] = contacto.datos[kFax] = "otro";
      });
      ficha({{"Correo", "mio"}});
    });
    QTest::keyClick(hijo<QLineEdit>("Buscado"), Qt::Key_Return);
    EXPECT_TRUE(cajas.Mensaje(0).contains("Quedan los dos contactos"));
  }
  EXPECT_EQ(columna(3), "otro|");
  EXPECT_EQ(columna(4), "otro|mio");

  visor()->selectAll();
  {
    Cajas cajas({"No", "Si"});
    pulsar("cmdQuitar");
    EXPECT_EQ(cuenta(), "2 de 6 contactos");
    QTest::keyClick(visor(), Qt::Key_Delete);
    EXPECT_EQ(cajas.Mensaje(1), " ¿ Confirma que desea quitar los 2 contactos elegidos ? ");
  }
  EXPECT_EQ(cuenta(), "0 de 4 contactos");
  otro.releer();
  EXPECT_EQ(otro.agenda().contactos.size(), 4u);
}

TEST_F(LaAgenda, SeImportanClientes) {
  const auto clientes = escribir("clientes.csv", "Nombre;Fax;Teléfono\nMarta;;2\nNoé & Cía;8;7\n;1;1\n");
  comunes::RutaAjustes =
      comunes::DesdeRuta(escribir("Tarvo.INI", "[Comunes]\nClientesZor=" + carpeta_.string() + "\n"));
  conFichero(clientes);
  for (const char* boton : {"cmdCancelar", "cmdAceptar"}) {
    enModal("Clientes", [&](QWidget& modal) {
      EXPECT_EQ(cuenta(), "3 contactos") << "antes de aceptar no se añade nada";
      EXPECT_EQ(modal.findChild<QLabel*>("Resumen")->text(),
                "Se añadirá 1 contacto. No se añadirán: 1 repetido (ya está con el mismo nombre y número), "
                "1 sin nombre.");
      EXPECT_EQ(modal.findChild<QTableView*>("VisorClientes")->model()->rowCount(), 3);
      QTest::mouseClick(modal.findChild<QPushButton*>(boton), Qt::LeftButton);
    });
    pulsar("cmdImportar");
  }
  EXPECT_EQ(columna(1), "Álvaro Peña|Marta|Noé & Cía|Zoé");
  {
    Cajas cajas({"Aceptar"});
    conFichero(escribir("otro.csv", "uno;dos"));
    pulsar("cmdImportar");
    EXPECT_TRUE(cajas.Mensaje(0).startsWith("La primera línea del fichero"));
  }
}

}  // namespace
