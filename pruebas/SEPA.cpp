#include "remesa/SEPA.h"

#include <gtest/gtest.h>

#include "Registros.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/CuentaNacional.h"
#include "remesa/PaisesSEPA.h"

using namespace remesa;

TEST(SEPA, FormatoIBAN) {
  const struct {
    const char* iban;
    bool sinPrefijo;
    const char* texto;
  } casos[] = {{"ES9121000418450200051332", false, "IBAN ES91 2100 0418 4502 0005 1332"},
               {"ES9121000418450200051332", true, "ES91 2100 0418 4502 0005 1332"},
               {"DE89370400440532013000", true, "DE89 3704 0044 0532 0130 00"},
               {"    ", false, ""},
               {"", true, ""},
               {"ES91  ", false, "IBAN ES91"},
               {"  ES91", true, "ES 91"},
               {"A B C", true, "A B  C"}};
  for (const auto& caso : casos)
    EXPECT_EQ(FormatoIBAN(caso.iban, caso.sinPrefijo), caso.texto) << caso.iban;
}

TEST(SEPA, ValoresYResto) {
  const std::pair<const char*, const char*> casos[] = {{"0", "0"}, {"9", "9"}, {"A", "10"}, {"Z", "35"},
                                                       {"a", "9"}, {" ", "9"}, {"-", "9"},  {"\xD1", "9"}};
  for (const auto& [caracter, valor] : casos)
    EXPECT_EQ(ValorIBAN(caracter), valor) << caracter;
  EXPECT_EQ(Modulo97(""), 0);
  EXPECT_EQ(Modulo97("98"), 1);
  EXPECT_EQ(Modulo97("3214282912345698765432161182"), 1);
  EXPECT_EQ(pruebas::NumeroError([] { Modulo97("12-4"); }), ficheros::kTiposNoCoinciden);
}

TEST(SEPA, TextoReducidoAlJuegoDeCaracteres) {
  const std::pair<std::string, std::string> casos[] = {{"", ""},
                                                       {"\xD1O\xD1O", "NONO"},
                                                       {"M\xFCller", "M0ller"},
                                                       {"Jos\xE9 Pe\xF1"
                                                        "a & C\xC7\xE7",
                                                        "Jos0 Pena 0 CCc"},
                                                       {"az AZ 09 /-?:().,'+", "az AZ 09 /-?:().,'+"},
                                                       {std::string("a\0b", 3), "a0b"},
                                                       {"\"_@;\x80\xFF", "000000"}};
  for (const auto& [texto, reducido] : casos)
    EXPECT_EQ(TextoSEPA(texto), reducido);
}

TEST(SEPA, UnCaracterDelJuegoPorCadaUno) {
  for (int byte = 0; byte < 256; ++byte)
    EXPECT_TRUE(EsDelJuegoSEPA(EquivalenteSEPA(static_cast<char>(byte)))) << byte;
  EXPECT_EQ(EquivalenteSEPA("Jos\xE9 Pe\xF1"
                            "a & \xC7\xCD"
                            "a; [3\xBA] \xAB"
                            "a_b\xBB 5\x80\xA0!\t'\x81"),
            "Jose Pena + CIa, (3o) 'a-b' 5E . '.");
}

TEST(SEPA, CuentasNacionalesYPaises) {
  const std::string ccc = "21000418450200051332";
  EXPECT_TRUE(ControlCcc(ccc));
  EXPECT_EQ(IbanDeCcc(ccc), "ES9121000418450200051332");
  for (std::size_t i = 0; i < ccc.size(); ++i) {
    std::string otra = ccc;
    otra[i] = otra[i] == '9' ? '0' : static_cast<char>(otra[i] + 1);
    EXPECT_FALSE(ControlCcc(otra)) << i;
  }
  for (const char* dentro : {"ES", "NO", "RE", "SK"})
    EXPECT_TRUE(EnEEE(dentro)) << dentro;
  for (const char* fuera : {"GB", "CH", "ME", "T ", "S", "", "SB"})
    EXPECT_FALSE(EnEEE(fuera)) << fuera;
}
