#include "comunes/plataforma/Aplicacion.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <new>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"

using namespace comunes;

namespace {

/// Ejecuta `tarea`, que debe abrir una caja, y devuelve lo que decía al cerrarla.
std::string cajaDe(const std::function<void()>& tarea) {
  QString texto;
  QTimer::singleShot(0, [&] {
    auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(caja, nullptr);
    texto = caja->windowTitle() + u'|' + caja->text() + u'|' + caja->button(QMessageBox::Ok)->text();
    EXPECT_EQ(caja->textFormat(), Qt::PlainText);
    caja->accept();
  });
  tarea();
  return texto.toStdString();
}

}  // namespace

TEST(Aplicacion, ElErrorDeUnControladorSeInformaYElProgramaSigue) {
  QPushButton boton;
  std::function<void()> falla;
  QObject::connect(&boton, &QPushButton::clicked, [&] { falla(); });
  const auto informe = [&](std::function<void()> causa) {
    falla = std::move(causa);
    return cajaDe([&] { QTest::mouseClick(&boton, Qt::LeftButton); });
  };
  const std::string titulo = QApplication::applicationDisplayName().toStdString();
  EXPECT_EQ(informe([] { throw ficheros::ErrorEjecucion(ficheros::kNoEncontrado, ARuta("/a/<b>Ñ&.q19")); }),
            titulo + "|Error 53: No se encontró el archivo\n/a/<b>Ñ&.q19|Aceptar");
  EXPECT_EQ(informe([] { throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento); }),
            titulo + "|Error 6: Desbordamiento|Aceptar");
  EXPECT_EQ(informe([] { throw std::bad_alloc(); }), titulo + "|Error 7: Memoria insuficiente|Aceptar");
  EXPECT_EQ(informe([] { throw std::runtime_error("x"); }), titulo + "|Error 51: Error interno\nx|Aceptar");
}

TEST(Aplicacion, IntroPulsaElBotonDelFocoDondeNingunoEsElDeSiempre) {
  for (const bool haySiempre : {false, true}) {
    QDialog ventana;
    QPushButton foco(&ventana), otro(&ventana);
    foco.setAutoDefault(false);
    otro.setAutoDefault(false);
    otro.setDefault(haySiempre);
    int pulsado = 0, delOtro = 0;
    QObject::connect(&foco, &QPushButton::clicked, [&] { ++pulsado; });
    QObject::connect(&otro, &QPushButton::clicked, [&] { ++delOtro; });
    ventana.show();
    QTest::keyClick(&foco, Qt::Key_Return);
    QTest::keyClick(&foco, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(pulsado, haySiempre ? 0 : 1);
    EXPECT_EQ(delOtro, haySiempre ? 1 : 0);
  }
}

TEST(Aplicacion, NuncaHayDosInformes) {
  int cajas = 0;
  // Con la primera ya en pantalla falla otro controlador.
  QTimer::singleShot(0, [&] {
    Aplicacion::Proteger([] { throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento); });
    for (QWidget* ventana : QApplication::topLevelWidgets()) {
      if (!ventana->isVisible() || ventana->objectName() != "InformeError") continue;
      ++cajas;
      ventana->close();
    }
  });
  Aplicacion::Proteger([] { throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido); });
  EXPECT_EQ(cajas, 1);
}

TEST(Aplicacion, AvisosDeLaPlataforma) {
  EXPECT_EQ(cajaDe([] { AvisarPlataforma(GradoAviso::Critico, "<b>uno</b>", {}); }),
            QApplication::applicationDisplayName().toStdString() + "|<b>uno</b>|Aceptar");
  EXPECT_EQ(cajaDe([] { AvisarPlataforma(GradoAviso::SinIcono, "dos", "Título"); }), "Título|dos|Aceptar");
}

TEST(Ventanas, ReglaDeLetra) {
  QWidget ventana;
  auto* grupo = new QGroupBox(&ventana);
  auto* comun = new QLabel(grupo);
  auto* propio = new QLabel(grupo);
  QFont negrita = comun->font();
  negrita.setBold(true);
  comun->setFont(negrita);
  propio->setProperty("Tag", "T(M) (FF)");
  const QString antes = propio->font().family();
  FuentesVentana(ventana);
  EXPECT_EQ(comun->font().family(), "MS Shell Dlg 2");
  EXPECT_TRUE(comun->font().bold());
  EXPECT_EQ(propio->font().family(), antes);
}
