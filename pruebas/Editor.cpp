#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <random>

#include "comunes/plataforma/IniFiles.h"
#include "pruebas/Cajas.h"
#include "pruebas/EnEspana.h"
#include "remesa/Campos.h"
#include "remesa/SEPA.h"
#include "ventanas/editor/EdiSEPA.h"

namespace {

using namespace Qt::StringLiterals;

using remesa::Posiciones;

const char* const kErroneo =
    "¡ Los datos en este campo son incorrectos.!\n\nSe restaura el dato original del registro.";
const char* const kIban = "ES9121000418450200051332";

// Número de campo en el diseño del adeudo.
enum CampoAdeudo { kReferencia = 4, kImporte = 8, kFecha = 9, kNombre = 11, kCuenta = 20, kConcepto = 22 };
constexpr Posiciones kFechaMandato{100, 107};

/// Registro con todos sus campos rellenos de algo que vale; los opcionales, solo si se pide.
std::string Muestra(std::string_view cabeza, bool opcionales, std::mt19937* azar = nullptr) {
  std::string registro(remesa::kLongitudRegistro, ' ');
  remesa::EscribirCampo(registro, {1, static_cast<int>(cabeza.size())}, cabeza);
  for (const remesa::Campo& campo : remesa::CamposDe(cabeza)) {
    if (campo.donde.hasta <= static_cast<int>(cabeza.size()) || campo.libre()) continue;
    if (!campo.obligatorio && !opcionales) continue;
    const auto ancho = static_cast<std::size_t>(campo.donde.longitud());
    std::string valor(ancho, campo.tipo == remesa::TipoCampo::N ? '7' : 'Q');
    if (campo.valor == remesa::ValorCampo::Fecha) valor = "20091031";
    if (campo.valor == remesa::ValorCampo::Cuenta) valor = kIban;
    if (azar && valor[0] == 'Q') {
      constexpr std::string_view kJuego = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/-?:().,'+ ";
      // El primer carácter no es un blanco: al entrar en un campo se quitan los de los extremos.
      for (std::size_t i = 1; i < ancho; ++i)
        valor[i] = kJuego[(*azar)() % kJuego.size()];
    }
    remesa::EscribirCampo(registro, campo.donde, valor);
  }
  return registro;
}

std::string Adeudo() {
  std::string registro = Muestra("0319143003", false);
  remesa::EscribirCampo(registro, remesa::kImporteAdeudo, "00000123450");
  return registro;
}

class Editor : public testing::Test {
 protected:
  Editor() {
    comunes::RutaAjustes = u"" DIR_PROYECTO u"/app/Tarvo.INI"_s;
    acumulado_.cambiado = [this](int i) { cambiados_.push_back(i); };
    acumulado_.movido = [this](int i) { movidos_.push_back(i); };
    acumulado_.aviso = [this](const QString& frase) { avisos_ << frase; };
  }

