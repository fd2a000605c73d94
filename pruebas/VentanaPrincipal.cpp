#include "VentanaPrincipal.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QSet>
#include <QShortcut>
#include <QTimer>

#include "comunes/impresion/Impresora.h"
#include "comunes/plataforma/Enlace.h"

using namespace pruebas;

namespace {

constexpr const char* kUno = "00000001000";
constexpr const char* kDos = "00000002000";
constexpr const char* kTres = "00000000345";

class VentanaPrincipal : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    escribir("enero.Q19", Fichero(Remesa("20260405", {kUno, kDos})));
    escribir("febrero.q19", Fichero(Remesa("20260505", {kTres})));
  }
};

/// Los totales que quedan en los tres últimos registros: importe, adeudos y registros del "04".
std::string Totales04(const std::vector<std::string>& lista) {
  const std::string& total = lista.at(lista.size() - 3);
  return std::string(remesa::LeerCampo(total, remesa::kImporte04)) + "|" +
         std::string(remesa::LeerCampo(total, remesa::kAdeudos04)) + "|" +
         std::string(remesa::LeerCampo(total, remesa::kRegistros04));
}

std::vector<std::string> Recalculada(const std::vector<std::string>& registros) {
  remesa::ListaRegistros lista = Lista(registros);
  remesa::RecalcularTotales(lista);
  return Bytes(lista);
}

}  // namespace

TEST_F(VentanaPrincipal, UnirCorregirYGuardar) {
  Cajas cajas;
  Ventana v(carpeta_);
  cajas.Hacer([&](comunes::MyBox& caja) {
    v.hijo("Empezar")->click();  // como una ayuda técnica: con una caja delante no hace nada
    Cajas::Pulsar(caja, "No");
  });
  cajas.Responder("Si");
  v.elegir("enero.Q19");
  EXPECT_EQ(Bytes(v.Preview->lista()), Remesa("20260405", {kUno, kDos}));
  EXPECT_EQ(v.texto("InfoPreview"), "enero.Q19 · 2 adeudos · 30,00 € · 05/04/2026");
  EXPECT_FALSE(v.importado());
  v.pulsar("Importar");
  EXPECT_TRUE(v.importado());
  v.pulsar("Importar");  // ya importado: no hace nada
  EXPECT_EQ(v.texto("InfoAcumulado"), "1 fichero · 2 adeudos · 30,00 €");

  // La segunda importación conserva la selección y la fila actual, aunque los totales cambien de sitio.
  v.Acumulado->seleccionarSolo(3);
  v.elegir("febrero.q19");
  EXPECT_FALSE(v.importado());
  EXPECT_TRUE(v.texto("AvisoPreview").contains("05/05/2026")) << v.texto("AvisoPreview").toStdString();
  v.pulsar("Importar");
  std::vector<std::string> esperado = Remesa("20260405", {kUno, kDos, kTres});
  EXPECT_EQ(v.acumulado(), Recalculada(esperado));
  EXPECT_EQ(v.Acumulado->seleccion(), std::vector<std::size_t>{3});
  EXPECT_EQ(v.Acumulado->actual(), 3);

  v.pulsar("cmdInsertar");
  esperado.insert(esperado.begin() + 4, esperado[3]);
  EXPECT_EQ(v.acumulado(), Recalculada(esperado));
  EXPECT_EQ(v.Acumulado->seleccion(), std::vector<std::size_t>{4}) << "solo la copia";
  EXPECT_EQ(v.Acumulado->actual(), 4);
  EXPECT_EQ(v.texto("InfoAcumulado"), "2 ficheros · 4 adeudos · 53,45 €");

  // Se pide borrar un adeudo y una cabecera: la cabecera se queda.
  v.Acumulado->seleccionar(std::vector<std::size_t>{0, 2});
  v.pulsar("cmdEliminar");
  EXPECT_EQ(cajas.Mensaje(0), " ¿ Confirma que desea eliminar deudor(es) seleccionados ? ");
  EXPECT_EQ(v.Acumulado->seleccion(), (std::vector<std::size_t>{0, 2})) << "con No todo sigue igual";
  EXPECT_EQ(v.acumulado(), Recalculada(esperado));
  v.pulsar("cmdEliminar");
  esperado.erase(esperado.begin() + 2);
  EXPECT_EQ(v.acumulado(), Recalculada(esperado));
  EXPECT_TRUE(v.Acumulado->seleccion().empty());
  EXPECT_EQ(v.Acumulado->actual(), 3);
  EXPECT_EQ(Totales04(v.acumulado()), "00000000000004345|00000003|0000000005");

  const ConDestino destino(carpeta_ / "unida.txt");
  v.pulsar("Guardar");
  EXPECT_EQ(leer(carpeta_ / "unida.Q19"), Fichero(Recalculada(esperado)));
  // Los avisos dependen del día en que se prueba.
  EXPECT_TRUE(v.veredicto().startsWith("Guardado con 29 errores y "));
  EXPECT_TRUE(v.texto("EstadoMensaje").endsWith(" en " + comunes::DesdeRuta(carpeta_ / "unida.Q19")));
  EXPECT_TRUE(v.acumulado().empty());
  EXPECT_FALSE(v.importado()) << "lo previsualizado puede volver a importarse";
  v.pulsar("Importar");
  EXPECT_EQ(v.texto("InfoAcumulado"), "1 fichero · 1 adeudo · 3,45 €");
}

