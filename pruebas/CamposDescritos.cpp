// Descriptores, formatos, identificadores y páginas de códigos.

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>

#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Filtro.h"
#include "comunes/campos/Formato.h"
#include "comunes/campos/Identificadores.h"
#include "comunes/campos/WinDos.h"
#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Texto.h"
#include "pruebas/EnEspana.h"

using namespace comunes;

namespace {

/// Recoge los avisos.
class Campos : public testing::Test {
 protected:
  void SetUp() override {
    anterior_ = PonerAvisador([this](GradoAviso grado, const QString& texto, const QString&) {
      EXPECT_EQ(GradoAviso::Critico, grado);
      avisos_ << texto;
    });
  }
  void TearDown() override { PonerAvisador(anterior_); }

  pruebas::EnEspana espana_;
  QStringList avisos_;
  Avisador anterior_;
};

std::string Muestra(QString valor, const QString& descriptor) {
  return FormatValue(valor, descriptor).toStdString();
}

std::string Edita(const QString& valor, const QString& descriptor) {
  return UnformatValue(valor, descriptor).toStdString();
}

/// Lo que entra y lo que sale, con un descriptor: "entra -> sale|entra -> sale".
struct Grupo {
  const char* descriptor;
  const char* casos;
};

template <std::size_t N>
void Comprueba(const Grupo (&grupos)[N],
               const std::function<std::string(const QString& entra, const QString& descriptor)>& f) {
  for (const auto& g : grupos) {
    for (const QString& caso : QString(g.casos).split('|')) {
      const QStringList partes = caso.split(" -> ");
      ASSERT_EQ(2, partes.size()) << g.casos;
      EXPECT_EQ(partes[1].toStdString(), f(partes[0], g.descriptor)) << g.descriptor << " " << g.casos;
    }
  }
}

}  // namespace

TEST_F(Campos, LeeEtiquetas) {
  struct {
    const char *descriptor, *clave, *par;
    std::optional<QString> valor;
  } const casos[] = {
      {"T(n) A(D) L(12)", "L", "", "12"},      {"T(n) A(D) L(12)", "D", "", {}},
      {"A(I)T(M)L(15)", "T", "", "M"},         {"T() A(I) L( 15)", "T", "", ""},
      {"T() A(I) L( 15)", "L", "", " 15"},     {"T(F) A(D) L(10) +[05/03/2026]", "+", "", "05/03/2026"},
      {"T(F) +[1] +(2)", "+", "()", "2"},      {"T(M) L(8) A(I) L(3)", "L", "", "8"},
      {"+[L(4)] T(M) A(I) L(3)", "L", "", "4"}};
  for (const auto& c : casos)
    EXPECT_EQ(c.valor, GetTag(c.descriptor, c.clave, c.par)) << c.descriptor << " " << c.clave;
  EXPECT_TRUE(avisos_.isEmpty());
}

TEST_F(Campos, AvisaDeLasEtiquetasObligatorias) {
  EXPECT_FALSE(GetTag("A(I) L(5)", "T"));
  EXPECT_FALSE(GetTag("t(N) L(5)", "A"));
  Muestra("x", "t(N)");
  EXPECT_EQ((QStringList{" No encontrado dato TAG obligatorio (T) Tipo en A(I) L(5)",
                         " No encontrado dato TAG obligatorio (A) Ajuste en t(N) L(5)",
                         " No encontrado dato TAG obligatorio (T) Tipo en t(N)",
                         " No encontrado dato TAG obligatorio (L) Longitud en t(N)",
                         " No encontrado dato TAG obligatorio (A) Ajuste en t(N)"}),
            avisos_);
}

TEST_F(Campos, EscribeEtiquetas) {
  const QString conFondo = SetTag("T(N) A(D) L(9)", "P", "12648447");
  EXPECT_EQ("T(N) A(D) L(9) P(12648447)", conFondo.toStdString());
  EXPECT_EQ("T(N) A(D) L(9) P(16777215)", SetTag(conFondo, "P", "16777215").toStdString());
  EXPECT_EQ("T(M) L(4) L(3)", SetTag("T(M) L(8) L(3)", "L", "4").toStdString());
  EXPECT_EQ("T(F) +[x]", SetTag("T(F)", "+", "x").toStdString());
}

