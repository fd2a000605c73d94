#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QTimer>

#include "VentanaPrincipal.h"
#include "remesa/BloquesListas.h"
#include "remesa/Fichero.h"

using namespace pruebas;

namespace {

constexpr const char* kUno = "ES02000B12345678";
constexpr const char* kOtro = "ES53000A12345678";

class VentanaBloques : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    escribir("a.Q19", Fichero({Presentador(), Acreedor(kUno, "20260405"), Adeudo("R2", "00000000200"),
                               Opcional("004", "R2"), Adeudo("R1", "00000000100"), Total("04"), Total("05"),
                               Total("99")}));
    escribir("b.Q19", Fichero({Presentador(), Acreedor(kOtro, "20260505"), Adeudo("R3", "00000000300"),
                               Acreedor(kUno, "20260405"), Adeudo("R0", "00000000001"), Total("99")}));
    escribir("malo.Q19", Fichero({Presentador(), Adeudo("R9", "00000000900"), Acreedor(kUno, "20260405")}));
  }

  /// Lo que queda al importarlos por bloques.
  std::vector<std::string> reunidos(std::initializer_list<const char*> nombres) const {
    remesa::ListaRegistros lista;
    for (const char* nombre : nombres)
      ReunirBloques(lista, remesa::LeerFichero(carpeta_ / nombre));
    return Bytes(lista);
  }
};

/// En orden, el código de cada registro, y la referencia o el importe.
std::string Forma(const std::vector<std::string>& registros) {
  std::string forma;
  for (const std::string& r : registros)
    forma += r.substr(0, 2) == "03" ? r.substr(7, 3) + r.substr(10, 2) + ' ' : r.substr(0, 2) + ' ';
  return forma;
}

}  // namespace

TEST_F(VentanaBloques, ElEnlaceLosConserva) {
  Ventana v(carpeta_);
  auto* bloques = v.hijo<QCheckBox>("Bloques");
  auto* enlace = [&]() -> QPushButton* {
    for (auto* boton : v.hijo<QLabel>("AvisoPreview")->findChildren<QPushButton*>())
      if (boton->text() == bloques->text().remove('&')) return boton;
    return nullptr;
  }();
  ASSERT_NE(enlace, nullptr);
  v.importar("a.Q19");
  EXPECT_FALSE(enlace->isVisible());
  v.elegir("b.Q19");
  EXPECT_TRUE(enlace->isVisible());
  EXPECT_TRUE(v.texto("AvisoPreview").contains(kOtro)) << v.texto("AvisoPreview").toStdString();
  QTest::mouseClick(enlace, Qt::LeftButton);
  EXPECT_TRUE(bloques->isChecked());
  EXPECT_FALSE(enlace->isVisible());
  // Lo acumulado se ordena ya.
  EXPECT_EQ(v.acumulado(), reunidos({"a.Q19"}));
  EXPECT_EQ(v.texto("AvisoPreview"), "Su acreedor y su fecha tendrán bloque propio: 2 bloques en total.");
  v.Acumulado->seleccionarSolo(3);
  v.pulsar("Importar");
  EXPECT_EQ(v.acumulado(), reunidos({"a.Q19", "b.Q19"}));
  EXPECT_EQ(Forma(v.acumulado()), "01 02 003R0 003R1 003R2 004R2 04 05 02 003R3 04 05 99 ");
  EXPECT_EQ(v.Acumulado->seleccion(), std::vector<std::size_t>{4}) << "el mismo registro";
  EXPECT_EQ(v.Acumulado->actual(), 4);
  EXPECT_EQ(v.texto("InfoAcumulado"), "2 ficheros · 2 bloques de 2 acreedores · 4 adeudos · 6,01 €");
  EXPECT_EQ(v.texto("AvisoAcumulado"), "");

  // Apagarla no cambia nada hasta la orden siguiente.
  const auto antes = v.acumulado();
  bloques->setChecked(false);
  EXPECT_EQ(v.acumulado(), antes);
}

