#include <gtest/gtest.h>

#include <tuple>

#include "Registros.h"

using namespace remesa;
using pruebas::NumeroError;

TEST(Registro, SobrescribeSinAlargar) {
  const struct {
    const char* registro;
    Posiciones donde;
    const char* texto;
    const char* resultado;  // nulo: error 5
  } casos[] = {{"abcdef", {2, 4}, "XYZ", "aXYZef"},  {"abcdef", {5, 8}, "WXYZ", "abcdWX"},
               {"abcdef", {6, 9}, "WXYZ", "abcdeW"}, {"abcdef", {7, 9}, "XYZ", nullptr},
               {"abcdef", {2, 3}, "XYZ", "aXYdef"},  {"abcdef", {2, 4}, "X", "aXcdef"},
               {"abcdef", {2, 4}, "", "abcdef"},     {"", {1, 2}, "XY", nullptr}};
  for (const auto& caso : casos) {
    std::string registro = caso.registro;
    const int error = NumeroError([&] { EscribirCampo(registro, caso.donde, caso.texto); });
    EXPECT_EQ(error, caso.resultado ? 0 : 5) << caso.registro << caso.donde.desde;
    EXPECT_EQ(registro, caso.resultado ? caso.resultado : caso.registro);
  }
}

TEST(Registro, CerosConservaLasCifrasDeLaDerecha) {
  for (const auto& [valor, ancho, texto] : {std::tuple{0, 8, "00000000"},
                                            {123456789, 8, "23456789"},
                                            {-5, 4, "00-5"},
                                            {2147483647, 17, "00000002147483647"}})
    EXPECT_EQ(Ceros(valor, ancho), texto);
}

TEST(Registro, FechaQ19NoMiraLasCifras) {
  for (const auto& [fecha, texto] : {std::pair{"ABCDEFGH", "GH/EF/ABCD"}, {"2024", "24//2024"}, {"", "//"}})
    EXPECT_EQ(FechaQ19(fecha), texto);
}

TEST(Registro, LecturaBenevolaDeNumeros) {
  const std::pair<std::string, double> casos[] = {
      {"00000001234", 1234},
      {"  \t12", 12},
      {"+7", 7},
      {"-7", -7},
      {"--7", 0},
      {"- 7", 0},
      {"12.5.3", 12.5},
      {".5", 0.5},
      {".", 0},
      {"5.", 5},
      {"12A4", 12},
      {"", 0},
      {"           ", 0},
      {"1 2", 1},
      {"12,5", 12},
      {"1e5", 1},
      {"-", 0},
      {std::string("1\0002", 3), 1},
      {"0.1", 0.1},
      {"99999999999", 99999999999.0},
      {"123456789012345678901234567890", 123456789012345678901234567890.0},
      {"inf", 0},
      {"\r1", 0}};
  for (const auto& [texto, valor] : casos)
    EXPECT_EQ(ValorNumerico(texto), valor) << texto;
}
