#include "ventanas/principal/LineaRemesa.h"

#include <QAction>
#include <QLineEdit>
#include <QTimer>
#include <numeric>

#include "EnEspana.h"
#include "VentanaPrincipal.h"
#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Formatos.h"
#include "remesa/Comprobacion.h"
#include "remesa/Fusion.h"
#include "ventanas/editor/EdiSEPA.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/VentanaHallazgos.h"
#include "ventanas/principal/ZonaAvisos.h"

using namespace pruebas;

namespace {

/// La línea de encima de la remesa, con la remesa de un ejemplo.
class LineaAcumulado : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    std::string bytes = leer(DIR_EJEMPLOS "/gimnasio-acuario.Q19");
    escribir("buena.Q19", bytes);
    bytes.replace(kDanado * 602 + 80, 4, "RCRU");
    escribir("mala.Q19", bytes);
  }

  static constexpr std::size_t kDanado = 5;  // índice del registro
  EnEspana espana_{{2026, 1, 5}};
};

/// Lo que la línea dice a las ayudas técnicas, entero, cuando ya ha acabado de comprobar.
QString Dicho(Ventana& v) {
  auto* linea = v.hijo<principal::LineaRemesa>("InfoAcumulado");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !linea->accessibleName().contains("Comprobando…"); }, 60'000));
  return linea->accessibleName();
}

/// Lo mismo, comprobado aparte.
QString Debido(Ventana& v) {
  const auto resultado = remesa::ComprobarLista(
      v.Acumulado->lista(), comunes::Hoy(), [](remesa::Hallazgo&&) {}, true);
  return principal::TextoVeredicto(resultado.errores, resultado.avisos);
}

