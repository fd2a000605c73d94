#include "ventanas/principal/VentanaXml.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableView>

#include "VentanaPrincipal.h"
#include "comunes/plataforma/Formatos.h"
#include "iso20022/Exportacion.h"
#include "iso20022/LecturaMensaje.h"
#include "remesa/Fichero.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

class PruebaVentanaXml : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    for (const char* ejemplo : {"gimnasio-acuario.Q19", "academia-dos-cobros.Q19"})
      std::filesystem::copy(std::string(DIR_EJEMPLOS "/") + ejemplo, carpeta_ / ejemplo);
  }
  void TearDown() override {
    comunes::PonerLocaleUsuario({});
    Carpeta::TearDown();
  }

  /// El mensaje de una remesa, con lo de `antes` cambiado por lo de `despues`.
  void mensaje(const char* remesa, const char* nombre, std::string_view antes = {},
               std::string_view despues = {}) const {
    std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
    fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(carpeta_ / remesa));
    iso20022::Exportacion exportacion(std::move(fuentes), {});
    exportacion.examinar([](const iso20022::Nota&) {});
    exportacion.escribir(carpeta_ / nombre);
    std::string bytes = leer(carpeta_ / nombre);
    for (std::size_t i = 0; !antes.empty() && (i = bytes.find(antes, i)) != std::string::npos;
         i += despues.size())
      bytes.replace(i, antes.size(), despues);
    escribir(nombre, bytes);
  }
  std::vector<std::string> registros(const char* xml) const {
    return Bytes(iso20022::LeerMensaje(carpeta_ / xml).registros);
  }
};

}  // namespace

TEST_F(PruebaVentanaXml, UnMensajeSeVeYSeImportaComoUnaRemesa) {
  mensaje("gimnasio-acuario.Q19", "gimnasio.xml", "<PmtMtd>DD</PmtMtd>",
          "<PmtMtd>DD</PmtMtd><BtchBookg>true</BtchBookg>");
  mensaje("gimnasio-acuario.Q19", "empresas.xml", "<Cd>CORE</Cd>", "<Cd>B2B</Cd>");
  escribir("pagos.xml", R"(<Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.001.001.03"/>)");
  escribir("roto.xml", leer(carpeta_ / "gimnasio.xml").substr(0, 3000));
  {
    Ventana v(carpeta_);
    EXPECT_EQ(v.Ficheros->model()->rowCount(), 2) << "sin ajustes se ven solo los de texto";
  }
  Ventana v(carpeta_);
  v.Ficheros->ponerPatron(u"*.Q19;*.xml"_s);
  v.elegir("gimnasio.xml");
  EXPECT_EQ(Bytes(v.Preview->lista()), registros("gimnasio.xml"));
  EXPECT_TRUE(v.texto("AvisoPreview").contains("PmtInf/BtchBookg (línea "))
      << v.texto("AvisoPreview").toStdString();
  for (const auto& [nombre, dice, porque] :
       {std::tuple{"empresas.xml", "Lleva adeudos entre empresas (B2B), que no se toman",
                   "lleva adeudos entre"},
        {"pagos.xml", "No es un mensaje de adeudos, sino pain.001: transferencias.",
         "no es un mensaje de adeudos"},
        {"roto.xml", "Error 321", ""}}) {
    Cajas cajas{"Aceptar"};
    v.elegir(nombre);
    EXPECT_TRUE(cajas.Mensaje(0).startsWith(dice)) << cajas.Mensaje(0).toStdString();
    EXPECT_TRUE(v.texto("AvisoPreview").startsWith(u"No se ha tomado %1: %2"_s.arg(nombre, porque)))
        << v.texto("AvisoPreview").toStdString();
    EXPECT_EQ(v.Ficheros->marcado(), "gimnasio.xml");
    EXPECT_EQ(Bytes(v.Preview->lista()), registros("gimnasio.xml"));
  }
  v.importar("gimnasio.xml");
  EXPECT_TRUE(v.importado());
  EXPECT_EQ(v.texto("AvisoPreview"), "");
  v.importar("academia-dos-cobros.Q19");
  remesa::ListaRegistros esperada = iso20022::LeerMensaje(carpeta_ / "gimnasio.xml").registros;
  remesa::Importar(esperada, remesa::LeerFichero(carpeta_ / "academia-dos-cobros.Q19"));
  remesa::RecalcularTotales(esperada);
  EXPECT_EQ(v.acumulado(), Bytes(esperada));

  Cajas cajas{"Aceptar"};
  Ventana alArrancar(carpeta_, comunes::DesdeRuta(carpeta_ / "gimnasio.xml"));
  QTest::qWait(20);
  EXPECT_TRUE(cajas.Mensaje(0).contains("PmtInf/BtchBookg")) << "nada se previsualiza: se dice al cargarlo";
  EXPECT_EQ(alArrancar.acumulado(), registros("gimnasio.xml"));
}

