#include <gtest/gtest.h>

#include <QStringEncoder>

#include "Carpeta.h"
#include "RemesasAlAzar.h"
#include "iso20022/Exportacion.h"
#include "iso20022/LectorXml.h"
#include "iso20022/LecturaMensaje.h"

// Con lo que sea, un error o el resultado bueno; nunca a medias.

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

const QString kPrincipio =
    u"<Document xmlns=\"urn:iso:std:iso:20022:tech:xsd:pain.008.001.02\"><CstmrDrctDbtInitn>"_s;
const QString kAdeudo =
    u"<PmtInf><Cdtr><Nm>Ñandú €</Nm></Cdtr><DrctDbtTxInf><PmtId><EndToEndId>R1</EndToEndId></PmtId><InstdAmt "
    "Ccy='EUR'>1.00</InstdAmt></DrctDbtTxInf></PmtInf>"_s;
const QString kFinal = u"</CstmrDrctDbtInitn></Document>"_s;

class XmlHostil : public Carpeta {
 protected:
  /// El nombre del acreedor del único adeudo, o el número del error.
  std::string acreedor(const std::string& bytes) const {
    const auto ruta = escribir("leido.xml", bytes);
    try {
      const auto leido = iso20022::LeerMensaje(ruta);
      EXPECT_EQ(leido.registros.size(), 6U);
      return std::string(remesa::Recortar(remesa::LeerCampo(leido.registros[1], remesa::kNombreAcreedor)));
    } catch (const ficheros::ErrorEjecucion& error) {
      EXPECT_EQ(error.fichero(), ruta);
      return std::to_string(error.numero());
    }
  }
};

}  // namespace

TEST_F(XmlHostil, CortadoEnCadaByte) {
  const std::string entero =
      (u"<?xml version='1.0' encoding='utf-8'?>\n"_s + kPrincipio + kAdeudo + kFinal).toStdString();
  for (std::size_t largo = 0; largo < entero.size(); ++largo)
    ASSERT_EQ(acreedor(entero.substr(0, largo)), "321") << largo;
  EXPECT_EQ(acreedor(entero + " \n<!-- ya está -->\n"),
            "\xD1"
            "and\xFA \x80");
  EXPECT_EQ(acreedor(entero + "<otro/>"), "321");
}

TEST_F(XmlHostil, Codificaciones) {
  const QString mensaje = kPrincipio + kAdeudo + kFinal;
  const auto con = [&](const char* nombre) {
    return u"<?xml version='1.0' encoding='%1'?>"_s.arg(QString::fromLatin1(nombre)) + mensaje;
  };
  const auto en = [](QStringEncoder::Encoding cual, const QString& texto, bool marca) {
    QStringEncoder codificador(cual, marca ? QStringEncoder::Flag::WriteBom : QStringEncoder::Flag::Default);
    const QByteArray bytes = codificador(texto);
    return bytes.toStdString();
  };
  const auto un = [](QString texto, char euro) {
    std::string bytes = texto.replace(u'€', u'@').toLatin1().toStdString();
    std::ranges::replace(bytes, '@', euro);
    return bytes;
  };
  const std::pair<std::string, const char*> casos[] = {
      {mensaje.toStdString(), "bien"},
      {"\xEF\xBB\xBF" + con("UTF-8").toStdString(), "bien"},
      {en(QStringEncoder::Utf16LE, con("UTF-16"), true), "bien"},
      {en(QStringEncoder::Utf16BE, con("utf-16"), true), "bien"},
      {en(QStringEncoder::Utf16LE, con("UTF-16LE"), false), "bien"},
      {en(QStringEncoder::Utf16BE, con("UTF-16"), false), "bien"},
      {un(con("ISO-8859-1"), '\x80'), "bien"},
      {un(con("windows-1252"), '\x80'), "bien"},
      {un(con("iso-8859-15"), '\xA4'), "bien"},
      {un(con("UTF-8"), '\x80'), "321"},
      {un(mensaje, '\x80'), "321"},
      {con("UTF-16").toStdString(), "321"},
      {con("UTF-7").toStdString(), "321"},
      {"\xEF\xBB\xBF" + un(con("ISO-8859-1"), '\x80'), "321"},
      {en(QStringEncoder::Utf16LE, con("UTF-16"), true) + "\x3C", "321"},
      {mensaje.toStdString() + std::string(1, '\0'), "321"},
  };
  for (const auto& [bytes, esperado] : casos)
    EXPECT_EQ(acreedor(bytes), esperado == std::string("bien") ? "\xD1"
                                                                 "and\xFA \x80"
                                                               : esperado)
        << bytes.substr(0, 60);
}

