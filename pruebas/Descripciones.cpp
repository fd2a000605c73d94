#include "ventanas/editor/Descripciones.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <random>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Campos.h"
#include "remesa/SEPA.h"
#include "ventanas/editor/Ayudas.h"

using namespace editor;

namespace {

const QString kAjustes = QStringLiteral(DIR_PROYECTO "/app/Tarvo.INI");

const struct {
  const char* seccion;
  const char* cabeza;
} kDisenos[] = {{"01", "0119143001"},
                {"02", "0219143002"},
                {"03003", "0319143003"},
                {"03004", "0319143004"},
                {"03005", "0319143005"},
                {"03006", "0319143006"},
                {"04", "04"},
                {"05", "05"},
                {"99", "99"}};

std::vector<QString> leer(const Descripcion& diseno, std::string_view registro) {
  std::vector<QString> valores;
  for (const CampoDescrito& campo : diseno.campos)
    valores.push_back(ValorCampo(registro, campo));
  return valores;
}

std::string IdaYVuelta(const Descripcion& diseno, std::string_view registro) {
  return EscribirRegistro(diseno.campos, leer(diseno, registro));
}

Ayuda ayudaDebida(const remesa::Campo& campo, bool totales) {
  switch (campo.valor) {
    case remesa::ValorCampo::Fecha:
      return Ayuda::Fecha;
    case remesa::ValorCampo::Importe:
      return Ayuda::Euros;
    case remesa::ValorCampo::Cuenta:
      // Una cuenta opcional en blanco es correcta y no pasaría la comprobación.
      return campo.obligatorio ? Ayuda::Iban : Ayuda::Ninguna;
    case remesa::ValorCampo::Numero:
      return totales ? Ayuda::Numero : Ayuda::Ninguna;
    default:
      return Ayuda::Ninguna;
  }
}

}  // namespace

TEST(Descripciones, LosDisenosSonLosDeLaTablaDeCampos) {
  for (const auto& [seccion, cabeza] : kDisenos) {
    EXPECT_EQ(SeccionDe(cabeza, 19), QLatin1String(seccion));
    const Descripcion diseno = LeerDescripcion(kAjustes, seccion);
    const auto tabla = remesa::CamposDe(std::string_view(cabeza));
    EXPECT_FALSE(diseno.titulo.isEmpty()) << seccion;
    ASSERT_EQ(diseno.campos.size(), tabla.size()) << seccion;
    const bool totales = tabla.size() < 8;
    int siguiente = 1;
    for (std::size_t i = 0; i < tabla.size(); ++i) {
      const CampoDescrito& campo = diseno.campos[i];
      const remesa::Campo& norma = tabla[i];
      SCOPED_TRACE(std::string(seccion) + " " + campo.rotulo.toStdString());
      EXPECT_EQ(campo.rotulo.toStdString(), norma.nombre);
      EXPECT_EQ(campo.desde, siguiente);
      EXPECT_EQ(campo.desde, norma.donde.desde);
      EXPECT_EQ(campo.longitud, norma.donde.longitud());
      EXPECT_EQ(campo.opcional, !norma.obligatorio);
      EXPECT_FALSE(campo.explicacion.isEmpty());
      const bool numerico = norma.tipo == remesa::TipoCampo::N;
      EXPECT_EQ(campo.relleno, numerico && norma.obligatorio ? "C" : "I");
      EXPECT_TRUE(campo.descriptor.endsWith(numerico ? "T(D)" : "T(M)"));
      const bool fijo = norma.libre() || norma.valor == remesa::ValorCampo::Codigo ||
                        norma.valor == remesa::ValorCampo::Version ||
                        norma.valor == remesa::ValorCampo::NumeroDato || (totales && numerico);
      EXPECT_EQ(campo.editable, !fijo);
      EXPECT_EQ(campo.ayuda, ayudaDebida(norma, totales));
      siguiente = campo.desde + campo.longitud;
    }
    EXPECT_EQ(siguiente, 601) << seccion;
  }
}

