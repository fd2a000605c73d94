#include "ventanas/principal/VentanaHallazgos.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <algorithm>

#include "EnEspana.h"
#include "VentanaPrincipal.h"
#include "comunes/plataforma/Formatos.h"
#include "remesa/Comprobacion.h"
#include "ventanas/editor/EdiSEPA.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

class PruebaVentanaHallazgos : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    std::string bytes = leer(DIR_EJEMPLOS "/gimnasio-acuario.Q19");
    bytes.replace(kDanado * 602 + 80, 4, "RCRU");
    escribir("mala.Q19", bytes);
  }

  static constexpr std::size_t kDanado = 5;  // índice del registro
  EnEspana espana_{{2026, 1, 5}};
};

struct Lista {
  explicit Lista(Ventana& v) : dialogo(v.frm.findChild<principal::VentanaHallazgos*>()) {
    if (dialogo == nullptr) return;
    visor = dialogo->findChild<QTableView*>("Visor");
    QTest::qWait(0);
  }
  QString resumen() const { return dialogo->findChild<QLabel*>("Resumen")->text(); }
  /// Fila del primer hallazgo con ese código; -1 si no lo hay.
  int fila(const char* codigo) const {
    const QModelIndexList halladas =
        visor->model()->match(visor->model()->index(0, 1), Qt::DisplayRole, codigo, 1, Qt::MatchExactly);
    return halladas.isEmpty() ? -1 : halladas.first().row();
  }
  void ir(const char* codigo) const {
    ASSERT_GE(fila(codigo), 0) << codigo;
    visor->setCurrentIndex(visor->model()->index(fila(codigo), 0));
    dialogo->activateWindow();
    visor->setFocus();
    QTest::keyClick(visor, Qt::Key_Return);
  }

  principal::VentanaHallazgos* dialogo;
  QTableView* visor = nullptr;
};

TEST_F(PruebaVentanaHallazgos, DeLoPrevisualizadoAlRegistro) {
  Ventana v(carpeta_);
  Cajas cajas{"Aceptar"};
  v.hijo<QAction>("mnuComprobar")->trigger();
  EXPECT_TRUE(cajas.Mensaje(0).contains("No hay ninguna remesa que comprobar"));

  v.elegir("mala.Q19");
  v.hijo<QAction>("mnuComprobar")->trigger();
  const Lista lista(v);
  ASSERT_NE(lista.dialogo, nullptr);
  EXPECT_TRUE(lista.resumen().startsWith("Previsualizado, mala.Q19: ")) << lista.resumen().toStdString();
  EXPECT_TRUE(lista.resumen().contains(" 1 error y "));
  lista.ir("E308");
  EXPECT_EQ(v.Preview->seleccion(), std::vector<std::size_t>{kDanado});
  EXPECT_EQ(v.Preview->actual(), static_cast<int>(kDanado));
}

