#include "comunes/plataforma/Formatos.h"

#include <gtest/gtest.h>

#include <limits>

#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"

using namespace comunes;

namespace {

using namespace Qt::StringLiterals;

/// Escribe el fallo en UTF-8 y no carácter a carácter.
std::string utf8(const QString& texto) {
  return texto.toStdString();
}

struct EnLocale {
  explicit EnLocale(const QLocale& locale) { PonerLocaleUsuario(locale); }
  ~EnLocale() { PonerLocaleUsuario(std::nullopt); }
};

}  // namespace

TEST(Texto, TodosLosBytesVuelvenIguales) {
  std::string bytes;
  for (int i = 0; i < 256; ++i)
    bytes += static_cast<char>(i);
  const QString texto = DesdeWindows1252(bytes);
  EXPECT_EQ(AWindows1252(texto), bytes);
  EXPECT_TRUE(CabeEnWindows1252(texto));
  EXPECT_EQ(utf8(DesdeWindows1252("\x80\x8A\x9F\xD1\xE7")), "€ŠŸÑç");
  // Lo que no cabe es un solo interrogante.
  EXPECT_EQ(AWindows1252(u"aΩ😀z"_s), "a??z");
  EXPECT_FALSE(CabeEnWindows1252(u"Ω"_s));
}

TEST(Formatos, SinLocaleDelSistemaEsEspanol) {
  // Las pruebas se ejecutan con LC_ALL=C.UTF-8.
  EXPECT_EQ(LocaleUsuario().language(), QLocale::Spanish);
  EXPECT_EQ(utf8(FormatoNumero(1234.5, 2)), "1.234,50");
}

TEST(Formatos, Numeros) {
  const std::tuple<double, int, const char*> casos[] = {
      {0, 2, "0,00"},       {999.99, 2, "999,99"},    {1.005, 2, "1,01"},
      {-1.005, 2, "-1,01"}, {2.675, 2, "2,68"},       {2.5, 0, "3"},
      {-0.004, 2, "0,00"},  {999.995, 2, "1.000,00"}, {1e20, 2, "100.000.000.000.000.000.000,00"},
      {1e-30, 3, "0,000"}};
  for (const auto& [valor, decimales, esperado] : casos)
    EXPECT_EQ(utf8(FormatoNumero(valor, decimales)), esperado) << valor;
  EXPECT_EQ(utf8(FormatoEdicion(1234567.5, 2)), "1234567.50");
  EXPECT_THROW(FormatoNumero(std::numeric_limits<double>::infinity(), 2), ficheros::ErrorEjecucion);

  const EnLocale ingles(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(utf8(FormatoNumero(1234.5, 2)), "1,234.50");
  EXPECT_EQ(LeerNumero(u"1,234.5"_s), 1234.5);
}

TEST(Formatos, CentimosExactos) {
  EXPECT_EQ(utf8(FormatoCentimos(5)), "0,05");
  EXPECT_EQ(utf8(FormatoCentimos(-123456)), "-1.234,56");
  EXPECT_EQ(utf8(FormatoCentimos(std::numeric_limits<qint64>::max())), "92.233.720.368.547.758,07");
  EXPECT_EQ(utf8(FormatoCentimos(std::numeric_limits<qint64>::min())), "-92.233.720.368.547.758,08");
}

TEST(Formatos, LeeNumerosDelUsuario) {
  for (const auto& [texto, valor] :
       {std::pair{"1.234,50", 1234.5}, {" -0,5 ", -0.5}, {"+7", 7.0}, {",5", 0.5}})
    EXPECT_EQ(LeerNumero(QString::fromUtf8(texto)), valor) << texto;
  for (const char* texto : {"", "-", ",", "1,2,3", "1,2.3", ".5", "12a", "1 2", "--1"})
    EXPECT_FALSE(LeerNumero(QString::fromUtf8(texto))) << texto;
}

TEST(Fechas, LeeSoloLasQueExisten) {
  const std::pair<const char*, QDate> casos[] = {{"05/03/2026", {2026, 3, 5}},
                                                 {" 5/3/29 ", {2029, 3, 5}},
                                                 {"5/3/30", {1930, 3, 5}},
                                                 {"29/02/2024", {2024, 2, 29}}};
  for (const auto& [texto, fecha] : casos)
    EXPECT_EQ(LeerFecha(texto), fecha) << texto;
  for (const char* texto : {"", "29/02/2026", "31/04/2026", "0/1/2026", "1/13/2026", "1/1/202", "1/1/0050",
                            "1/1", "1-1-2026", "001/1/2026", "1/1/2026x", "1/1/20260", "1/1/2026\n2"})
    EXPECT_FALSE(LeerFecha(QString::fromUtf8(texto))) << texto;
}

TEST(Fechas, NombresDeMes) {
  EXPECT_EQ(utf8(FormatoFecha(QDate(2026, 9, 5), ModoFecha::Corta)), "05 sep 2026");
  EXPECT_EQ(utf8(FormatoFecha(QDate(), ModoFecha::Corta)), "");
  const EnLocale frances(QLocale(QLocale::French, QLocale::France));
  EXPECT_EQ(utf8(NombreMes(8, false)), "août");
}