TEST(Descripciones, UnaLineaDeCampoSeLeePorColumnas) {
  const CampoDescrito importe = LeerCampo("Importe;11;89;S;N;C;;EUROS");
  EXPECT_EQ(importe.descriptor, "L(11) A(C) T(D)");
  EXPECT_EQ(importe.posicion, "Desde 89 - Bytes 11");
  EXPECT_TRUE(importe.editable);
  EXPECT_FALSE(importe.opcional);
  EXPECT_EQ(importe.ayuda, Ayuda::Euros);
  EXPECT_EQ(importe.explicacion, "");

  const CampoDescrito raro = LeerCampo("R;x;;N;Z;X;OP;OTRA;notas;explica;sobra");
  EXPECT_EQ(raro.longitud, 0);
  EXPECT_EQ(raro.desde, 0);
  EXPECT_FALSE(raro.editable);
  EXPECT_EQ(raro.descriptor, "");
  EXPECT_TRUE(raro.opcional);
  EXPECT_EQ(raro.ayuda, Ayuda::Ninguna);
  EXPECT_EQ(raro.explicacion, "explica");
  EXPECT_EQ(ValorCampo("0319143003", raro), "");
  EXPECT_EQ(LeerCampo("").rotulo, "");
}

TEST(Descripciones, LaSeccionDependeDelTipoDeFichero) {
  const std::string_view registro = "0319143003123REF";
  EXPECT_EQ(SeccionDe(registro, 19), "03003");
  EXPECT_EQ(SeccionDe(registro, 34), "03123");
  EXPECT_EQ(SeccionDe(registro, 58), "03");
  EXPECT_EQ(SeccionDe("0219143002", 19), "02");
  EXPECT_EQ(SeccionDe("03", 19), "03   ");
  EXPECT_TRUE(LeerDescripcion(kAjustes, "03007").campos.empty());
}

TEST(Descripciones, LeeComoMuchoCincuentaCampos) {
  QTemporaryDir carpeta;
  const QString ruta = carpeta.filePath("a.ini");
  QFile fichero(ruta);
  ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
  fichero.write("[A]\nTitulo=T\nCampos=60\n50=L;1;1\n[B]\nCampos=dos\n[C]\nCampos=-3\n");
  fichero.close();
  EXPECT_EQ(LeerDescripcion(ruta, "A").campos.size(), 50U);
  EXPECT_EQ(LeerDescripcion(ruta, "A").campos[49].longitud, 1);
  EXPECT_EQ(NumeroCampos(ruta, "B"), 0);
  EXPECT_EQ(NumeroCampos(ruta, "C"), 0);
}

TEST(Descripciones, ElTextoSeReduceASEPAYSeRellena) {
  const auto campo = [](const char* relleno, int longitud) {
    CampoDescrito c;
    c.relleno = relleno;
    c.longitud = longitud;
    return c;
  };
  const struct {
    const char* relleno;
    int longitud;
    const char* texto;
    const char* bytes;
  } casos[] = {
      {"I", 6, "AB", "AB    "},
      {"I", 3, "ABCDE", "ABC"},
      {"D", 6, "AB", "    AB"},
      {"D", 3, "ABCDE", "CDE"},
      {"C", 6, "42", "000042"},
      {"C", 3, "12345", "345"},
      {"X", 6, "AB", "AB"},
      {"X", 1, "ABC", "ABC"},
      {"I", 0, "AB", ""},
      {"C", 3, "", "000"},
      {"I", 8, "José Ñçñ", "Jos0 Ncn"},
      {"I", 5, "Jose\u0301", "Jos0 "},     // compuesto antes de reducir
      {"I", 5, "a\U0001F600b?", "a0b? "},  // fuera de Windows-1252: un solo "0", que no "?"
      {"C", 4, "\u0141\u20AC", "0000"},
  };
  for (const auto& caso : casos)
    EXPECT_EQ(BytesCampo(campo(caso.relleno, caso.longitud), caso.texto), caso.bytes) << caso.texto;
}

TEST(Descripciones, LosCamposConHuecosSeCorrenALaIzquierda) {
  const std::vector campos{LeerCampo("A;2;1;S;A;I"), LeerCampo("B;3;5;S;A;I")};
  const std::vector<QString> textos{ValorCampo("ab..cde", campos[0]), ValorCampo("ab..cde", campos[1])};
  EXPECT_EQ(EscribirRegistro(campos, textos), "abcde");
}

// Con cualquier byte, lo que no se toca solo cambia por la reducción; lo que ya es de SEPA no cambia.
TEST(Descripciones, LeerYEscribirConservaElRegistro) {
  std::mt19937 azar(19143);
  std::uniform_int_distribution<int> byte(0, 255);
  for (const auto& [seccion, cabeza] : kDisenos) {
    const Descripcion diseno = LeerDescripcion(kAjustes, seccion);
    for (int vez = 0; vez < 40; ++vez) {
      std::string registro(remesa::kLongitudRegistro, ' ');
      for (char& c : registro)
        c = static_cast<char>(byte(azar));
      const std::string reducido = remesa::TextoSEPA(registro);
      ASSERT_EQ(IdaYVuelta(diseno, registro), reducido) << seccion;
      ASSERT_EQ(IdaYVuelta(diseno, reducido), reducido) << seccion;
    }
    EXPECT_EQ(IdaYVuelta(diseno, "01corto"), "01corto" + std::string(593, ' '));
    EXPECT_EQ(IdaYVuelta(diseno, std::string(700, 'A')), std::string(600, 'A'));
  }
}