  void Abrir(const std::vector<std::string>& registros, int actual = 0) {
    ventana_.reset();
    lista_.clear();
    for (const std::string& registro : registros)
      lista_.anadir(registro);
    acumulado_.actual = actual;
    ventana_ = std::make_unique<editor::EdiSEPA>(acumulado_, 19, nullptr);
    ventana_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(ventana_.get()));
  }
  template <class Control>
  Control* Hijo(const QString& nombre) {
    auto* control = ventana_->findChild<Control*>(nombre);
    EXPECT_NE(control, nullptr) << nombre.toStdString();
    return control;
  }
  QLineEdit* Cpo(int n) { return Hijo<QLineEdit>(u"cpo%1"_s.arg(n)); }
  QString Edi(int n) { return Hijo<QToolButton>(u"edi%1"_s.arg(n))->text(); }
  QLabel* Obs(int n) { return Hijo<QLabel>(u"obs%1"_s.arg(n)); }
  void Pulsar(const char* boton) {
    auto* destino = Hijo<QPushButton>(boton);
    // El ratón se lleva el foco antes de que el botón se entere.
    QTest::mousePress(destino, Qt::LeftButton);
    QTest::mouseRelease(destino, Qt::LeftButton);
    QTest::qWait(1);
  }
  void Tecla(int tecla, Qt::KeyboardModifiers con = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(tecla), con);
    QTest::qWait(1);
  }
  /// Entra en el campo y sustituye lo que tiene.
  void Teclear(int campo, const QString& texto) {
    Cpo(campo)->setFocus();
    for (const QChar c : texto)
      QTest::sendKeyEvent(QTest::Click, Cpo(campo), Qt::Key_unknown, QString(c), Qt::NoModifier);
  }
  void EsperarCajas(const Cajas& cajas, std::size_t cuantas) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return cajas.Vistas().size() >= cuantas; }));
    // Sin gestor de ventanas nadie la activa al cerrarse la caja.
    ventana_->activateWindow();
    QTest::qWait(10);
  }
  std::string Registro(std::size_t i = 0) const { return std::string(lista_[i]); }

  pruebas::EnEspana espana_;
  remesa::ListaRegistros lista_;
  std::vector<int> cambiados_;
  std::vector<int> movidos_;
  QStringList avisos_;
  editor::ListaAcumulado acumulado_{lista_, 0, {}, {}, {}};
  std::unique_ptr<editor::EdiSEPA> ventana_;
};

}  // namespace

// Se cierra antes de que la plataforma la active, y el foco le llega cuando ya se está deshaciendo.
TEST_F(Editor, SePuedeCerrarNadaMasAbrirse) {
  lista_.anadir(Adeudo());
  for (int vez = 0; vez < 20; ++vez) {
    QTimer::singleShot(1, [] { QApplication::activeModalWidget()->close(); });
    EXPECT_FALSE(editor::EditarSEPA(acumulado_, 19, nullptr));
  }
  EXPECT_EQ(Registro(), Adeudo());
}

TEST_F(Editor, RecorrerTodosLosCamposNoCambiaElRegistro) {
  std::mt19937 azar(1914);
  // Un campo de cifras en blanco no queda a ceros por pasar por él.
  std::vector<std::string> registros{Muestra("0119143001", true)};
  remesa::EscribirCampo(registros[0], {159, 166}, "        ");
  for (const char* cabeza :
       {"0119143001", "0219143002", "0319143003", "0319143004", "0319143005", "0319143006", "04", "05", "99"})
    for (const bool opcionales : {false, true})
      registros.push_back(Muestra(cabeza, opcionales));
  for (int i = 0; i < 5; ++i)
    registros.push_back(Muestra("0319143003", true, &azar));
  for (const std::string& registro : registros) {
    SCOPED_TRACE(registro.substr(0, 10));
    Abrir({registro});
    int visitados = 0;
    while (qobject_cast<QLineEdit*>(QApplication::focusWidget()) && visitados++ < 60) {
      QWidget* foco = QApplication::focusWidget();
      const QRect visto = foco->visibleRegion().boundingRect();
      EXPECT_EQ(visto.height(), foco->height()) << "no se ve " << foco->objectName().toStdString();
      Tecla(Qt::Key_Tab);
    }
    int usables = 0;
    for (auto* caja : ventana_->findChildren<QLineEdit*>())
      usables += caja->isVisible() && caja->isEnabled() ? 1 : 0;
    EXPECT_EQ(visitados, usables);
    Pulsar("cmdAceptar");
    EXPECT_FALSE(ventana_->isVisible());
    EXPECT_TRUE(ventana_->Sustituido());
    EXPECT_EQ(Registro(), registro);
  }
  EXPECT_TRUE(avisos_.isEmpty());
}