TEST_F(Campos, Muestra) {
  const Grupo grupos[] = {
      {"T(N) A(D) L(12)", " -> |    -> |1234.5 -> 1.234,50"},
      {"T(N) A(D) L(12) D()", "-1234.005 -> -1.234,01"},
      {"T(N) A(D) L(12)", "-0.001 -> 0,00|abc -> 0,00"},
      {"T(n) A(D) L(12)", "12abc -> 12,00"},
      {"T(n) A(D) L(12) D(0)", "1234.5 -> 1.235"},
      {"T(n) A(D) L(12) D(-1)", "0 -> 0"},
      {"T(n) A(D) L(12) D(3)", ".5 -> 0,500"},
      {"T(n) A(D) L(20)", "12345678901234567.89 -> 12.345.678.901.234.567,89"},
      {"T(D) A(C) L(6)", "  42 -> 000042"},
      {"T(D) A(D) L(6)", "  42 ->     42|42  ->    42 "},
      {"T(D) A(I) L(6)", " 42  -> 42    "},
      {"T(D) A(I) L(3)", "12345 -> 123"},
      {"T(D) A(C) L(3)", "12345 -> 345"},
      {"T(D) A(X) L(6)", "  42 -> "},
      {"T(D) A(C) L(6)", "   -> "},
      {"T(I) A(I) L(34)", " ES91 21000418450200051332 -> ES91 2100 0418 4502 0005 1332|   -> "},
      {"T(F) A(D) L(10)",
       "5/3/26 -> 05 mar 2026|5/ -> 05 mar 2026|5/12 -> 05 dic 2026|5/12/ -> 05 dic 2026|"
       "7 -> 07 mar 2026|17 -> 17 mar 2026"},
      {"T(F) A(D) L(10) +[01/11/2025]", "7 -> 07 nov 2026|7/ -> 07 nov 2026"},
      {"T(F) A(D) L(10)",
       "175 -> |0509 -> 05 sep 2026|050930 -> 05 sep 1930|05092029 -> 05 sep 2029|"
       "29/2/2026 -> |1/2/3/4 -> | -> "},
      {"T(f) A(D) L(5)", "29/2/2024 -> 29 febrero"},
      {"T(H) A(D) L(5)", "9:5 -> 09:05|930 -> 30:00"},
      {"T(X) A(I) L(9)", "12345678? -> 12345678Z"},
      {"T(C) A(I) L(8)", "43.25 -> 43000025"},
      {"T(M) A(I) L(8)", " ab  ->  ab "}};
  Comprueba(grupos, Muestra);
  QString dia = "7";
  FormatValue(dia, "T(F) A(D) L(10) +[01/11/2025]");
  EXPECT_EQ("07", dia.toStdString());
  EXPECT_TRUE(avisos_.isEmpty());
}

// Los tres con punto y sin coma están ya en su forma de edición: el punto no puede ser de grupo.
TEST_F(Campos, Edita) {
  const Grupo grupos[] = {{"T(N)", "1.234,50 -> 1234.50|0,50 -> 0.50|-1.234,5 -> -1234.50"},
                          {"T(n) D(0)", "1.234 -> 1234|0 -> "},
                          {"T(N)",
                           " -> |nada, -> nada|1234.5 -> 1234.50|1234.505 -> 1234.51|.5 -> 0.50|"
                           "1.234.567 -> 1234567.00"},
                          {"T(I)", "ES91 2100 0418 4502 0005 1332 -> ES9121000418450200051332"},
                          {"T(F)", "05 mar 2026 -> 05/03/2026|5/3/26 -> 05/03/2026|cualquiera -> cualquiera"},
                          {"T(f)", "05 marzo -> 05/03/2026|29 febrero -> 29/02/2024"},
                          {"T(D)", "000042 -> 000042"},
                          {"T(M)", "A, B. -> A, B."}};
  Comprueba(grupos, Edita);
}