TEST_F(VentanaPrincipal, RechazosConSusAvisos) {
  escribir("corto.Q19", "011914");
  escribir("vacio.Q19", "");
  escribir("antiguo.Q19", "518005" + std::string(156, ' '));
  escribir("otro.Q19", "0119144001");
  Ventana v(carpeta_);
  v.importar("enero.Q19");
  for (const auto& [nombre, aviso] : {std::pair{"corto.Q19", "!!! El archivo no parece ser tipo Q19 ¡¡¡"},
                                      {"vacio.Q19", "!!! El archivo no parece ser tipo Q19 ¡¡¡"},
                                      {"otro.Q19", "!!! El archivo no parece ser tipo Q19 ¡¡¡"},
                                      {"antiguo.Q19", "!!! Versión incorrecta de archivo Q19 ¡¡¡"}}) {
    Cajas cajas{"Aceptar"};
    v.elegir(nombre);
    EXPECT_EQ(cajas.Mensaje(0), aviso) << nombre;
    EXPECT_EQ(cajas.Vistas().at(0).icono, 1);
    EXPECT_EQ(v.Ficheros->marcado(), "enero.Q19") << nombre << ": lo resaltado es lo que se importaría";
    EXPECT_TRUE(v.texto("AvisoPreview").contains(nombre)) << nombre;
    EXPECT_EQ(Bytes(v.Preview->lista()), Remesa("20260405", {kUno, kDos})) << nombre;
    EXPECT_TRUE(v.importado()) << nombre;
  }
  // Eliminar: nunca todos los adeudos, ni sin adeudos.
  Cajas cajas{"Aceptar", "Aceptar"};
  v.Acumulado->seleccionar(std::vector<std::size_t>{2, 3});
  v.pulsar("cmdEliminar");
  EXPECT_EQ(v.Acumulado->seleccion().size(), 2U);
  v.pulsar("Empezar");
  v.pulsar("cmdEliminar");
  for (const std::size_t n : {0U, 1U})
    EXPECT_EQ(cajas.Mensaje(n), " ¿ No se pueden suprimir todos los registros de deudores ? ");
}

// Con otro botón el resalte no cambia: «Importar» tomaría un fichero distinto del que señala.
TEST_F(VentanaPrincipal, SoloElBotonIzquierdoElige) {
  Ventana v(carpeta_);
  v.elegir("enero.Q19");
  const QPoint otro = v.Ficheros->visualRect(v.Ficheros->model()->index(1, 0)).center();
  for (const Qt::MouseButton boton : {Qt::RightButton, Qt::MiddleButton}) {
    QTest::mouseClick(v.Ficheros->viewport(), boton, {}, otro);
    QTest::mouseDClick(v.Ficheros->viewport(), boton, {}, otro);
    EXPECT_EQ(v.Ficheros->marcado(), "enero.Q19");
    EXPECT_TRUE(v.texto("InfoPreview").startsWith("enero.Q19"));
  }
}