TEST_F(LineaAcumulado, ElVeredictoSigueALaRemesa) {
  Ventana v(carpeta_);
  EXPECT_EQ(Dicho(v), "Remesa vacía");
  v.importar("mala.Q19");
  EXPECT_TRUE(Dicho(v).endsWith(" € · " + Debido(v))) << Dicho(v).toStdString();
  EXPECT_TRUE(Debido(v).startsWith("1 error · "));

  // Los recuentos llevan a la lista de lo mismo, y de ahí al campo.
  ASSERT_TRUE(v.hijo("Veredicto")->isVisible());
  EXPECT_EQ(v.hijo("Veredicto")->text(), Debido(v));
  v.pulsar("Veredicto");
  const auto* ventana = v.frm.findChild<principal::VentanaHallazgos*>();
  ASSERT_NE(ventana, nullptr);
  EXPECT_TRUE(
      ventana->findChild<QLabel*>("Resumen")->text().startsWith("Remesa acumulada, como se guardaría: "));
  QTimer::singleShot(0, [&] {
    auto* editor = qobject_cast<editor::EdiSEPA*>(QApplication::activeModalWidget());
    ASSERT_NE(editor, nullptr);
    editor->findChild<QLineEdit*>("cpo6")->setText("RCUR");
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  emit v.Acumulado->dobleClic(kDanado);
  EXPECT_TRUE(Debido(v).startsWith("Sin errores")) << Debido(v).toStdString();
  EXPECT_TRUE(Dicho(v).endsWith(" € · " + Debido(v))) << Dicho(v).toStdString();

  // Lo que cambia mientras se comprueba cuenta; y con la ventana cerrada, la comprobación se deja.
  v.pulsar("Empezar");
  EXPECT_EQ(Dicho(v), "Remesa vacía");
  EXPECT_FALSE(v.hijo("Veredicto")->isVisible());
  auto muchos = Remesa("20260405", {});
  muchos.insert(muchos.begin() + 2, 10'000, Adeudo("REF", "00000000100"));
  escribir("muchos.Q19", Fichero(muchos));
  v.Ficheros->refrescar();
  v.importar("muchos.Q19");
  QTest::qWait(200);  // ya ha empezado
  v.importar("buena.Q19");
  EXPECT_TRUE(Dicho(v).endsWith(" € · " + Debido(v))) << Dicho(v).toStdString();
  v.Acumulado->seleccionarSolo(2);
  v.pulsar("cmdInsertar");
  QTest::qWait(200);
}

TEST_F(LineaAcumulado, LoMezcladoYLosTotalesSeDicenMientrasDuran) {
  Cajas cajas;
  Ventana v(carpeta_);
  escribir("marzo.Q19", Fichero(Remesa("20260405", {"00000000100", "00000000250"})));
  v.Ficheros->refrescar();
  v.importar("buena.Q19");
  EXPECT_EQ(v.texto("AvisoAcumulado"), "");
  v.importar("marzo.Q19");
  const QString mezcla = v.texto("AvisoAcumulado");
  EXPECT_TRUE(
      mezcla.startsWith("Mezclados al importar: marzo.Q19, de otro acreedor (ES02000B12345678) y otra "
                        "fecha de cobro (05/04/2026)"))
      << mezcla.toStdString();
  v.Acumulado->seleccionarSolo(3);
  v.pulsar("cmdInsertar");
  EXPECT_EQ(v.texto("AvisoAcumulado"), mezcla);

  // Un importe cambiado deja mal los totales hasta que se recalculan.
  auto* recalcular = &v.hijo<principal::ZonaAvisos>("AvisoAcumulado")->enlace();
  EXPECT_FALSE(recalcular->isVisible());
  QTimer::singleShot(0, [] {
    auto* editor = qobject_cast<editor::EdiSEPA*>(QApplication::activeModalWidget());
    ASSERT_NE(editor, nullptr);
    editor->findChild<QLineEdit*>("cpo8")->setText("00000099999");
    QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
  });
  emit v.Acumulado->dobleClic(3);
  EXPECT_TRUE(v.texto("AvisoAcumulado").contains("Los totales no cuadran"));
  ASSERT_TRUE(recalcular->isVisible());
  const auto editada = v.acumulado();
  QTest::mouseClick(recalcular, Qt::LeftButton);
  remesa::ListaRegistros debida = v.Acumulado->lista();
  remesa::RecalcularTotales(debida);
  EXPECT_EQ(v.acumulado(), Bytes(debida));
  EXPECT_NE(v.acumulado(), editada);
  EXPECT_EQ(v.texto("AvisoAcumulado"), mezcla);
  EXPECT_FALSE(recalcular->isVisible());

  v.pulsar("Empezar");
  EXPECT_EQ(v.texto("AvisoAcumulado"), "");
  v.importar("marzo.Q19");
  EXPECT_EQ(v.texto("AvisoAcumulado"), "");
  v.pulsar("Empezar");
  cajas.Responder("Aceptar");
  v.hijo<QAction>("mnuRecalcular")->trigger();
  EXPECT_TRUE(cajas.Mensaje(0).contains("no hay totales que recalcular"));
}

TEST_F(LineaAcumulado, LoSeleccionadoSeSuma) {
  auto muchos = Remesa("20260405", {"00000000150", "00000000250"});
  muchos.insert(muchos.begin() + 4, 60'000, Adeudo("REF", "00000001000"));
  escribir("muchos.Q19", Fichero(muchos));
  Ventana v(carpeta_);
  v.importar("muchos.Q19");
  auto* linea = v.hijo<principal::LineaRemesa>("InfoAcumulado");
  const auto dice = [&](const QString& fin) {
    return QTest::qWaitFor([&] { return linea->accessibleName().endsWith(fin); }, 5000);
  };
  std::vector<std::size_t> todas(muchos.size());
  std::iota(todas.begin(), todas.end(), std::size_t{0});
  for (const auto& [filas, fin] :
       {std::pair{std::vector<std::size_t>{0, 2, 3}, "Selección: 2 adeudos, 4,00 €"},
        {{1, 4}, "Selección: 1 adeudo, 10,00 €"},
        {todas, "Selección: 60.002 adeudos, 600.004,00 €"},
        {{0, 1}, "Selección: 0 adeudos, 0,00 €"}}) {
    v.Acumulado->seleccionar(filas);
    EXPECT_TRUE(dice(fin)) << linea->accessibleName().toStdString();
  }
  v.Acumulado->seleccionarSolo(2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !linea->accessibleName().contains("Selección"); }, 5000));
}

}  // namespace
