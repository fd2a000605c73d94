#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPrinter>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "comunes/impresion/Impresora.h"
#include "comunes/impresion/VentanaImpresora.h"

namespace {

using namespace comunes;

class PruebaImpresora : public testing::Test {
 protected:
  void SetUp() override {
    PonerNombresImpresoras([] { return QStringList{"Kyocera", "Generador PDF", "HP LaserJet"}; });
    AjustesDeImpresora() = {};
  }
  void TearDown() override { PonerNombresImpresoras({}); }

  /// Abre la ventana de verdad y le hace `pasos`, que deben cerrarla.
  static bool activar(const std::function<void(QWidget&)>& pasos, const PeticionImpresora& peticion = {}) {
    QTimer::singleShot(0, [&pasos] {
      QWidget* ventana = QApplication::activeModalWidget();
      ASSERT_NE(ventana, nullptr);
      pasos(*ventana);
      if (QApplication::activeModalWidget() == ventana) {
        ADD_FAILURE() << "la ventana sigue abierta";
        ventana->close();
      }
    });
    return ActivarImpresora(true, peticion);
  }
  template <class T>
  static T& hijo(QWidget& w, const char* nombre) {
    return *w.findChild<T*>(nombre);
  }
  static void pulsar(QWidget& w, const char* nombre) {
    QTest::mouseClick(&hijo<QAbstractButton>(w, nombre), Qt::LeftButton);
  }
  static QStringList lista(QWidget& w) {
    QStringList textos;
    auto& l = hijo<QListWidget>(w, "ListaImpresoras");
    for (int i = 0; i < l.count(); ++i)
      textos << l.item(i)->text();
    return textos;
  }
  static QString elegida(QWidget& w) {
    const auto elegidas = hijo<QListWidget>(w, "ListaImpresoras").selectedItems();
    return elegidas.isEmpty() ? QString() : elegidas.first()->text();
  }
};

TEST_F(PruebaImpresora, ListaYVistaDePDF) {
  EXPECT_FALSE(activar([](QWidget& w) {
    auto& etiqueta = hijo<QAbstractButton>(w, "Etiqueta");
    EXPECT_EQ(etiqueta.text(), "Impresoras (4)");
    EXPECT_EQ(lista(w), (QStringList{"Kyocera", "Generador PDF", "HP LaserJet", "Documento PDF"}));
    EXPECT_EQ(elegida(w), "Documento PDF");
    const auto antes = hijo<QToolButton>(w, "Imagen").icon().cacheKey();
    pulsar(w, "Etiqueta");
    EXPECT_EQ(etiqueta.text(), "PDF");
    EXPECT_EQ(lista(w), (QStringList{"Generador PDF", "Documento PDF"}));
    EXPECT_NE(hijo<QToolButton>(w, "Imagen").icon().cacheKey(), antes);
    pulsar(w, "Imagen");
    EXPECT_EQ(etiqueta.text(), "Impresoras (4)");
    QTest::keyClick(&w, Qt::Key_Escape);
  }));
}

TEST_F(PruebaImpresora, LaOrientacionYElNombreQuedanElegidos) {
  EXPECT_TRUE(activar([](QWidget& w) {
    EXPECT_EQ(hijo<QAbstractButton>(w, "ModoPapel").text(), "H&orizontal");
    EXPECT_EQ(hijo<QLabel>(w, "Papel").text(), "Papel Vertical");
    ProponerApaisado();
    EXPECT_EQ(hijo<QAbstractButton>(w, "ModoPapel").text(), "Vertical");
    EXPECT_EQ(hijo<QLabel>(w, "Papel").text(), "Papel Horizontal");
    pulsar(w, "cmdAceptar");
  }));
  EXPECT_EQ(AjustesDeImpresora().orientacion, "Horizontal");
  EXPECT_TRUE(ImprimeEnDocumento());
  EXPECT_EQ(CrearImpresora()->pageLayout().orientation(), QPageLayout::Landscape);

  AjustesDeImpresora().recordada = "hp LASER";
  activar([](QWidget& w) {
    EXPECT_EQ(elegida(w), "HP LaserJet");
    QTest::keyClick(&w, Qt::Key_Escape);
  });
  AjustesDeImpresora().recordada = "No está";
  activar([](QWidget& w) {
    EXPECT_EQ(elegida(w), "");
    pulsar(w, "cmdCancelar");
  });
}

TEST_F(PruebaImpresora, UnaCancelacionNoImpideLaSiguiente) {
  EXPECT_FALSE(activar([](QWidget& w) { w.close(); }));
  EXPECT_TRUE(ActivarImpresora(false));
}

TEST_F(PruebaImpresora, UnaImpresoraQueDesapareceSeDice) {
  AjustesDeImpresora().elegida = "Ya no está";
  QString titulo;
  QTimer::singleShot(0, [&titulo] {
    titulo = QApplication::activeModalWidget()->windowTitle();
    QApplication::activeModalWidget()->close();
  });
  AjustesDeImpresora().orientacion = "Horizontal";
  EXPECT_FALSE(ActivarImpresora(false));
  EXPECT_EQ(titulo.left(21), "Activación Impresora ");
  EXPECT_EQ(AjustesDeImpresora().orientacion, "Vertical") << "la que sigue en vigor";
}

TEST_F(PruebaImpresora, AvisaSiNoCabenLasColumnasYOfreceGirar) {
  PeticionImpresora peticion;
  peticion.anchoTabla = 15000;  // 750 puntos: solo en apaisado
  EXPECT_TRUE(activar(
      [](QWidget& w) {
        EXPECT_TRUE(hijo<QLabel>(w, "Aviso").isVisible());
        pulsar(w, "cmdGirar");
        EXPECT_FALSE(hijo<QLabel>(w, "Aviso").isVisible());
        pulsar(w, "cmdAceptar");
      },
      peticion));
  EXPECT_EQ(AjustesDeImpresora().orientacion, "Horizontal");
  peticion.anchoTabla = 11760;  // cinco columnas del listado
  AjustesDeImpresora() = {};
  activar(
      [](QWidget& w) {
        EXPECT_FALSE(hijo<QLabel>(w, "Aviso").isVisible());
        w.close();
      },
      peticion);
}

}  // namespace
