#include <gtest/gtest.h>

#include <tuple>

#include "Registros.h"
#include "remesa/Identificacion.h"
#include "remesa/TipoFichero.h"

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

TEST(Registro, DiceQueFicheroEs) {
  using enum TipoFichero;
  const std::pair<const char*, TipoFichero> casos[] = {{"0119143001", Presentacion},
                                                       {"0319143", Presentacion},
                                                       {"1119143001", Rechazos},
                                                       {"1319143003", Rechazos},
                                                       {"2119143", Devoluciones},
                                                       {"2219143002", Devoluciones},
                                                       {"3119143", SolicitudesCancelacion},
                                                       {"0119154", PlazoCorto},
                                                       {"2119445", Empresas},
                                                       {"01ORD34145", Transferencias},
                                                       {"5180123", Anterior},
                                                       {"14ES1234", Ajeno},
                                                       {"XX19143", Ajeno},
                                                       {"2019143", Ajeno},
                                                       {"2119144", Ajeno},
                                                       {"", Ajeno}};
  for (const auto& [bytes, tipo] : casos)
    EXPECT_EQ(TipoDe(bytes), tipo) << bytes;
}

TEST(Registro, RenuevaLaIdentificacionSinTocarLoDelPresentador) {
  using namespace std::chrono;
  const Momento ahora = local_days(2026y / 11 / 30) + 23h + 59min + 59s + 7ms;
  const struct {
    const char* actual;
    int parte;
    const char* nueva;
  } casos[] = {{"PRE2026010112131400001REMESA-000123", 0, "PRE2026113023595900007REMESA-000123"},
               {"PRE2026010112131400001REMESA-000123", 9, "PRE2026113023595900016REMESA-000123"},
               {"PRE2026010112131400001REMESA-000123", 99'993, "PRE2026120100000000000REMESA-000123"},
               {"PREFSDD2026010112131400001MIO-12345", 0, "PREFSDD2026113023595900007MIO-12345"},
               {"REMESA", 0, "PRE2026113023595900007             "},
               {"", 0, "PRE2026113023595900007             "}};
  for (const auto& caso : casos)
    EXPECT_EQ(IdentificacionRenovada(caso.actual, ahora, caso.parte), caso.nueva) << caso.actual;

  std::string cabecera = pruebas::Registro("0119143001", {{{124, 158}, casos[0].actual}});
  RenovarIdentificacion(cabecera, ahora);
  EXPECT_EQ(cabecera,
            pruebas::Registro("0119143001", {{{116, 123}, "20261130"}, {{124, 158}, casos[0].nueva}}));
}