class Ayudas : public testing::Test {
 protected:
  Ayudas() {
    comunes::PonerFechaActual(QDate(2026, 3, 5));
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
  }
  ~Ayudas() override {
    comunes::PonerFechaActual({});
    comunes::PonerLocaleUsuario({});
  }
};

TEST_F(Ayudas, ComprobacionYValorInterpretado) {
  const struct {
    Ayuda ayuda;
    const char* texto;
    bool correcto;
    const char* visto;
  } casos[] = {
      {Ayuda::Fecha, "20260315", true, "15/03/2026"},
      {Ayuda::Fecha, "20091031", true, "31/10/2009"},
      {Ayuda::Fecha, "20261305", false, ""},
      {Ayuda::Fecha, "20260230", false, ""},
      {Ayuda::Fecha, "20270101", true, "01/01/2027"},
      {Ayuda::Fecha, "20280101", false, ""},
      {Ayuda::Fecha, "202603", false, ""},
      {Ayuda::Fecha, "00000000", false, ""},
      {Ayuda::Fecha, "", false, ""},
      {Ayuda::Iban, "ES9121000418450200051332", true, "IBAN ES91 2100 0418 4502 0005 1332"},
      {Ayuda::Iban, "ES9121000418450200051332          ", true, "IBAN ES91 2100 0418 4502 0005 1332"},
      {Ayuda::Iban, "ES9121000418450200051333", false, "IBAN ES91 2100 0418 4502 0005 1333"},
      {Ayuda::Iban, "MT84MALT011000012345MTLCAST001S", false, "IBAN MT84 MALT 0110 0001 2345 MTLC AST0 01S"},
      {Ayuda::Iban, "", false, ""},
      {Ayuda::Euros, "00000123450", true, "1.234,50"},
      {Ayuda::Euros, "99999999999999999", true, "999.999.999.999.999,99"},
      {Ayuda::Euros, "00000000000", false, "0,00"},
      {Ayuda::Euros, "AB", false, "0,00"},
      {Ayuda::Numero, "0000012345", true, "12.345"},
      {Ayuda::Numero, "", true, "0"},
      {Ayuda::Ninguna, "X", true, ""},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(DatoCorrecto(caso.ayuda, caso.texto), caso.correcto) << caso.texto;
    EXPECT_EQ(Interpretar(caso.ayuda, caso.texto).toStdString(), caso.visto) << caso.texto;
  }
}

TEST_F(Ayudas, RespuestasEnLaFormaDelRegistro) {
  const struct {
    Ayuda ayuda;
    int longitud;
    const char* respuesta;
    std::optional<QString> valor;
  } casos[] = {
      {Ayuda::Euros, 11, "1234.50", "00000123450"},
      {Ayuda::Euros, 3, "1234.50", "450"},
      {Ayuda::Numero, 8, " 42 ", "00000042"},
      {Ayuda::Iban, 34, "IBAN ES91 2100 0418 4502 0005 1332", "ES9121000418450200051332"},
      {Ayuda::Iban, 34, "ES91 2100", "ES912100"},
      {Ayuda::Fecha, 8, "15/03/2026", "20260315"},
      {Ayuda::Fecha, 8, "31/02/2026", std::nullopt},
      {Ayuda::Euros, 11, "", std::nullopt},
  };
  for (const auto& caso : casos)
    EXPECT_EQ(ConvertirRespuesta(caso.ayuda, caso.longitud, caso.respuesta), caso.valor) << caso.respuesta;
  EXPECT_EQ(DescriptorPeticion(Ayuda::Euros, 11), "T(n) A(D) L(11)");
  EXPECT_EQ(DescriptorPeticion(Ayuda::Iban, 34), "T(M) A(I) L(34)");
  EXPECT_EQ(DescriptorPeticion(Ayuda::Numero, 8), "T(D) A(D) L(8)");
  EXPECT_EQ(DescriptorPeticion(Ayuda::Fecha, 8), "T(F) A(D) L(10)");
}
