// El editor de tablas: sus ficheros y su ventana.

#include <QLineEdit>
#include <QTableView>
#include <QtTest>

#include "comunes/herramientas/CargarGrabarTabla.h"
#include "comunes/herramientas/frmTablas.h"
#include "comunes/rejilla/MiVisor.h"
#include "pruebas/Cajas.h"
#include "pruebas/EnCarpeta.h"

using namespace herramientas;

namespace {

using namespace Qt::StringLiterals;

class Tablas : public pruebas::EnCarpeta {
 protected:
  QString Escribir(const QByteArray& bytes) { return escribir("tabla.txt", bytes); }
  QByteArray Leer(const QString& nombre = "tabla.txt") { return leer(ruta(nombre)); }
  void Abrir(const QByteArray& bytes, const QString& descriptor = "T(Z) A(I) L(255)") {
    tablas_ = std::make_unique<frmTablas>();
    tablas_->PonerRuta(Escribir(bytes));
    tablas_->Dimensionar(nullptr, 0, "Valor#40", descriptor, true);
    tablas_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(tablas_.get()));
  }
  template <typename Control = QWidget>
  Control* Hijo(const char* nombre) const {
    return tablas_->findChild<Control*>(nombre);
  }
  QTableView* Visor() const { return Hijo<QTableView>("VisorTabla"); }
  QLineEdit* Elemento() const { return Hijo<QLineEdit>("Elemento"); }
  QString Valores() const {
    QStringList valores;
    for (int fila = 0; fila < Visor()->model()->rowCount(); ++fila)
      valores += Visor()->model()->index(fila, 0).data().toString();
    return valores.join('|');
  }
  QString Marca() const { return Visor()->property("Tag").toString(); }
  void Pulsar(const char* boton) { QTest::mouseClick(Hijo(boton), Qt::LeftButton); }
  void Anadir(const QString& valor) {
    QTest::keyClicks(Elemento(), valor);
    Pulsar("cmdAceptar");
  }
  void Senalar(int fila) {
    QTest::mouseClick(Visor()->viewport(), Qt::LeftButton, {},
                      Visor()->visualRect(Visor()->model()->index(fila - 1, 0)).center());
  }

  std::unique_ptr<frmTablas> tablas_;
};

}  // namespace

TEST_F(Tablas, IdaYVueltaDeLosFicheros) {
  const std::tuple<QByteArray, QString, QByteArray> casos[] = {
      {"uno\r\ndos\r\ntres\r\n", "uno|dos|tres", "uno\r\ndos\r\ntres\r\n"},
      {"uno\n   \n\rcuatro", "uno|   ||cuatro", "uno\r\ncuatro\r\n"},
      {"A\xD1O \x80\r\n\xA0\r\n\t\r\n", u"AÑO €|\u00A0|\t"_s, "A\xD1O \x80\r\n\xA0\r\n\t\r\n"},
      {QByteArray("a\0b\r\n", 5), QString::fromUtf16(u"a\0b", 3), QByteArray("a\0b\r\n", 5)},
      {"\xEF\xBB\xBFΩ\n\nñ\n", "Ω||ñ", "\xEF\xBB\xBFΩ\r\nñ\r\n"},
      {pruebas::Utf16("Ω\r\n", false), "Ω", pruebas::Utf16("Ω\r\n", false)},
      {"", "", ""},
  };
  comunes::Codificacion codificacion;
  comunes::Rejilla rejilla;
  comunes::PrepararRejilla(rejilla, "Valor#40");
  for (const auto& [bytes, valores, grabado] : casos) {
    SCOPED_TRACE(bytes.toStdString());
    QString tabla = Escribir(bytes);
    EXPECT_TRUE(CargarGrabarTabla("CARGAR", tabla, rejilla, nullptr, &codificacion));
    QStringList leidos;
    for (int fila = 1; fila < rejilla.Rows(); ++fila)
      leidos += rejilla.TextMatrix(fila, 0);
    EXPECT_EQ(valores, leidos.join('|'));
    EXPECT_TRUE(CargarGrabarTabla("REGRABAR", tabla, rejilla, nullptr, &codificacion));
    EXPECT_EQ(grabado, Leer());
  }
  QString otra = ruta("tabla.txt");
  EXPECT_FALSE(CargarGrabarTabla("OTRA", otra, rejilla, nullptr));
  QString nueva = ruta("no-existe.txt");
  EXPECT_TRUE(CargarGrabarTabla("CARGAR", nueva, rejilla, nullptr));
  EXPECT_EQ(2, rejilla.Rows());
  EXPECT_EQ("", rejilla.TextMatrix(1, 0));
  EXPECT_TRUE(CargarGrabarTabla("GRABAR", nueva, rejilla, nullptr));
  EXPECT_EQ("", Leer("no-existe.txt"));
}

