#include "ventanas/principal/RegistroEnPalabras.h"

#include <gtest/gtest.h>

#include "EnEspana.h"
#include "Registros.h"
#include "comunes/plataforma/Celdas.h"

using namespace principal;
using pruebas::Registro;

namespace {

std::string Adeudo(std::string_view importe, std::string_view cuenta = "ES9121000418450200051332",
                   std::string_view codigo = "0319143003") {
  return Registro(codigo, {{remesa::kNombreDeudor,
                            "N\xFAria N\xFA\xF1"
                            "ez"},
                           {remesa::kImporteAdeudo, importe},
                           {remesa::kCuentaDeudor, cuenta},
                           {remesa::kConcepto, "Cuota <b>"}});
}

}  // namespace

TEST(RegistroEnPalabras, CadaRegistroEnUnaLinea) {
  const pruebas::EnEspana espana;
  std::string devuelto = Adeudo("00000005210", "ES9121000418450200051332", "2319143003");
  remesa::EscribirCampo(devuelto, remesa::kMotivo, "AM04");
  const std::pair<std::string, const char*> casos[] = {
      {Adeudo("00000005210"), "Núria Núñez · 52,10 € · ES91 2100 0418 4502 0005 1332 · Cuota <b>"},
      {Adeudo("00000000000"), "Núria Núñez · 0,00 € · ES91 2100 0418 4502 0005 1332 · Cuota <b>"},
      // Lo que no se entiende no pasa por un número ni por una cuenta.
      {Adeudo("0000005210 "), "Núria Núñez · «0000005210 » · ES91 2100 0418 4502 0005 1332 · Cuota <b>"},
      {Adeudo("       5210"), "Núria Núñez · «       5210» · ES91 2100 0418 4502 0005 1332 · Cuota <b>"},
      {Adeudo("0000000O210", "ES91 2100"), "Núria Núñez · «0000000O210» · «ES91 2100» · Cuota <b>"},
      {Registro("0319143003", {}, 93), "sin nombre · sin importe · sin cuenta"},
      {devuelto,
       "Adeudo devuelto · Núria Núñez · 52,10 € · ES91 2100 0418 4502 0005 1332 · Cuota <b> · Motivo: AM04"},
      {Registro("0219143002", {{remesa::kNombreAcreedor, "Acu"}, {remesa::kFechaCobro, "20261201"}}),
       "Acreedor y fecha · Acu · Cobro: 01/12/2026"},
      {Registro("0219143002", {{remesa::kFechaCobro, "20261301"}}), "Acreedor y fecha · Cobro: «20261301»"},
      {Registro("04", {{remesa::kImporte04, "00000000000106125"},
                       {remesa::kAdeudos04, "00000001"},
                       {remesa::kRegistros04, "00000000x3"}}),
       "Total de la fecha · 1.061,25 € · 1 adeudo · «00000000x3» registros"},
      {Registro("99", {{remesa::kImporte99, "99999999999999999"}}),
       "Total general · 999.999.999.999.999,99 €"},
      {"  hola\x01", "Registro desconocido · hola␁"},
  };
  for (const auto& [registro, esperado] : casos)
    EXPECT_EQ(EnPalabras(registro).toStdString(), esperado);
}

/// Toda celda sale de un campo, y de su posición se vuelve a su columna.
TEST(RegistroEnPalabras, LasColumnasYLosCamposSeCorresponden) {
  for (const char* codigo :
       {"0119143001", "0219143002", "0319143003", "0319143004", "0319143005", "0319143006", "04", "05", "99",
        "11", "12", "13", "14", "15", "21", "22", "23", "24", "25"}) {
    const std::string registro = Registro(codigo);
    EXPECT_NE(TipoRegistro(registro), "Desconocido") << codigo;
    for (int i = 1; i < kColumnasRegistro; ++i) {
      const remesa::Campo* campo = CampoDe(registro, static_cast<Columna>(i));
      if (campo == nullptr) continue;
      EXPECT_EQ(ColumnaDePosicion(registro, campo->donde.hasta), i) << codigo << campo->nombre;
    }
  }
}

TEST(RegistroEnPalabras, UnaFilaParaLaHojaDeCalculo) {
  const std::pair<QStringList, const char*> casos[] = {
      {{"52,10", "", "ES91 2100"}, "52,10\t\tES91 2100"},
      {{"=1+1", "+34", "-5", "@x"}, "'=1+1\t'+34\t'-5\t'@x"},
      {{"\"a", "b"}, "\"\"\"a\"\tb"},
  };
  for (const auto& [celdas, esperada] : casos)
    EXPECT_EQ(comunes::FilaTabulada(celdas), esperada);
}