// Del hallazgo al campo en el editor; al aceptar se comprueba otra vez y ya no está.
TEST_F(PruebaVentanaHallazgos, DeLaAcumulacionAlCampo) {
  Ventana v(carpeta_);
  v.importar("mala.Q19");
  v.hijo<QAction>("mnuComprobar")->trigger();
  const Lista lista(v);
  ASSERT_NE(lista.dialogo, nullptr);
  EXPECT_TRUE(lista.resumen().startsWith("Remesa acumulada: ")) << lista.resumen().toStdString();
  QString campo;
  QTimer::singleShot(0, [&] {
    auto* editor = qobject_cast<editor::EdiSEPA*>(QApplication::activeModalWidget());
    ASSERT_NE(editor, nullptr);
    auto* caja = qobject_cast<QLineEdit*>(editor->focusWidget());
    ASSERT_NE(caja, nullptr);
    campo = caja->text();
    caja->setText("RCUR");
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  lista.ir("E308");
  EXPECT_EQ(campo, "RCRU");
  EXPECT_EQ(v.Acumulado->lista()[kDanado].substr(80, 4), "RCUR");
  EXPECT_EQ(lista.fila("E308"), -1);
  EXPECT_TRUE(lista.resumen().contains(": 50 registros, sin errores")) << lista.resumen().toStdString();

  // Lo que cambia por otro lado deja anticuada la lista: antes de ir se comprueba.
  v.Acumulado->seleccionarSolo(2);
  v.pulsar("cmdInsertar");
  EXPECT_TRUE(lista.resumen().endsWith("Ha cambiado desde entonces."));
  v.Acumulado->seleccionarSolo(0);
  lista.visor->setCurrentIndex(lista.visor->model()->index(lista.fila("A301"), 0));
  QTest::mouseClick(lista.dialogo->findChild<QPushButton*>("cmdIr"), Qt::LeftButton);
  EXPECT_TRUE(lista.resumen().contains(" 51 registros")) << lista.resumen().toStdString();
  EXPECT_GE(lista.fila("A402"), 0);
  EXPECT_EQ(v.Acumulado->actual(), 0);
}

// Ordenar no pierde el hallazgo en que se estaba; y si el fichero ya no está, se sigue viendo lo de antes.
TEST_F(PruebaVentanaHallazgos, ElHallazgoActualNoSePierde) {
  Ventana v(carpeta_);
  v.elegir("mala.Q19");
  v.hijo<QAction>("mnuComprobar")->trigger();
  const Lista lista(v);
  ASSERT_NE(lista.dialogo, nullptr);
  auto* detalle = lista.dialogo->findChild<QLabel*>("Detalle");
  lista.visor->setCurrentIndex(lista.visor->model()->index(lista.fila("E308"), 0));
  const QString texto = detalle->text();
  const int fila = lista.fila("E308");
  for (const int columna : {1, 2}) {
    auto* titulos = lista.visor->horizontalHeader();
    QTest::mouseClick(titulos->viewport(), Qt::LeftButton, {},
                      {titulos->sectionViewportPosition(columna) + 5, titulos->height() / 2});
    EXPECT_EQ(lista.visor->currentIndex().row(), lista.fila("E308")) << columna;
    EXPECT_EQ(detalle->text(), texto) << columna;
  }
  // cppcheck-suppress knownConditionTrueFalse ; ordenar mueve las filas
  EXPECT_NE(lista.fila("E308"), fila) << "no se ha ordenado";

  std::filesystem::remove(carpeta_ / "mala.Q19");
  Cajas cajas{"Aceptar", "Aceptar"};
  for (const char* boton : {"cmdRepetir", "cmdIr"}) {
    QTest::mouseClick(lista.dialogo->findChild<QPushButton*>(boton), Qt::LeftButton);
    EXPECT_EQ(detalle->text(), texto) << boton;
  }
  EXPECT_TRUE(cajas.Mensaje(1).startsWith("Error 53:")) << cajas.Mensaje(1).toStdString();
  EXPECT_EQ(lista.resumen().count("Ha cambiado desde entonces."), 1) << lista.resumen().toStdString();
}

TEST_F(PruebaVentanaHallazgos, AlGuardarSeDiceYSeVe) {
  Ventana v(carpeta_);
  v.importar("mala.Q19");
  // Encima de un fichero que ya se ve arriba, y con un registro más que él.
  std::filesystem::copy(carpeta_ / "mala.Q19", carpeta_ / "salida.Q19");
  v.Carpetas->refrescar();
  v.Ficheros->refrescar();
  v.elegir("salida.Q19");
  v.Acumulado->seleccionarSolo(2);
  v.pulsar("cmdInsertar");
  const ConDestino destino(carpeta_ / "salida.Q19");
  Cajas cajas{"Si"};
  v.pulsar("Guardar");
  EXPECT_TRUE(v.veredicto().startsWith("Guardado con 1 error y ")) << v.texto("EstadoMensaje").toStdString();
  ASSERT_TRUE(v.hijo("VerComprobacion")->isVisible());
  v.pulsar("VerComprobacion");
  const Lista lista(v);
  ASSERT_NE(lista.dialogo, nullptr);
  EXPECT_TRUE(lista.resumen().startsWith("Guardado, salida.Q19: "));
  lista.ir("E308");
  EXPECT_TRUE(v.texto("InfoPreview").startsWith("salida.Q19"));
  EXPECT_EQ(v.Preview->seleccion(), std::vector<std::size_t>{kDanado + 1});
  EXPECT_FALSE(v.hijo("VerComprobacion")->isVisible());
}

// Lo que se ve se filtra; lo que sale es todo, también lo que no cabe en la lista, y es lo que da la consola.
TEST_F(PruebaVentanaHallazgos, SeFiltraYSaleEntero) {
  constexpr std::size_t kMuchos = 1500;
  auto registros = Remesa("20260406", {});
  for (std::size_t i = 0; i < kMuchos; ++i) {
    std::string adeudo = Adeudo("REF" + std::to_string(1000 + i), "00000001000");
    remesa::EscribirCampo(adeudo, remesa::kNombreDeudor,
                          i == kMuchos - 1 ? comunes::AWindows1252(u"=ZÑúñez;\"1"_s) : "Jos\xE9");
    registros.insert(registros.end() - 3, adeudo);
  }
  remesa::EscribirCampo(registros[registros.size() - 3], remesa::kImporte04, "00000000000319080");
  escribir("muchos.Q19", Fichero(registros));
  Ventana v(carpeta_);
  v.elegir("muchos.Q19");
  v.hijo<QAction>("mnuComprobar")->trigger();
  const Lista lista(v);
  ASSERT_NE(lista.dialogo, nullptr);
  EXPECT_TRUE(lista.resumen().endsWith("Se muestran los primeros 1.000 de cada código."))
      << lista.resumen().toStdString();
  const auto celda = [&](int fila, int columna) {
    return lista.visor->model()->index(fila, columna).data().toString();
  };
  const int total = lista.fila("E403");
  EXPECT_EQ(celda(total, 5) + '|' + celda(total, 6), "3.190,80 €|15.000,00 €");

  auto* nivel = lista.dialogo->findChild<QComboBox*>("Nivel");
  auto* codigo = lista.dialogo->findChild<QComboBox*>("Codigo");
  auto* buscado = lista.dialogo->findChild<QLineEdit*>("Buscado");
  const auto filas = [&] { return lista.visor->model()->rowCount(); };
  const int todas = filas();
  nivel->setCurrentIndex(2);
  EXPECT_EQ(lista.fila("E403"), -1);
  nivel->setCurrentIndex(0);
  codigo->setCurrentIndex(codigo->findText("A301 (1.500)"));
  EXPECT_EQ(filas(), 1000);
  buscado->setText(u"zÑUñ"_s);  // sin acentos ni mayúsculas, y más allá de los primeros
  EXPECT_TRUE(QTest::qWaitFor([&] { return filas() == 1; }, 10'000)) << filas();
  EXPECT_EQ(celda(0, 3), u"=ZÑúñez;\"1"_s);

  // Con el filtro puesto, sale todo.
  std::size_t hay = 0;
  remesa::ComprobarFichero(carpeta_ / "muchos.Q19", comunes::Hoy(), [&](remesa::Hallazgo&&) { ++hay; });
  for (const auto& [boton, nombre] : {std::pair{"cmdCsv", "sale.csv"}, {"cmdJson", "sale.json"}}) {
    const ConDestino destino(carpeta_ / nombre);
    QTest::mouseClick(lista.dialogo->findChild<QPushButton*>(boton), Qt::LeftButton);
  }
  const std::string csv = leer(carpeta_ / "sale.csv"), json = leer(carpeta_ / "sale.json");
  EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(csv, '\n')), hay + 1);
  EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBFNivel;"));
  EXPECT_NE(csv.find(";3190,80;15000,00;"), std::string::npos);
  EXPECT_NE(csv.find(";\"'=ZÑúñez;\"\"1\";"), std::string::npos) << "ni fórmula ni celda de más";
  EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(json, '\n')), hay);
  EXPECT_NE(json.find(R"("nivel":"error","referencia":"","registro":1503,"valor":"00000000000319080"})"),
            std::string::npos);
  QTest::mouseClick(lista.dialogo->findChild<QPushButton*>("cmdCopiar"), Qt::LeftButton);
  EXPECT_EQ(static_cast<std::size_t>(QApplication::clipboard()->text().count('\n')), hay + 1);
  QTest::keyClick(lista.visor, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().count('\n'), 2);
  QTest::keyClick(lista.dialogo, Qt::Key_Escape);  // deja de buscar; la ventana sigue
  codigo->setCurrentIndex(0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return filas() == todas; }, 10'000));
}

// En el editor, al lado del campo, mientras no se cambie.
TEST_F(PruebaVentanaHallazgos, EnElEditorAlLadoDelCampo) {
  Ventana v(carpeta_);
  v.importar("mala.Q19");
  QTimer::singleShot(0, [&] {
    auto* editor = qobject_cast<editor::EdiSEPA*>(QApplication::activeModalWidget());
    ASSERT_NE(editor, nullptr);
    auto* caja = editor->findChild<QLineEdit*>("cpo6");
    auto* dicho = editor->findChild<QLabel*>("obs6");
    EXPECT_TRUE(QTest::qWaitFor([&] { return dicho->text().startsWith("Error E308: «RCRU»"); }, 20'000))
        << dicho->text().toStdString();
    EXPECT_TRUE(dicho->isVisible() && editor->findChild<QLabel*>("sen6")->isVisible());
    EXPECT_TRUE(caja->accessibleDescription().contains("E308"));
    caja->setText("RCUR");
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdSiguiente"), Qt::LeftButton);
    EXPECT_FALSE(dicho->text().contains("E308"));
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdAnterior"), Qt::LeftButton);
    editor->reject();  // con una comprobación a medias
  });
  emit v.Acumulado->dobleClic(kDanado);
}

}  // namespace