TEST_F(VentanaBloques, InsertarEliminarYEditar) {
  Cajas cajas;
  Ventana v(carpeta_);
  v.hijo<QCheckBox>("Bloques")->setChecked(true);
  v.importar("a.Q19");
  v.importar("b.Q19");
  v.Acumulado->seleccionarSolo(4);
  v.pulsar("cmdInsertar");
  EXPECT_EQ(Forma(v.acumulado()), "01 02 003R0 003R1 003R2 004R2 003R2 04 05 02 003R3 04 05 99 ");
  EXPECT_EQ(v.Acumulado->actual(), 6);
  EXPECT_EQ(v.Acumulado->seleccion(), std::vector<std::size_t>{6});
  EXPECT_EQ(LeerCampo(v.acumulado()[7], remesa::kImporte04), "00000000000000501");
  EXPECT_EQ(LeerCampo(v.acumulado()[13], remesa::kImporte99), "00000000000000801");

  // El único adeudo de un bloque se lleva la cabecera y sus totales, y un 003, lo suyo.
  v.Acumulado->seleccionar(std::vector<std::size_t>{4, 10});
  v.Acumulado->ponerActual(4);
  cajas.Responder("Si");
  v.pulsar("cmdEliminar");
  EXPECT_TRUE(cajas.Mensaje(0).endsWith("Con ellos se elimina 1 registro opcional suyo."))
      << cajas.Mensaje(0).toStdString();
  EXPECT_EQ(Forma(v.acumulado()), "01 02 003R0 003R1 003R2 04 05 99 ");
  EXPECT_EQ(v.Acumulado->actual(), 4);

  // Aceptada una cabecera, sus totales lo dicen enseguida; un adeudo espera.
  const auto editar = [&](int fila, const char* campo, const QString& valor) {
    QTimer::singleShot(0, &v.frm, [=] {
      QWidget* editor = QApplication::activeModalWidget();
      ASSERT_NE(editor, nullptr);
      editor->findChild<QLineEdit*>(campo)->setText(valor);
      QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
    });
    emit v.Acumulado->dobleClic(fila);
  };
  editar(2, "cpo8", "00000000099");
  EXPECT_EQ(LeerCampo(v.acumulado()[5], remesa::kImporte04), "00000000000000301");
  editar(1, "cpo5", "20260601");
  EXPECT_EQ(LeerCampo(v.acumulado()[5], remesa::kFecha04), "20260601");
  EXPECT_EQ(LeerCampo(v.acumulado()[5], remesa::kImporte04), "00000000000000399");
  EXPECT_EQ(v.Acumulado->actual(), 1);
}

TEST_F(VentanaBloques, UnAdeudoSinDuenoNoEntra) {
  Cajas cajas{"Aceptar", "Aceptar"};
  Ventana v(carpeta_);
  auto* bloques = v.hijo<QCheckBox>("Bloques");
  bloques->setChecked(true);
  v.importar("a.Q19");
  const auto antes = v.acumulado();
  v.importar("malo.Q19");
  EXPECT_TRUE(cajas.Mensaje(0).startsWith("El registro 2 es un adeudo")) << cajas.Mensaje(0).toStdString();
  EXPECT_EQ(v.acumulado(), antes);
  EXPECT_FALSE(v.importado());

  v.pulsar("Empezar");
  bloques->setChecked(false);
  v.importar("malo.Q19");
  const auto sinBloques = v.acumulado();
  bloques->setChecked(true);
  EXPECT_FALSE(bloques->isChecked());
  EXPECT_TRUE(cajas.Mensaje(1).startsWith("El registro 2 de la remesa")) << cajas.Mensaje(1).toStdString();
  EXPECT_EQ(v.acumulado(), sinBloques);
}

TEST_F(VentanaBloques, RenovarYSeparar) {
  Cajas cajas{"Aceptar"};
  Ventana v(carpeta_);
  v.hijo<QAction>("mnuRenovar")->trigger();
  EXPECT_TRUE(cajas.Mensaje(0).startsWith("La remesa no tiene cabecera"));
  v.hijo<QCheckBox>("Bloques")->setChecked(true);
  v.importar("a.Q19");
  v.importar("b.Q19");
  const auto antes = v.acumulado();
  v.hijo<QAction>("mnuRenovar")->trigger();
  EXPECT_TRUE(v.acumulado()[0].substr(123, 5) == "PRE20") << v.acumulado()[0].substr(115, 45);
  EXPECT_EQ(Forma(v.acumulado()), Forma(antes));

  const auto partes = carpeta_ / "partes";
  QTimer::singleShot(0, &v.frm, [&] {
    QWidget* ventana = QApplication::activeModalWidget();
    ASSERT_NE(ventana, nullptr);
    EXPECT_EQ(ventana->findChild<QLabel*>("Resumen")->text(),
              QString("Se escribirán 2 ficheros, de %1_20260405_1.Q19 a %2_20260505_2.Q19").arg(kUno, kOtro));
    ventana->findChild<QLineEdit*>("Carpeta")->setText(comunes::DesdeRuta(partes));
    QTest::mouseClick(ventana->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  v.hijo<QAction>("mnuSeparar")->trigger();
  EXPECT_TRUE(v.texto("EstadoMensaje").startsWith("2 ficheros escritos en "));
  EXPECT_EQ(Forma(Bytes(remesa::LeerFichero(partes / (std::string(kOtro) + "_20260505_2.Q19")))),
            "01 02 003R3 04 05 99 ");
}