TEST_F(Tablas, LeerLineasSegunElMaximo) {
  QByteArray bytes;
  for (int i = 1; i <= 250; ++i)
    bytes += QByteArray::number(i) + (i < 250 ? "\r\n" : "");
  const QString tabla = Escribir(bytes);
  // El máximo, las plazas, la 0 aparte, y las leídas.
  for (const auto& [maximo, plazas, leidas] :
       {std::tuple{0, 250U, 250U}, {3, 3U, 3U}, {-2, 250U, 250U}, {-1, 305U, 250U}}) {
    std::vector<QString> lineas(6, "previa");
    bool ok = false;
    LeerLineas(tabla, lineas, maximo, ok);
    EXPECT_TRUE(ok);
    ASSERT_EQ(plazas + 1, lineas.size()) << maximo;
    EXPECT_EQ("1", lineas[1]);
    EXPECT_EQ(QString::number(leidas), lineas[leidas]);
  }
  std::vector<QString> lineas{"x", "previa"};
  bool ok = true;
  LeerLineas(ruta("no-existe"), lineas, 0, ok);
  EXPECT_FALSE(ok);
  EXPECT_EQ(2U, lineas.size());
}

TEST_F(Tablas, SeAnadeSeCambiaSeMueveYSeQuita) {
  Abrir("");
  EXPECT_EQ("", Marca());
  QTest::keyClicks(Elemento(), "tr");
  EXPECT_EQ("MODIFICADO", Marca());
  Anadir("es");
  EXPECT_EQ("tres", Valores()) << "el primero ocupa la fila vacía";
  EXPECT_TRUE(Elemento()->hasFocus());
  EXPECT_EQ("", Elemento()->text());
  Anadir("uno");
  Anadir("dos");
  EXPECT_EQ("tres|uno|dos", Valores());

  // Con Intro se pasa del valor al botón y de vuelta.
  QTest::keyClicks(Elemento(), "cuatro");
  QTest::keyClick(tablas_->focusWidget(), Qt::Key_Return);
  QTest::keyClick(tablas_->focusWidget(), Qt::Key_Return);
  EXPECT_EQ("tres|uno|dos|cuatro", Valores());
  EXPECT_TRUE(Elemento()->hasFocus());

  Pulsar("cmdGrabar");
  EXPECT_EQ("tres\r\nuno\r\ndos\r\ncuatro\r\n", Leer());
  EXPECT_EQ("", Marca());

  Senalar(2);
  EXPECT_EQ("uno", Elemento()->text());
  EXPECT_TRUE(Elemento()->hasFocus());
  EXPECT_EQ("", Marca()) << "elegir una fila no es un cambio";
  // La fila que se corrige lo sigue siendo aunque se mueva ella o la de al lado.
  QTest::keyClick(Elemento(), Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ("tres|dos|uno|cuatro", Valores());
  EXPECT_EQ("MODIFICADO", Marca());
  Visor()->setFocus();
  QTest::keyClick(Visor(), Qt::Key_Down);
  QTest::keyClick(Visor(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ("tres|dos|cuatro|uno", Valores());
  QTest::keyClick(Visor(), Qt::Key_Up);
  QTest::keyClick(Visor(), Qt::Key_Delete);
  EXPECT_EQ("tres|cuatro|uno", Valores());
  Elemento()->selectAll();
  Anadir("UNO");
  EXPECT_EQ("tres|cuatro|UNO", Valores());

  // Escape deja la fila que se corrige; la que se quita deja de corregirse.
  Senalar(1);
  QTest::keyClick(Elemento(), Qt::Key_Escape);
  EXPECT_TRUE(tablas_->isVisible());
  EXPECT_EQ("", Elemento()->text());
  Senalar(1);
  Pulsar("cmdQuitar");
  Anadir("cinco");
  EXPECT_EQ("cuatro|UNO|cinco", Valores());
  // Lo que se quita es lo que se ve señalado, sea o no la fila actual.
  Visor()->selectionModel()->select(Visor()->model()->index(1, 0),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  Pulsar("cmdQuitar");
  EXPECT_EQ("cuatro|cinco", Valores());
  Visor()->setFocus();
  for (int i = 0; i < 4; ++i)
    QTest::keyClick(Visor(), Qt::Key_Delete);
  EXPECT_EQ("", Valores());
  Pulsar("cmdAceptar");
  Pulsar("cmdAceptar");
  EXPECT_EQ("|", Valores()) << "dos filas en blanco";
  Pulsar("cmdGrabar");
  EXPECT_EQ("", Leer());
}

TEST_F(Tablas, ElementoSigueSuDescriptor) {
  Abrir("1,00\r\n", "T(N) A(D) L(9)");
  Anadir("1234,5");
  Senalar(1);
  EXPECT_EQ("1.00", Elemento()->text());
  EXPECT_EQ("1,00|1.234,50", Valores());
  EXPECT_EQ("MODIFICADO", Marca());
  Pulsar("cmdGrabar");
  QTest::keyClick(Visor(), Qt::Key_Tab);
  EXPECT_EQ("", Marca()) << "dar formato no es un cambio";
  EXPECT_EQ("1,00\r\n1.234,50\r\n", Leer());
}

TEST_F(Tablas, NiUnValorMuyLargoNiUnFicheroQueNoSeAbreSePierden) {
  const QByteArray largo(40'000, 'x');
  Abrir(largo + "\r\nuno\r\n");
  Senalar(1);
  Elemento()->end(false);
  QTest::keyClick(Elemento(), Qt::Key_Backspace);
  Pulsar("cmdAceptar");
  Pulsar("cmdGrabar");
  EXPECT_EQ(largo.chopped(1) + "\r\nuno\r\n", Leer());

  frmTablas otra;
  otra.PonerRuta(Escribir(QByteArray(1'000'001, 'x')));
  const Cajas cajas{"Cancelar"};
  EXPECT_FALSE(otra.Dimensionar(nullptr, 0, "Valor#40", "T(Z) A(I) L(255)", true));
}

TEST_F(Tablas, SalirYGrabarNoPierdenNada) {
  Abrir("uno\r\n");
  Elemento()->insert("5 → 6");
  Pulsar("cmdAceptar");
  {
    Cajas cajas({"Aceptar", "Cancelar", "Aceptar"});
    Pulsar("cmdGrabar");
    EXPECT_TRUE(cajas.Mensaje(0).startsWith("«→», en la fila 2, no existe en Windows-1252"));
    EXPECT_EQ("uno\r\n", Leer());
    EXPECT_EQ("MODIFICADO", Marca());
    tablas_->close();
    EXPECT_TRUE(tablas_->isVisible());
    EXPECT_EQ("Datos han sido modificados.\n\n¿ Desea salir sin grabar ?", cajas.Mensaje(1));
    EXPECT_EQ("Cancelar", cajas.Vistas()[1].enfocado);
    Pulsar("cmdSalir");
    EXPECT_FALSE(tablas_->isVisible());
  }
  Abrir("uno\r\n");
  QTest::keyClicks(Elemento(), "a medias");
  Pulsar("cmdGrabar");
  EXPECT_TRUE(Hijo<QLabel>("Estado")->text().contains("sin el valor que se está tecleando"));
  EXPECT_EQ("a medias", Elemento()->text());
  QTest::keyClick(Elemento(), Qt::Key_Escape);
  EXPECT_FALSE(tablas_->isVisible());
  EXPECT_EQ("uno\r\n", Leer());
}