TEST_F(VentanaPrincipal, InsertarSoloCopiaAdeudosCorrientes) {
  auto registros = Remesa("20260405", {kUno});
  registros.insert(registros.begin() + 3, Opcional("004", "REF"));
  registros.insert(registros.begin() + 4, Registro("0319143013"));
  escribir("optativos.Q19", Fichero(registros));
  Ventana v(carpeta_);
  v.pulsar("cmdInsertar");  // sin nada
  v.importar("optativos.Q19");
  const auto antes = v.acumulado();
  v.Acumulado->setFocus();
  v.pulsar("cmdInsertar");  // el foco no hace actual ninguna fila
  for (const int fila : {0, 1, 4, 5}) {
    v.Acumulado->seleccionarSolo(fila);
    v.pulsar("cmdInsertar");
    EXPECT_EQ(v.acumulado(), antes) << fila;
  }
}

TEST_F(VentanaPrincipal, ImportarSinPrevisualizarQuitaLosTotales) {
  Ventana v(carpeta_, '"' + comunes::DesdeRuta(carpeta_ / "enero.Q19") + '"');
  EXPECT_EQ(v.acumulado(), Remesa("20260405", {kUno, kDos})) << "tal como está, sin recalcular";
  EXPECT_TRUE(v.Preview->lista().empty());
  EXPECT_FALSE(v.importado());
  EXPECT_FALSE(v.texto("AvisoAcumulado").isEmpty()) << "los totales no cuadran";
  v.elegir("enero.Q19");
  EXPECT_TRUE(v.importado()) << "el fichero inicial cuenta como importado";
  v.pulsar("Empezar");
  EXPECT_FALSE(v.importado());

  Ventana otra(carpeta_);
  otra.pulsar("Importar");
  EXPECT_TRUE(otra.importado());
  EXPECT_EQ(otra.texto("InfoAcumulado"), "Remesa vacía");
}

TEST_F(VentanaPrincipal, LosErroresSeInformanUnaVezYNoCambianNada) {
  Ventana v(carpeta_);
  {
    Cajas cajas{"Aceptar"};
    Ventana inicial(carpeta_, comunes::DesdeRuta(carpeta_ / "no existe.Q19"));
    EXPECT_TRUE(cajas.Mensaje(0).startsWith("Error 53:")) << cajas.Mensaje(0).toStdString();
    EXPECT_TRUE(inicial.frm.isVisible());
  }
  v.importar("enero.Q19");
  const auto antes = v.acumulado();

  // Un fichero que desaparece entre que se lista y se elige.
  std::filesystem::remove(carpeta_ / "febrero.q19");
  {
    Cajas cajas{"Aceptar"};
    v.elegir("febrero.q19");
    EXPECT_TRUE(cajas.Mensaje(0).contains("Error 53:"));
  }
  EXPECT_TRUE(v.importado());
  EXPECT_EQ(Bytes(v.Preview->lista()), Remesa("20260405", {kUno, kDos}));

  // Guardar donde no se puede: la acumulación sigue, y lo importado también.
  {
    Cajas cajas{"Aceptar"};
    const ConDestino destino(carpeta_ / "no hay" / "x.Q19");
    v.pulsar("Guardar");
    EXPECT_TRUE(cajas.Mensaje(0).contains("Error 76:")) << cajas.Mensaje(0).toStdString();
  }
  EXPECT_EQ(v.acumulado(), antes);
  EXPECT_TRUE(v.importado());
}

