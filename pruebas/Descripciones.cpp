#include "ventanas/editor/Descripciones.h"

#include <gtest/gtest.h>

#include "comunes/plataforma/IniFiles.h"
#include "pruebas/EnEspana.h"
#include "remesa/Campos.h"
#include "ventanas/editor/Ayudas.h"

using namespace editor;

namespace {

using namespace Qt::StringLiterals;

const QString kAjustes = u"" DIR_PROYECTO u"/app/Tarvo.INI"_s;

constexpr std::pair<const char*, const char*> kDisenos[] = {{"01", "0119143001"},
                                                            {"02", "0219143002"},
                                                            {"03003", "0319143003"},
                                                            {"03004", "0319143004"},
                                                            {"03005", "0319143005"},
                                                            {"03006", "0319143006"},
                                                            {"04", "04"},
                                                            {"05", "05"},
                                                            {"99", "99"},
                                                            {"11", "1119143001"},
                                                            {"12", "1219143002"},
                                                            {"13", "1319143003"},
                                                            {"14", "14"},
                                                            {"15", "15"},
                                                            {"21", "2119143001"},
                                                            {"22", "2219143002"},
                                                            {"23", "2319143003"},
                                                            {"24", "24"},
                                                            {"25", "25"}};

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
      EXPECT_EQ(norma.nombre.find_first_of("\"\\"), std::string_view::npos) << "en JSON va sin escapes";
      EXPECT_EQ(campo.desde, siguiente);
      EXPECT_EQ(campo.desde, norma.donde.desde);
      EXPECT_EQ(campo.longitud, norma.donde.longitud());
      EXPECT_EQ(campo.opcional, !norma.obligatorio);
      EXPECT_FALSE(campo.explicacion.isEmpty());
      const bool numerico = norma.tipo == remesa::TipoCampo::N;
      EXPECT_EQ(campo.relleno, numerico && norma.obligatorio ? "C" : "I");
      EXPECT_TRUE(campo.descriptor.endsWith(numerico ? "T(D)" : "T(M)"));
      const bool deRetorno = seccion[0] == '1' || seccion[0] == '2';  // solo se miran
      const bool fijo = deRetorno || norma.libre() || norma.valor == remesa::ValorCampo::Codigo ||
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
  EXPECT_FALSE(importe.opcional);
  EXPECT_EQ(importe.explicacion, "");

  const CampoDescrito raro = LeerCampo("R;x;-9e9;N;Z;X;OP;OTRA;notas;explica;sobra");
  EXPECT_EQ(raro.longitud + raro.desde, 0);
  EXPECT_EQ(raro.descriptor, "");
  EXPECT_TRUE(raro.opcional);
  EXPECT_EQ(raro.ayuda, Ayuda::Ninguna);
  EXPECT_EQ(raro.explicacion, "explica");
  EXPECT_EQ(ValorCampo("0319143003", raro), "");
  // Los huecos entre campos corren a la izquierda los que siguen.
  const CampoDescrito campos[] = {LeerCampo("A;2;1;S;A;I"), LeerCampo("B;3;5;S;A;I")};
  EXPECT_EQ(EscribirRegistro(campos, std::vector<QString>{"ab", "cde"}), "abcde");
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

TEST(Descripciones, ElTextoSeReduceASEPAYSeRellena) {
  // Relleno, longitud, texto y bytes. El texto se compone antes de reducirlo, y lo que Windows-1252 no tiene
  // es un solo "0".
  for (const char* caso :
       {"I|6|AB|AB    ", "I|3|ABCDE|ABC", "D|6|AB|    AB", "D|3|ABCDE|CDE", "C|6|42|000042", "C|3|12345|345",
        "X|6|AB|AB", "X|1|ABC|ABC", "I|0|AB|", "C|3||000", "I|8|José Ñçñ|Jos0 Ncn", "I|5|Jose\u0301|Jos0 ",
        "I|5|a\U0001F600b?|a0b? ", "C|4|\u0141\u20AC|0000"}) {
    const QStringList c = QString::fromUtf8(caso).split('|');
    CampoDescrito campo;
    campo.relleno = c[0];
    campo.longitud = c[1].toInt();
    EXPECT_EQ(BytesCampo(campo, c[2]), c[3].toStdString()) << caso;
  }
}

class Ayudas : public testing::Test {
  pruebas::EnEspana espana_;
};

TEST_F(Ayudas, ComprobacionYValorInterpretado) {
  // Texto, si vale y cómo se ve.
  const std::pair<Ayuda, std::vector<const char*>> casos[] = {
      {Ayuda::Fecha,
       {"20260315|si|15/03/2026", "20270101|si|01/01/2027", "20280101|no|", "20261305|no|", "20260230|no|",
        "00000000|no|", "|no|"}},
      {Ayuda::Iban,
       {"ES9121000418450200051332          |si|IBAN ES91 2100 0418 4502 0005 1332",
        "ES9121000418450200051333|no|IBAN ES91 2100 0418 4502 0005 1333",
        "MT84MALT011000012345MTLCAST001S|no|IBAN MT84 MALT 0110 0001 2345 MTLC AST0 01S", "|no|"}},
      {Ayuda::Euros,
       {"00000123450|si|1.234,50", "99999999999999999|si|999.999.999.999.999,99", "00000000000|no|0,00"}},
      {Ayuda::Numero, {"0000012345|si|12.345", "|si|0"}},
      {Ayuda::Ninguna, {"X|si|"}}};
  for (const auto& [ayuda, textos] : casos)
    for (const char* caso : textos) {
      const QStringList c = QString(caso).split('|');
      EXPECT_EQ(DatoCorrecto(ayuda, c[0]), c[1] == "si") << caso;
      EXPECT_EQ(Interpretar(ayuda, c[0]).toStdString(), c[2].toStdString()) << caso;
    }
}

TEST_F(Ayudas, RespuestasEnLaFormaDelRegistro) {
  const struct {
    Ayuda ayuda;
    int longitud;
    const char* respuesta;
    std::optional<QString> valor;
  } casos[] = {{Ayuda::Euros, 11, "1234.50", "00000123450"},
               {Ayuda::Euros, 3, "1234.50", "450"},
               {Ayuda::Numero, 8, " 42 ", "00000042"},
               {Ayuda::Iban, 34, "IBAN ES91 2100 0418 4502 0005 1332", "ES9121000418450200051332"},
               {Ayuda::Fecha, 8, "31/02/2026", std::nullopt},
               {Ayuda::Euros, 11, "", std::nullopt}};
  for (const auto& caso : casos)
    EXPECT_EQ(ConvertirRespuesta(caso.ayuda, caso.longitud, caso.respuesta), caso.valor) << caso.respuesta;
}