TEST_F(PruebaVentanaXml, ExportarDiceAntesLoQueHariaYNoEscribeConErrores) {
  Ventana v(carpeta_);
  auto* orden = v.hijo<QAction>("mnuExportarXml");
  EXPECT_FALSE(orden->shortcut().isEmpty());
  {
    Cajas cajas{"Aceptar"};
    orden->trigger();
    EXPECT_TRUE(cajas.Mensaje(0).startsWith("La remesa está vacía"));
  }
  std::string bytes = leer(carpeta_ / "gimnasio-acuario.Q19");
  bytes.replace(602 * 2 + 88, 11, "00000000000");
  escribir("gimnasio-acuario.Q19", bytes);
  v.importar("gimnasio-acuario.Q19");
  orden->trigger();
  auto* ventana = v.frm.findChild<principal::VentanaXml*>();
  ASSERT_NE(ventana, nullptr);
  const auto texto = [&](const char* etiqueta) { return ventana->findChild<QLabel*>(etiqueta)->text(); };
  const auto casilla = [&](const char* nombre) { return ventana->findChild<QCheckBox*>(nombre); };
  const auto pulsar = [&](const char* boton) {
    QTest::mouseClick(ventana->findChild<QPushButton*>(boton), Qt::LeftButton);
  };
  auto* visor = ventana->findChild<QTableView*>("Visor");
  EXPECT_TRUE(texto("Estado").startsWith("No se puede escribir: 1 error y "))
      << texto("Estado").toStdString();
  EXPECT_EQ(visor->model()->index(0, 1).data(), "E512");
  {
    Cajas cajas{"Aceptar"};
    pulsar("cmdExportar");
    EXPECT_TRUE(cajas.Mensaje(0).contains("deje fuera los adeudos que los tienen: 1 adeudo, "));
  }
  visor->setCurrentIndex(visor->model()->index(0, 0));
  casilla("Omitir")->click();
  EXPECT_EQ(texto("Resumen").section(u" · "_s, 0, 2), u"1 mensaje · 1 bloque · 44 adeudos"_s);
  EXPECT_TRUE(texto("Estado").startsWith("Se puede escribir dejando fuera 1 adeudo, 0,00 €"));
  const int filas = visor->model()->rowCount();
  casilla("Detallar")->click();
  EXPECT_GT(visor->model()->rowCount(), filas) << "cada carácter cambiado, en su línea";
  casilla("Detallar")->click();
  casilla("Omitir")->click();

  // La doble pulsación lleva al campo y, al volver, la remesa se examina otra vez.
  QTimer::singleShot(0, &v.frm, [] {
    QWidget* editor = QApplication::activeModalWidget();
    ASSERT_NE(editor, nullptr);
    auto* campo = qobject_cast<QLineEdit*>(editor->focusWidget());
    ASSERT_NE(campo, nullptr);
    EXPECT_EQ(campo->objectName(), "cpo8");
    campo->setText(u"00000001234"_s);
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  visor->setCurrentIndex(visor->model()->index(0, 0));
  emit visor->doubleClicked(visor->currentIndex());
  EXPECT_TRUE(texto("Estado").startsWith("Se puede escribir, con ")) << texto("Estado").toStdString();

  // Varios mensajes; de lo que ya hay se pregunta antes.
  casilla("Repartir")->click();
  ventana->findChild<QSpinBox*>("Cada")->setValue(20);
  ventana->findChild<QComboBox*>("Version")->setCurrentIndex(1);
  EXPECT_EQ(texto("Resumen").section(u" · "_s, 0, 2), u"3 mensajes · 3 bloques · 45 adeudos"_s);
  escribir("m-2.xml", "antes");
  escribir("m-3.xml", "antes");
  const auto antes = v.acumulado();
  {
    Cajas cajas{"Sí"};
    const ConDestino destino(carpeta_ / "m");
    pulsar("cmdExportar");
    EXPECT_TRUE(cajas.Mensaje(0).contains("m-2.xml")) << cajas.Mensaje(0).toStdString();
    EXPECT_TRUE(cajas.Mensaje(0).contains("Con él se sustituirían 1 más, hasta m-3.xml."));
  }
  EXPECT_FALSE(ventana->isVisible());
  EXPECT_TRUE(v.texto("EstadoMensaje").startsWith("Exportado a XML: 45 adeudos, "));
  EXPECT_TRUE(v.texto("EstadoMensaje").endsWith("m-1.xml y 2 ficheros más."));
  EXPECT_EQ(v.acumulado(), antes) << "la remesa sigue";
  EXPECT_EQ(registros("m-3.xml").size(), 10U);
  EXPECT_EQ(leer(carpeta_ / "m-1.xml").find("pain.008.001.08"), std::string::npos);
}
