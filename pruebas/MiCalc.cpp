// La calculadora por su ventana: lo que se teclea, lo que se ve, la cinta y lo que se copia. Lo que calcula,
// en Sumadora.

#include "comunes/herramientas/MiCalc.h"

#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QtTest>

#include "pruebas/Cajas.h"
#include "pruebas/EnEspana.h"

using herramientas::MiCalc;

namespace {

class Calculadora : public testing::Test {
 protected:
  Calculadora() { Abrir(); }

  void Abrir() {
    calc_ = std::make_unique<MiCalc>();
    calc_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(calc_.get()));
  }
  /// "\r" es Intro; todo por el teclado numérico.
  void Teclear(const QString& teclas) {
    for (const QChar c : teclas) {
      if (c == u'\r')
        QTest::keyClick(Foco(), Qt::Key_Enter, Qt::KeypadModifier);
      else
        QTest::keyClick(Foco(), c.toLatin1(), Qt::KeypadModifier);
    }
  }
  QWidget* Foco() const { return calc_->focusWidget() ? calc_->focusWidget() : calc_.get(); }
  template <typename Control>
  Control* Hijo(const char* nombre) const {
    return calc_->findChild<Control*>(nombre);
  }
  QString Texto(const char* nombre) const { return Hijo<QLabel>(nombre)->text(); }
  QString Cinta() const { return Hijo<QPlainTextEdit>("Cinta")->toPlainText().simplified(); }
  void Pulsar(const char* nombre) { QTest::mouseClick(Hijo<QPushButton>(nombre), Qt::LeftButton); }

  pruebas::EnEspana espana_;
  std::unique_ptr<MiCalc> calc_;
};

}  // namespace

TEST_F(Calculadora, TodoPorElTecladoNumerico) {
  const struct {
    const char *teclas, *visor, *suma, *aviso, *cinta;
  } casos[] = {
      {"1234,5", "1.234,5", "Suma 0,00 (0 partidas)", "", ""},
      {"100+2000-\r", "-1.900,00", "Suma -1.900,00 (2 partidas)", "", "100,00 + 2.000,00 − -1.900,00 ◊"},
      {"3*4\r+", "12,00", "Suma 12,00 (1 partida)", "", "3,00 × 4,00 = 12,00 R 12,00 +"},
      {"200*21//+", "42,00", "Suma 42,00 (1 partida)", "", "200,00 × 21,00 % 42,00 R 42,00 +"},
      {"9+12**3+", "3,00", "Suma 12,00 (2 partidas)", "", "9,00 + 3,00 +"},
      {"10/0\r", "10,00", "Suma 0,00 (0 partidas)", "No se puede dividir por cero", "10,00 ÷"},
      {"5+3\r", "3", "Suma 5,00 (1 partida)", "Falta + o − tras el número", "5,00 +"},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(c.teclas);
    Abrir();
    Teclear(c.teclas);
    EXPECT_EQ(c.visor, Texto("Visor"));
    EXPECT_EQ(c.suma, Texto("Suma"));
    EXPECT_EQ(c.aviso, Texto("Aviso"));
    EXPECT_EQ(c.cinta, Cinta());
  }
}

TEST_F(Calculadora, BotonesDecimalesYOtroLocale) {
  for (const char* boton : {"tecla1", "tecla00", "teclaDecimal", "tecla5", "teclaSigno", "teclaMas", "tecla8",
                            "tecla9", "teclaRetroceso", "teclaMenos", "teclaSubtotal", "teclaTotal"})
    Pulsar(boton);
  EXPECT_EQ("-100,50 + 8,00 − -108,50 ◊ -108,50 *", Cinta());

  auto* decimales = Hijo<QComboBox>("Decimales");
  QTest::keyClick(decimales, Qt::Key_Down);
  QTest::keyClick(decimales, Qt::Key_Down);
  EXPECT_EQ("Visor", calc_->focusWidget()->objectName());
  Teclear("2/3\r");
  EXPECT_EQ("0,6667", Texto("Visor"));

  comunes::PonerLocaleUsuario(QLocale(QLocale::English, QLocale::UnitedKingdom));
  Abrir();
  EXPECT_EQ(".", Hijo<QPushButton>("teclaDecimal")->text());
  Teclear("1234,5+");
  EXPECT_EQ("1,234.50", Texto("Visor"));
}

TEST_F(Calculadora, CopiaPegaYEmpiezaOtraCinta) {
  QClipboard* portapapeles = QGuiApplication::clipboard();
  Teclear("1234.5+2-\r");
  QTest::keyClick(Foco(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ("1232,50", portapapeles->text());
  Pulsar("cmdCopiarCinta");
  EXPECT_EQ("1.234,50\t+\n2,00\t−\n1.232,50\t◊\n", portapapeles->text());

  const std::pair<const char*, const char*> pegados[] = {
      {"1.234,50", "1.234,5"},
      {"1234.50", "1.234,5"},
      {"-0,05 €", "-0,05"},
      {"1.234", "1.234"},
      {"0,0000005", "0,000001"},
      {"x1", nullptr},
      {"1 2", nullptr},
      {"1000000000000", nullptr},
      {"", nullptr},
      {"-12", "-12"},
      {"99999999999999999999", nullptr},
  };
  for (const auto& [texto, visto] : pegados) {
    Pulsar("teclaBorrar");
    const QString antes = Texto("Visor");
    portapapeles->setText(texto);
    QTest::keyClick(Foco(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(visto ? QString(visto) : antes, Texto("Visor")) << texto;
    EXPECT_EQ(visto == nullptr, !Texto("Aviso").isEmpty()) << texto;
  }

  Cajas cajas({"No", "Si"});
  for (const bool nueva : {false, true}) {
    Pulsar("cmdCintaNueva");
    EXPECT_EQ(nueva, Cinta().isEmpty());
  }
  EXPECT_EQ("Suma 0,00 (0 partidas)", Texto("Suma"));
}
