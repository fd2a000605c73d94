#include "ventanas/principal/VentanaCorregir.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QTableView>
#include <QTimer>

#include "EnEspana.h"
#include "VentanaPrincipal.h"
#include "remesa/Comprobacion.h"

using namespace pruebas;

namespace {

class PruebaVentanaCorregir : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    std::string bytes = leer(DIR_DATOS "/limpias/un-acreedor.Q19");
    bytes.replace(602 * 2 + 118, 4, "AN\xC1 ");      // A301
    bytes.replace(602 * 3 + 80, 4, "FRST");          // A406
    bytes.replace(602 * 15 + 80, 4, "FRST");         // A406
    bytes.replace(602 * 6 + 88, 11, "1250       ");  // E310
    bytes.replace(602 * 6 + 590, 1, "X");            // A303
    escribir("mala.Q19", bytes);
    escribir("varios.Q19", leer(DIR_DATOS "/limpias/varios-acreedores.Q19"));
  }

  /// Hace `que` con la ventana que se abra, una vez abierta.
  template <class Dialogo, class Que>
  static void alAbrir(Que que) {
    QTimer::singleShot(0, [que] {
      auto* dialogo = qobject_cast<Dialogo*>(QApplication::activeModalWidget());
      ASSERT_NE(dialogo, nullptr);
      que(*dialogo);
    });
  }
  static std::string recuento(const Ventana& v) {
    const auto resultado = remesa::ComprobarLista(
        v.Acumulado->lista(), {std::chrono::year(2026), std::chrono::October, std::chrono::day(5)},
        [](remesa::Hallazgo&&) {});
    return std::to_string(resultado.errores) + " " + std::to_string(resultado.avisos);
  }

  EnEspana espana_{{2026, 10, 5}};
};