TEST_F(XmlHostil, NiEntidadesNiTextosNiAnidamientosSinFin) {
  const std::string principio = kPrincipio.toStdString(), resto = (kAdeudo + kFinal).toStdString();
  const auto muchas = [](const std::string& que, std::size_t veces) {
    std::string todas;
    while (veces-- > 0)
      todas += que;
    return todas;
  };
  const std::string casos[] = {
      "<!DOCTYPE x [<!ENTITY a \"aaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>" + principio + "<A>&b;</A>" +
          resto,
      "<!DOCTYPE x SYSTEM \"file:///etc/passwd\">" + principio + resto,
      "<?xml version='1.0'?><!--->--><!DOCTYPE x>" + principio + resto,
      principio + "<A>&fichero;</A>" + resto,
      principio + muchas("<A>", 100000),
      principio + "<A>" + std::string(70000, 'x') + "</A>" + resto,
      principio + "<A>" + muchas("<![CDATA[" + std::string(60000, '<') + "]]>", 2) + "</A>" + resto,
      principio + "<!--" + std::string(70000, '<') + "-->" + resto,
      principio + "<A b='" + std::string(70000, '>') + "'/>" + resto,
      principio + "<A b='1' b='2'/>" + resto,
      principio + "<A>]]></A>" + resto,
      principio + "<A></B>" + resto,
      principio + "<A>&#0;</A>" + resto,
      principio + "<A><!- -></A>" + resto,
  };
  for (const std::string& caso : casos)
    EXPECT_EQ(acreedor(caso), "321") << caso.substr(0, 200);
  // Un giga de texto, sin tenerlo en el disco.
  const auto ruta = escribir("giga.xml", principio + "<A>");
  std::filesystem::resize_file(ruta, std::uintmax_t{1} << 30);
  EXPECT_EQ(NumeroError([&] { iso20022::LeerMensaje(ruta); }), 321);
}

// Cada adeudo, de otro acreedor que los de antes y los de después.
TEST_F(XmlHostil, DiezMilGruposRevueltos) {
  constexpr std::size_t kGrupos = 10000;
  Azar azar(1);
  std::string bytes =
      Registro("0119143001",
               {{{11, 45}, "ES08000E77846772"}, {{116, 123}, "20261105"}, {{124, 158}, "PRE1"}}) +
      "\r\n";
  ListaTextos referencias;
  for (std::size_t i = 0; i < 2 * kGrupos; ++i) {
    referencias.push_back("R" + Cifras(i, 8));
    bytes += Registro("0219143002", {{{11, 45}, "ES08000E77846772"},
                                     {{46, 53}, "20261201"},
                                     {{54, 123}, "C" + Cifras(i % kGrupos, 8)},
                                     {{266, 299}, "ES9121000418450200051332"}}) +
             "\r\n" +
             Registro("0319143003", {{{11, 45}, referencias.back()},
                                     {{46, 80}, "M"},
                                     {{81, 84}, "RCUR"},
                                     {{89, 99}, "00000000001"},
                                     {{100, 107}, "20200229"},
                                     {{119, 188}, "ANA"},
                                     {{403, 437}, "AES9121000418450200051332"}}) +
             "\r\n";
  }
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(escribir("remesa.Q19", bytes)));
  iso20022::Exportacion exportacion(std::move(fuentes), {});
  const auto resumen = exportacion.examinar({});
  EXPECT_EQ(resumen->bloques, kGrupos);
  exportacion.escribir(carpeta_ / "salida.xml");
  const auto leido = iso20022::LeerMensaje(carpeta_ / "salida.xml");
  ASSERT_EQ(leido.registros.size(), 4 * kGrupos + 3);
  for (std::size_t i = 0; i < kGrupos; ++i) {
    ASSERT_EQ(remesa::Recortar(remesa::LeerCampo(leido.registros[4 * i + 1], {54, 123})), "C" + Cifras(i, 8));
    ASSERT_EQ(leido.registros[4 * i + 2].substr(10, 9), referencias[i]);
    ASSERT_EQ(leido.registros[4 * i + 3].substr(10, 9), referencias[i + kGrupos]);
  }
}