TEST_F(Editor, LoTecleadoLlegaASuSitioYNadaMasCambia) {
  std::string esperado = Adeudo();
  Abrir({Adeudo(), esperado}, 1);
  EXPECT_EQ(ventana_->windowTitle(), "Edición del registro 2 de 2");
  EXPECT_TRUE(Cpo(kReferencia)->hasFocus());
  EXPECT_EQ(Hijo<QLabel>("Ayuda")->text().left(12), "Identifica e");
  EXPECT_EQ(Hijo<QLabel>("eti8")->toolTip(), "Desde 89 - Bytes 11");
  EXPECT_EQ(Cpo(kImporte)->accessibleName(), "Importe del adeudo");
  EXPECT_EQ(Cpo(kReferencia)->accessibleDescription(), Hijo<QLabel>("Ayuda")->text());

  Teclear(kImporte, "98,76x5");
  Teclear(kFecha, "20260105");
  QTest::qWait(1);
  EXPECT_EQ(Edi(kImporte), "987,65");
  Teclear(kNombre, "josé peña & q\u0301");
  Teclear(kCuenta, "es7620770024003102575766");
  Tecla(Qt::Key_Return);
  EXPECT_TRUE(Cpo(kCuenta + 1)->hasFocus());
  EXPECT_EQ(Edi(kCuenta), "IBAN ES76 2077 0024 0031 0257 5766");
  EXPECT_TRUE(Obs(kNombre)->isVisible());
  EXPECT_EQ(Obs(kNombre)->text(), "En el registro quedará «JOS0 PENA 0 Q0».");
  Teclear(kNombre + 1, "cerámicas güejar, nº 3");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Obs(kNombre + 1)->text(), "En el registro quedará «CER0MICAS G0EJAR, N0 3».");
  Pulsar("quitar12");
  EXPECT_EQ(Cpo(kNombre + 1)->text(), "CERAMICAS GUEJAR, NO 3");
  EXPECT_FALSE(Obs(kNombre + 1)->isVisible() || Hijo<QPushButton>("quitar12")->isVisible());
  Pulsar("cmdAceptar");

  remesa::EscribirCampo(esperado, remesa::kImporteAdeudo, "00000098765");
  remesa::EscribirCampo(esperado, kFechaMandato, "20260105");
  remesa::EscribirCampo(esperado, remesa::kNombreDeudor, "JOS0 PENA 0 Q0" + std::string(56, ' '));
  remesa::EscribirCampo(esperado, {189, 210}, "CERAMICAS GUEJAR, NO 3");
  remesa::EscribirCampo(esperado, remesa::kCuentaDeudor, "ES7620770024003102575766");
  EXPECT_EQ(Registro(1), esperado);
  EXPECT_EQ(Registro(0), Adeudo());
  EXPECT_EQ(cambiados_, std::vector{1});
}

TEST_F(Editor, UnDatoErroneoSeDiceYSeRestaura) {
  const std::tuple<int, const char*, const char*> casos[] = {
      {kImporte, "0", "Se rechazó «00000000000»: el importe no puede ser cero."},
      {kImporte, " ", "Se rechazó dejarlo en blanco."},
      {kFecha, "20261305", "Se rechazó «20261305»: el mes 13 no existe."},
      {kFecha, "20260230", "Se rechazó «20260230»: ese día no existe."},
      {kFecha, "20280101", "Se rechazó «20280101»: el año no puede pasar de 2027."},
      {kCuenta, "ES9121000418450200051333",
       "Se rechazó «ES9121000418450200051333»: no cumple sus dígitos de control."},
      {kCuenta, "DE893704", "Se rechazó «DE893704»: tiene 8 caracteres y se comprueban cuentas de 24."}};
  for (const auto& [campo, tecleado, motivo] : casos) {
    SCOPED_TRACE(tecleado);
    Abrir({Adeudo()});
    const QString original = Cpo(campo)->text();
    const QString visto = Edi(campo);
    Cajas cajas{"Aceptar"};
    Teclear(campo, tecleado);
    if (tecleado[0] == ' ') Cpo(campo)->clear();
    QCoreApplication::sendPostedEvents();  // el Tab de la caja que se llena
    if (Cpo(campo)->hasFocus()) Tecla(Qt::Key_Tab);
    EsperarCajas(cajas, 1);
    EXPECT_EQ(cajas.Mensaje(0).toStdString(), kErroneo);
    EXPECT_EQ(Cpo(campo)->text(), original);
    EXPECT_EQ(Edi(campo), visto);
    EXPECT_EQ(Obs(campo)->text(), motivo);
    EXPECT_TRUE(Cpo(campo + 1)->hasFocus());
  }
}