TEST_F(VentanaPrincipal, UnRecalculoQueDesbordaDejaLoHecho) {
  escribir("enorme.Q19", Fichero(Remesa("20260405", {"02147483647"})));
  Ventana v(carpeta_);
  v.importar("enorme.Q19");
  v.elegir("enero.Q19");
  EXPECT_TRUE(v.texto("AvisoPreview").contains("21.474.836,47")) << v.texto("AvisoPreview").toStdString();
  Cajas cajas{"Aceptar"};
  v.pulsar("Importar");
  EXPECT_EQ(cajas.Mensaje(0), "Error 6: Desbordamiento");
  EXPECT_EQ(v.acumulado(), [] {
    auto lista = Remesa("20260405", {"02147483647"});
    const auto segunda = Remesa("20260405", {kUno, kDos});
    lista.resize(3);
    lista.insert(lista.end(), segunda.begin() + 2, segunda.end());
    return lista;
  }());
  EXPECT_TRUE(v.importado());
  EXPECT_FALSE(v.texto("AvisoAcumulado").isEmpty());
  EXPECT_EQ(v.texto("InfoAcumulado"), "2 ficheros · 3 adeudos · 21.474.866,47 €");
  const auto aMedias = v.acumulado();
  v.hijo<QAction>("mnuDeshacer")->trigger();
  EXPECT_EQ(v.texto("InfoAcumulado"), "1 fichero · 1 adeudo · 21.474.836,47 €");
  EXPECT_FALSE(v.importado());
  v.hijo<QAction>("mnuRehacer")->trigger();
  EXPECT_EQ(v.acumulado(), aMedias);
  EXPECT_TRUE(v.importado());
}

TEST_F(VentanaPrincipal, NombresQueSoloSeDistinguenPorLasMayusculas) {
  escribir("ñandú.Q19", Fichero(Remesa("20260405", {kUno})));
  escribir("ÑANDÚ.Q19", Fichero(Remesa("20260405", {kDos})));
  Ventana v(carpeta_);
  const QStringList nombres{v.Ficheros->model()->index(2, 0).data().toString(),
                            v.Ficheros->model()->index(3, 0).data().toString()};
  v.Ficheros->setFocus();
  for (int i = 0; i < 3; ++i)
    QTest::keyClick(v.Ficheros, Qt::Key_Down);  // las flechas también eligen
  ASSERT_TRUE(v.texto("InfoPreview").startsWith(nombres[0])) << v.texto("InfoPreview").toStdString();
  v.pulsar("Importar");
  EXPECT_EQ(v.texto("AvisoPreview"), "");
  QTest::keyClick(v.Ficheros, Qt::Key_Down);
  EXPECT_TRUE(v.importado());
  EXPECT_TRUE(v.texto("AvisoPreview").startsWith(nombres[1] + " se queda fuera: ya se importó "))
      << v.texto("AvisoPreview").toStdString();
  EXPECT_TRUE(v.texto("AvisoPreview").contains(nombres[0]));
}

TEST_F(VentanaPrincipal, NombresQueSeParecenSonOtros) {
  escribir("straße.Q19", Fichero(Remesa("20260405", {kUno})));
  escribir("strasse.Q19", Fichero(Remesa("20260405", {kDos})));
  Ventana v(carpeta_);
  v.importar("straße.Q19");
  v.importar("strasse.Q19");
  EXPECT_EQ(v.texto("InfoAcumulado"), "2 ficheros · 2 adeudos · 30,00 €");
}

TEST_F(VentanaPrincipal, GuardarNadaSobreAlgoDiceLoQueSePierde) {
  Ventana v(carpeta_);
  Cajas cajas{"Sí"};
  const ConDestino destino(carpeta_ / "enero");
  v.pulsar("Guardar");
  EXPECT_TRUE(cajas.Mensaje(0).contains(
      "el fichero quedaría vacío y se perdería lo que tiene, 2 adeudos, 30,00 € (4.214 bytes)."))
      << cajas.Mensaje(0).toStdString();
}