TEST_F(Campos, LoMostradoVuelveIgualEnCualquierLocale) {
  for (const auto& locale : {QLocale("es_ES"), QLocale("en_US"), QLocale("fr_FR"), QLocale("de_CH")}) {
    PonerLocaleUsuario(locale);
    SCOPED_TRACE(locale.name().toStdString());
    for (const char* n : {"0.00", "0.01", "999.99", "1000.00", "-1234567.89", "12345678901234567.89"}) {
      const std::string editado = Edita(QString::fromStdString(Muestra(n, "T(N) A(D) L(30)")), "T(N)");
      EXPECT_EQ(n, editado);
    }
    for (QDate dia(2026, 1, 31); dia.year() == 2026; dia = dia.addDays(30)) {
      const std::string tecleado = FormatoFecha(dia, ModoFecha::Numerica).toStdString();
      for (const char* d : {"T(F) A(D) L(10)", "T(f) A(D) L(10)"})
        EXPECT_EQ(tecleado, Edita(QString::fromStdString(Muestra(QString::fromStdString(tecleado), d)), d));
    }
  }
}

TEST_F(Campos, Identificadores) {
  const auto cambia = [](void (*f)(QString&)) {
    return [f](QString texto, const QString&) {
      f(texto);
      return texto.toStdString();
    };
  };
  const Grupo nif[] = {{"NIF",
                        "12345678? -> 12345678Z|00000000? -> 00000000|12345678(? -> 12345678(?|"
                        "12345678 -> 12345678|X1234567? -> X1234567|? -> | 7? ->  7F|-5? -> -5"}};
  Comprueba(nif, cambia(NifLetter));
  // Los 23 restos, en el orden de la norma.
  QString letras;
  for (int n = 23; n < 46; ++n)
    letras += QString::fromStdString(cambia(NifLetter)(QString::number(n) + '?', "")).right(1);
  EXPECT_EQ("TRWAGMYFPDXBNJZSQVHLCKE", letras.toStdString());

  const Grupo cuentas[] = {
      {"Con punto",
       "43.25 -> 43000025|572.1 -> 57200001|4300.123 -> 43000123|44,7 -> 44000007|"
       "43.1234567 -> 43234567|12345678.9 -> 12345678"},
      {"Sin punto",
       "43025 -> 43000025|5721 -> 57200001|43 -> 43000000|1 -> 10000000| 430  -> 43000000|"
       "12345678 -> 12345678"},
      {"Sin desarrollo", "123456789 -> 123456789|123456789.1 -> 123456789.1|   ->   "}};
  Comprueba(cuentas, cambia(LedgerAccount));
}

TEST_F(Campos, PasaDeUnaPaginaDeCodigosAOtra) {
  EXPECT_EQ(AWindows1252("ñÑáç?. "), WinDos(std::string("\xA4\xA5\xA0\x87\xCD.\0", 7), "Win"));
  EXPECT_EQ("\xA4\xA5? ", WinDos(AWindows1252("ñÑ€") + '\0', "dos"));
  EXPECT_EQ("\xA4 ", WinDos(std::string("\xA4\0", 2), "otro"));
  WinDosDesactivado = true;
  EXPECT_EQ("\xA4 ", WinDos(std::string("\xA4\0", 2), "win"));
  WinDosDesactivado = false;
}

// Un importe con grupos no cambia de valor al pegarlo.
TEST_F(Campos, FiltraElTextoQueLlegaDeUnaVez) {
  const Grupo grupos[] = {
      {"T(N) L(10)", "a-12,345 -> -12.34|1.234,50 -> 1234.50|(1.234,50-) -> -1234.50"},
      {"T(n) L(10)",
       "-1.5 -> 1.5|€ 1.234,50 -> 1234.50|+1.234.567,89\u00A0EUR -> 1234567.89|1,234.50 -> 1234.50"},
      {"T(D) L(4)", "1.234 -> 1234|1.234,56 -> no cabe|12a34 -> 1234"},
      {"T(F) L(10)", "/3-4.26/1 -> 3/4/261"},
      {"T(H) L(5)", "9.30:1 -> 9:301"},
      {"T(M) L(6)", "peña+?\nx -> PEÑA+?"},
      {"T(X) L(9)", "1234567l? -> 1234567L?"},
      {"T(I) L(24)", "es91 2100 0418 4502 0005 1332 -> ES9121000418450200051332"},
      {"T(M) L(3)", "ab\U0001F600 -> AB"},
      {"T(Z) L(9)", "a\nb -> a\nb"}};
  Comprueba(grupos, [](const QString& entra, const QString& descriptor) {
    return Filtro(descriptor).Texto({}, entra).value_or("no cabe").toStdString();
  });
}