TEST_F(Editor, AceptarCompruebaAntesYSalirNo) {
  for (const bool conRaton : {true, false}) {
    Abrir({Adeudo()});
    Cajas cajas{"Aceptar"};
    Teclear(kImporte, "0");
    conRaton ? Pulsar("cmdAceptar") : Tecla(Qt::Key_A, Qt::AltModifier);
    EsperarCajas(cajas, 1);
    EXPECT_TRUE(ventana_->isVisible());
    EXPECT_EQ(Cpo(kImporte)->text(), "00000123450");
    Pulsar("cmdAceptar");
    EXPECT_FALSE(ventana_->isVisible());
    EXPECT_EQ(Registro(), Adeudo());
  }
  // Un dato que ya venía mal se dice una vez, y no impide aceptar ni se achaca al registro siguiente.
  std::string ajeno = Adeudo();
  remesa::EscribirCampo(ajeno, remesa::kCuentaDeudor, "PT50000201231234567890154");
  for (const bool acepta : {true, false}) {
    Abrir({ajeno, Adeudo()});
    Cajas cajas{"Aceptar"};
    Cpo(kCuenta)->setFocus();
    acepta ? Tecla(Qt::Key_A, Qt::AltModifier) : Tecla(Qt::Key_PageDown, Qt::ControlModifier);
    EsperarCajas(cajas, 1);
    QTest::qWait(30);
    EXPECT_EQ(ventana_->isVisible(), !acepta);
    EXPECT_EQ(Registro(), ajeno);
  }
  cambiados_.clear();
  const std::function<void()> salidas[] = {[&] { Pulsar("cmdSalir"); }, [&] { Tecla(Qt::Key_Escape); },
                                           [&] { ventana_->close(); }};
  for (const auto& salir : salidas) {
    Abrir({Adeudo()});
    Cajas ninguna;
    Teclear(kImporte, "0");
    salir();
    EXPECT_FALSE(ventana_->isVisible() || ventana_->Sustituido());
    QTest::qWait(20);
  }
  EXPECT_TRUE(cambiados_.empty());
  EXPECT_EQ(avisos_.size(), 3);
}

TEST_F(Editor, PasarDeRegistroDejaLoNoAceptado) {
  const std::string otro = Muestra("0319143004", true);
  Abrir({Adeudo(), Adeudo(), otro}, 1);
  Teclear(kImporte, "5");
  Teclear(kNombre, "OTRO");
  Tecla(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(acumulado_.actual, 2);
  EXPECT_EQ(Hijo<QLabel>("cpo0")->text(), "Adeudo individual: último acreedor y titular de la domiciliación");
  EXPECT_EQ(Hijo<QLabel>("Perdidos")->text(),
            "Registro 2: los cambios en «Importe del adeudo» y otro campo no se aceptaron.");
  EXPECT_TRUE(avisos_.isEmpty()) << "aún se pueden recuperar";
  EXPECT_FALSE(Cpo(15)->isVisible());
  EXPECT_FALSE(Hijo<QToolButton>("edi8")->isVisible());

  // En el último y en el primero, solo va al primer campo que se puede usar.
  Cpo(11)->setFocus();
  Pulsar("cmdSiguiente");
  EXPECT_EQ(acumulado_.actual, 2);
  EXPECT_TRUE(Cpo(kReferencia)->hasFocus());
  Pulsar("cmdAnterior");
  Pulsar("cmdAnterior");
  EXPECT_EQ(Cpo(kImporte)->text(), "00000123450");
  EXPECT_TRUE(Cpo(15)->isVisible());
  Tecla(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(acumulado_.actual, 0);
  EXPECT_TRUE(Cpo(kReferencia)->hasFocus());
  EXPECT_EQ(movidos_, (std::vector{2, 1, 0}));
  EXPECT_TRUE(cambiados_.empty());

  // Con un campo erróneo se dice y se pasa igual.
  Cajas cajas{"Aceptar"};
  Teclear(kImporte, "0");
  Pulsar("cmdSiguiente");
  EsperarCajas(cajas, 1);
  EXPECT_EQ(acumulado_.actual, 1);
  Pulsar("cmdSalir");
  EXPECT_EQ(avisos_,
            QStringList{"Registro 2: los cambios en «Importe del adeudo» y otro campo no se aceptaron y se "
                        "han perdido."});
}

TEST_F(Editor, LoNoAceptadoSeRecupera) {
  Abrir({Adeudo(), Adeudo()});
  Teclear(kImporte, "5");
  Tecla(Qt::Key_PageDown, Qt::ControlModifier);
  Teclear(kNombre, "OTRO");
  Tecla(Qt::Key_R, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return acumulado_.actual == 0; }));
  EXPECT_EQ(Cpo(kImporte)->text(), "00000000005");
  EXPECT_EQ(Hijo<QLabel>("Perdidos")->text(),
            "Registro 2: los cambios en «Nombre del deudor» no se aceptaron.");
  Pulsar("Recuperar");
  EXPECT_EQ(Cpo(kNombre)->text(), "OTRO");
  Pulsar("Recuperar");
  Pulsar("cmdAceptar");
  std::string esperado = Adeudo();
  remesa::EscribirCampo(esperado, remesa::kImporteAdeudo, "00000000005");
  EXPECT_EQ(Registro(), esperado);
  EXPECT_EQ(avisos_.join(u' '),
            "Registro 2: los cambios en «Nombre del deudor» no se aceptaron y se han perdido.")
      << "de lo aceptado no se dice nada";
}