TEST_F(VentanaPrincipal, SoltarUnFicheroEsElegirlo) {
  Ventana v(carpeta_ / "..");
  QMimeData datos;
  datos.setUrls({QUrl::fromLocalFile(comunes::DesdeRuta(carpeta_ / "enero.Q19"))});
  QDragEnterEvent entra({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, {});
  QApplication::sendEvent(&v.frm, &entra);
  EXPECT_TRUE(entra.isAccepted());
  QDropEvent suelta({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, {});
  QApplication::sendEvent(&v.frm, &suelta);
  QCoreApplication::processEvents();
  EXPECT_EQ(v.texto("InfoPreview"), "enero.Q19 · 2 adeudos · 30,00 € · 05/04/2026");
  EXPECT_EQ(v.Ficheros->marcado(), "enero.Q19");
  for (const QWidget* hijo : v.frm.findChildren<QWidget*>())
    EXPECT_FALSE(hijo->acceptDrops()) << hijo->objectName().toStdString() << " se quedaría lo soltado";
}

TEST_F(VentanaPrincipal, ControlesTeclasYOrden) {
  Ventana v(carpeta_);
  for (const auto& [nombre, ayuda] :
       {std::pair{"Importar", "Importar"},
        {"Empezar", "Empezar"},
        {"Guardar", "Guardar"},
        {"cmdInsertar", "Insertar tipo 03"},
        {"cmdEliminar", "Eliminar tipo 03"},
        {"cmdImprimir", "Imprimir"},
        {"cmdComprobar", "Comprobar la remesa con la norma"},
        {"RefI", "Imprimir Referencia Interna"},
        {"SoloAdeudos", "Listar solo los adeudos, sin sus registros opcionales"},
        {"Salir", "Salir"}}) {
    auto* boton = v.hijo<QAbstractButton>(nombre);
    EXPECT_EQ(boton->toolTip(), ayuda);
    EXPECT_TRUE(boton->isEnabled());
    EXPECT_EQ(boton->font().family(), "MS Shell Dlg 2") << nombre;
  }
  // Ninguna letra subrayada está dos veces en la ventana (los enlaces no cuentan) ni en un menú, y ninguna
  // tecla da dos órdenes.
  const auto distintas = [](const QStringList& rotulos, const char* donde) {
    QMap<QString, QString> vistas;
    for (const QString& rotulo : rotulos) {
      const QString letra = QKeySequence::mnemonic(rotulo).toString();
      EXPECT_FALSE(!letra.isEmpty() && vistas.contains(letra))
          << donde << ": " << rotulo.toStdString() << " y " << vistas[letra].toStdString();
      vistas.insert(letra, rotulo);
    }
  };
  QStringList rotulos;
  for (const auto* boton : v.frm.findChildren<QAbstractButton*>())
    if (qobject_cast<const comunes::Enlace*>(boton) == nullptr) rotulos << boton->text();
  for (const auto* etiqueta : v.frm.findChildren<QLabel*>())
    if (etiqueta->buddy() != nullptr) rotulos << etiqueta->text();
  QStringList deMenus;
  for (const QAction* menu : v.hijo<QMenuBar>("Menu")->actions()) {
    rotulos << menu->text();
    QStringList suyos;
    for (const QAction* orden : menu->menu()->actions())
      suyos << orden->text();
    distintas(suyos, "menú");
    deMenus += suyos;
  }
  distintas(rotulos, "ventana");
  EXPECT_GE(rotulos.size(), 19);
  EXPECT_GE(deMenus.size(), 25);
  QSet<QString> teclas;
  for (const auto* orden : v.frm.findChildren<QAction*>())
    for (const QKeySequence& tecla : orden->shortcuts()) {
      EXPECT_FALSE(teclas.contains(tecla.toString())) << tecla.toString().toStdString();
      teclas << tecla.toString();
    }
  for (const char* tecla :
       {"Ctrl+Z", "Ctrl+Y", "Ctrl+Shift+Z", "Ctrl+O", "Ctrl+S", "Ctrl+P", "Ctrl+F", "Ctrl+T", "Ctrl+G"})
    EXPECT_TRUE(teclas.contains(tecla)) << tecla;
  for (const auto* atajo : v.frm.findChildren<QShortcut*>())
    EXPECT_FALSE(teclas.contains(atajo->key().toString())) << atajo->key().toString().toStdString();
  for (auto* lista : {v.Preview, v.Acumulado})
    EXPECT_EQ(lista->font().family(), "Courier New");
  for (const char* nombre : {"Disco", "Carpetas", "Ficheros", "Preview", "Acumulado", "VisorPrt"})
    EXPECT_EQ(QAccessible::queryAccessibleInterface(v.hijo<QWidget>(nombre))->text(QAccessible::Name),
              nombre);
  EXPECT_FALSE(v.hijo<QAbstractButton>("RefI")->isChecked());
  EXPECT_FALSE(v.hijo<QWidget>("VisorPrt")->isVisible());

  v.Ficheros->setFocus();
  QStringList esperado{"VerTexto",    "Preview",       "Importar",    "Bloques",      "Acumulado",
                       "VerEjemplos", "ElegirCarpeta", "Empezar",     "cmdInsertar",  "cmdEliminar",
                       "RefI",        "SoloAdeudos",   "cmdImprimir", "cmdComprobar", "Guardar",
                       "Salir",       "Disco",         "Carpetas"};
  // Solo donde están los ejemplos al lado del programa.
  if (!v.hijo("VerEjemplos")->isVisible()) esperado.removeOne("VerEjemplos");
  QStringList orden;
  for (qsizetype i = 0; i < esperado.size(); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    orden << QApplication::focusWidget()->objectName();
  }
  EXPECT_EQ(orden, esperado);
}

TEST_F(VentanaPrincipal, ImprimirEnUnDocumento) {
  auto registros = Remesa("20260405", {kUno, kDos});
  std::string mandato = Opcional("006", "REF");
  remesa::EscribirCampo(mandato, remesa::kImporteAdeudo, "00001234567");
  registros.insert(registros.begin() + 3, mandato);
  escribir("enero.Q19", Fichero(registros));
  Ventana v(carpeta_);
  comunes::PonerNombresImpresoras([] { return QStringList(); });
  comunes::AjustesDeImpresora() = {};
  const auto listado = carpeta_ / "listado.pdf";
  const ConDestino destino(carpeta_ / "listado");
  const auto imprimir = [&](const char* boton) {
    QTimer::singleShot(0, [boton] {
      auto* ventana = QApplication::activeModalWidget();
      ASSERT_NE(ventana, nullptr);
      EXPECT_EQ(ventana->objectName(), "Impresora");
      EXPECT_FALSE(ventana->findChild<QLabel*>("Aviso")->isVisible()) << "las columnas caben";
      QTest::mouseClick(ventana->findChild<QPushButton*>(boton), Qt::LeftButton);
    });
    v.pulsar("cmdImprimir");
  };
  v.pulsar("cmdImprimir");  // sin registros no se pregunta nada
  v.importar("enero.Q19");
  v.hijo<QCheckBox>("RefI")->setChecked(true);
  {
    // Lo que no es un adeudo se dice antes de nada.
    Cajas cajas{"No"};
    v.pulsar("cmdImprimir");
    EXPECT_TRUE(cajas.Mensaje(0).contains(
        "Incluye 1 registro que no es un adeudo (12.345,67 €). Adeudos: 2, 30,00 €."))
        << cajas.Mensaje(0).toStdString();
    EXPECT_EQ(v.frm.focusWidget(), v.hijo<QCheckBox>("SoloAdeudos"));
    QTest::keyClick(v.frm.focusWidget(), Qt::Key_Space);
  }
  imprimir("cmdCancelar");
  EXPECT_FALSE(std::filesystem::exists(listado));
  EXPECT_FALSE(v.hijo("AbrirListado")->isVisible());
  imprimir("cmdAceptar");
  EXPECT_TRUE(std::filesystem::exists(listado));
  EXPECT_TRUE(v.texto("EstadoMensaje").endsWith("listado.pdf"));
  EXPECT_TRUE(v.hijo("AbrirListado")->isVisible());
  v.pulsar("Empezar");
  EXPECT_FALSE(v.hijo("AbrirListado")->isVisible());
  comunes::PonerNombresImpresoras({});
}