TEST_F(PruebaVentanaCorregir, HaceLoMarcadoYNadaMas) {
  Ventana v(carpeta_);
  Cajas cajas{"Aceptar", "Aceptar"};
  auto* corregir = v.hijo<QAction>("mnuCorregir");
  corregir->trigger();
  EXPECT_TRUE(cajas.Mensaje(0).startsWith("La remesa está vacía"));

  v.importar("mala.Q19");
  ASSERT_EQ(recuento(v), "1 4");
  v.Acumulado->seleccionarSolo(6);
  alAbrir<QDialog>([&](QDialog& dialogo) {
    auto* visor = dialogo.findChild<QTableView*>("Visor");
    auto* clase = dialogo.findChild<QComboBox*>("Clase");
    ASSERT_EQ(visor->model()->rowCount(), 5);
    EXPECT_EQ(visor->model()->index(0, 3).data().toString(), QString::fromUtf8("ANÁ PENA LOPEZ"));
    EXPECT_EQ(visor->model()->index(0, 4).data().toString(), QString::fromUtf8("ANA PENA LOPEZ"));
    // De los FRST, el segundo no; con el teclado.
    clase->setCurrentIndex(clase->findText("A406", Qt::MatchStartsWith));
    ASSERT_EQ(visor->model()->rowCount(), 2);
    visor->setFocus();
    visor->setCurrentIndex(visor->model()->index(1, 0));
    QTest::keyClick(visor, Qt::Key_Space);
    EXPECT_EQ(visor->model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(visor->model()->index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    clase->setCurrentIndex(clase->findText("A303", Qt::MatchStartsWith));
    QTest::mouseClick(dialogo.findChild<QPushButton*>("cmdQuitar"), Qt::LeftButton);
    EXPECT_TRUE(dialogo.findChild<QLabel*>("Resumen")->text().endsWith("Marcadas: 3 de 5."));
    QTest::mouseClick(dialogo.findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  corregir->trigger();
  EXPECT_EQ(recuento(v), "0 2");
  const auto registros = v.acumulado();
  EXPECT_EQ(registros[2].substr(118, 14), "ANA PENA LOPEZ");
  EXPECT_EQ(registros[3].substr(80, 4) + registros[15].substr(80, 4), "RCURFRST");
  EXPECT_EQ(registros[6].substr(88, 11), "00000001250");
  EXPECT_EQ(registros[6][590], 'X');
  EXPECT_EQ(v.Acumulado->actual(), 6);
  EXPECT_EQ(v.texto("EstadoMensaje"), "Hecho: 3 correcciones");

  // Cancelar no hace nada; y corregido todo, no hay más que ofrecer.
  alAbrir<QDialog>([](QDialog& dialogo) { dialogo.reject(); });
  corregir->trigger();
  EXPECT_EQ(v.acumulado(), registros);
  alAbrir<QDialog>([](QDialog& dialogo) { dialogo.accept(); });
  corregir->trigger();
  EXPECT_EQ(recuento(v), "0 0");
  corregir->trigger();
  EXPECT_TRUE(cajas.Mensaje(1).startsWith("No hay nada que tenga una sola respuesta"));
}

// Los totales de varios bloques, y la fecha de dos que pasan a ser el mismo.
TEST_F(PruebaVentanaCorregir, ConVariosBloques) {
  Ventana v(carpeta_);
  v.importar("varios.Q19");
  ASSERT_NE(recuento(v), "0 0");  // los totales corren de uno a otro
  alAbrir<QDialog>([&](QDialog& dialogo) {
    EXPECT_EQ(dialogo.findChild<QTableView*>("Visor")->model()->rowCount(), 0);
    EXPECT_FALSE(dialogo.findChild<QPushButton*>("cmdAceptar")->isEnabled());
    auto* enlace = dialogo.findChild<QPushButton*>("Conservar");
    ASSERT_TRUE(enlace->isVisible());
    enlace->click();
  });
  Cajas cajas{"Aceptar"};
  v.hijo<QAction>("mnuCorregir")->trigger();
  EXPECT_TRUE(v.hijo<QCheckBox>("Bloques")->isChecked());
  EXPECT_TRUE(cajas.Mensaje(0).startsWith("No hay nada")) << cajas.Mensaje(0).toStdString();
  EXPECT_EQ(recuento(v), "0 0");

  v.Acumulado->ponerActual(9);
  alAbrir<QDialog>([&](QDialog& dialogo) {
    auto* bloque = dialogo.findChild<QComboBox*>("Bloque");
    EXPECT_EQ(bloque->count(), 5);
    EXPECT_TRUE(bloque->currentText().startsWith("20/10/2026 · ACADEMIA FACADE"));
    auto* fecha = dialogo.findChild<QDateEdit*>("Fecha");
    EXPECT_EQ(fecha->date(), QDate(2026, 10, 6));
    fecha->setDate({2026, 10, 18});
    EXPECT_TRUE(dialogo.findChild<QLabel*>("Aviso")->text().startsWith("Es sábado o domingo"));
    fecha->setDate({2026, 10, 13});
    EXPECT_EQ(dialogo.findChild<QLabel*>("Aviso")->text(), "");
    QTest::mouseClick(dialogo.findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  v.hijo<QAction>("mnuFechaCobro")->trigger();
  EXPECT_EQ(v.acumulado().size(), 23u);
  EXPECT_EQ(recuento(v), "0 0");
  EXPECT_EQ(v.texto("EstadoMensaje"), "Fecha de cobro: 13/10/2026 en 1 bloque");

  // Sin conservarlos, solo la cabecera y su 04.
  v.hijo<QCheckBox>("Bloques")->click();
  const auto antes = v.acumulado();
  alAbrir<QDialog>([](QDialog& dialogo) {
    dialogo.findChild<QComboBox*>("Bloque")->setCurrentIndex(3);
    dialogo.findChild<QDateEdit*>("Fecha")->setDate({2026, 12, 1});
    dialogo.accept();
  });
  v.hijo<QAction>("mnuFechaCobro")->trigger();
  int cambiados = 0;
  for (std::size_t i = 0; i < antes.size(); ++i) {
    const std::string ahora = v.acumulado()[i];
    if (ahora == antes[i]) continue;
    ++cambiados;
    EXPECT_EQ(ahora.substr(ahora.starts_with("02") ? 45 : 37, 8), "20261201");
  }
  EXPECT_EQ(cambiados, 6);
}

}  // namespace