TEST_F(Editor, LaAyudaPideElValor) {
  const std::tuple<int, const char*, const char*, const char*> casos[] = {
      {kImporte, "1234,5", "00000123450", "1.234,50"},
      {kFecha, "31/12/2025", "20251231", "31/12/2025"},
      {kCuenta, "IBAN ES91 2100 0418 4502 0005 1332", kIban, "IBAN ES91 2100 0418 4502 0005 1332"}};
  for (const auto& [campo, respuesta, valor, visto] : casos) {
    for (const bool conF4 : {true, false}) {
      SCOPED_TRACE(respuesta);
      Abrir({Adeudo()});
      Cajas cajas;
      cajas.Hacer([texto = respuesta](comunes::MyBox& caja) {
        QTest::keyClicks(caja.findChild<QLineEdit*>("CampoTexto"), texto);
        Cajas::Pulsar(caja, "Aceptar");
      });
      if (conF4) {
        Cpo(campo)->setFocus();
        Tecla(Qt::Key_F4);
      } else {
        QTest::mouseClick(Hijo<QToolButton>(u"edi%1"_s.arg(campo)), Qt::LeftButton);
      }
      EsperarCajas(cajas, 1);
      EXPECT_EQ(cajas.Mensaje(0), Hijo<QLabel>(u"eti%1"_s.arg(campo))->text());
      EXPECT_EQ(Cpo(campo)->text(), valor);
      // La ventana tarda en recuperar la activación tras la caja.
      EXPECT_TRUE(QTest::qWaitFor([&, siguiente = campo + 1] { return Cpo(siguiente)->hasFocus(); }));
      EXPECT_EQ(Edi(campo), visto);
    }
  }
}

// Un importe o una fecha mal escritos no se convierten en otros sin decirlo.
TEST_F(Editor, LaAyudaDiceLoQueSeraYPorQueNoVale) {
  const struct {
    int campo;
    const char *actual, *tecleado, *resultado, *motivo, *tras;
  } casos[] = {{kImporte, "1234.50", "1.234,56", "= 1,23 €",
                "Ya tiene 2 decimales. Los miles se escriben sin punto.", ""},
               {kImporte, "1234.50", "12345678901", "",
                "«12345678901» no cabe: el importe mayor es 999.999.999,99 €.", "12345678901"},
               {kFecha, "31/10/2009", "31/02/2026", "", "La fecha «31/02/2026» no existe.", ""},
               {kFecha, "31/10/2009", "5/3/2030", "",
                "La fecha «5/3/2030» no vale: el año no puede pasar de 2027.", "5/3/2030"}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.tecleado);
    Abrir({Adeudo()});
    const QString antes = Cpo(caso.campo)->text();
    Cajas cajas;
    cajas.Hacer([&](comunes::MyBox& caja) {
      auto* campo = caja.findChild<QLineEdit*>("CampoTexto");
      const auto dice = [&](const char* etiqueta) {
        return caja.findChild<QLabel*>(QLatin1String(etiqueta))->text();
      };
      EXPECT_TRUE(QTest::qWaitFor([&] { return campo->hasFocus(); }));
      EXPECT_EQ(campo->text(), caso.actual);
      EXPECT_FALSE(dice("Ejemplo").isEmpty());
      QTest::keyClicks(campo, caso.tecleado);
      EXPECT_EQ(dice("Resultado"), caso.resultado);
      const bool rechazaTecla = dice("Motivo") == caso.motivo;
      if (!rechazaTecla) {
        Cajas::Pulsar(caja, "Aceptar");
        EXPECT_TRUE(caja.isVisible()) << "se vuelve a pedir";
        EXPECT_EQ(campo->text(), caso.tras);
      }
      EXPECT_EQ(dice("Motivo"), caso.motivo);
      Cajas::Pulsar(caja, "Cancelar");
    });
    Cpo(caso.campo)->setFocus();
    Tecla(Qt::Key_F4);
    EsperarCajas(cajas, 1);
    EXPECT_EQ(Cpo(caso.campo)->text(), antes);
  }
}

TEST_F(Editor, UnTipoSinDescripcionSeDice) {
  Abrir({"0319143007X", Muestra("99", false)});
  EXPECT_TRUE(Hijo<QLabel>("Aviso")->isVisible());
  EXPECT_TRUE(Hijo<QLabel>("Aviso")->text().contains("«03007»"));
  EXPECT_FALSE(Cpo(1)->isVisible());
  Pulsar("cmdSiguiente");
  EXPECT_FALSE(Hijo<QLabel>("Aviso")->isVisible());
  EXPECT_EQ(Edi(2), "777.777.777.777.777,77");
  Pulsar("cmdAnterior");
  Pulsar("cmdAceptar");
  EXPECT_EQ(Registro(), "");
  EXPECT_TRUE(avisos_.isEmpty());
}

TEST_F(Editor, UnaDescripcionAjenaAvisaDeLaLongitud) {
  QTemporaryDir carpeta;
  comunes::RutaAjustes = carpeta.filePath("Tarvo.INI");
  const auto escribir = [](const char* campos) {
    QFile fichero(comunes::RutaAjustes);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write("[04]\nTitulo=T\nCampos=");
    fichero.write(campos);
    fichero.write("\n1=<b>A&B</b>;2;1;N;N;C\n2=Libre;598;3;S;Z;X;OP;;;a\n3=C;0;1;S;A;I\n");
  };
  escribir("2");
  Abrir({"04"});
  EXPECT_EQ(Hijo<QLabel>("eti1")->text(), "<b>A&B</b>");
  EXPECT_EQ(Hijo<QLabel>("opc2")->text(), "OP");
  Cajas cajas{"Aceptar"};
  Teclear(2, "aé");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Obs(2)->text(),
            "En el registro quedará «a0». Ocupa 2 posiciones y no 598: el registro quedará más corto.");
  // Si la descripción cambia mientras tanto, los campos ya no son los que se ven.
  escribir("3");
  Pulsar("cmdAceptar");
  EXPECT_TRUE(ventana_->isVisible());
  EXPECT_EQ(Registro(), "04");
  escribir("2");
  Pulsar("cmdAceptar");
  EXPECT_EQ(Registro(), "04a0");

  // Sin clase ni relleno, lo que se teclee puede pasar de la longitud del campo.
  escribir("2\n1=T;2;1;N;N;C\n2=Libre;3;3;S;Z;X");
  Abrir({"04abc"});
  Teclear(2, "abcde");
  EXPECT_TRUE(Cpo(2)->hasFocus());
  Pulsar("cmdAceptar");
  EXPECT_EQ(Registro(), "04abcde");
}
