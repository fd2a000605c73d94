#include "remesa/Fusion.h"

#include <gtest/gtest.h>

#include "Registros.h"

using namespace remesa;
using namespace pruebas;

namespace {

using Registros = std::vector<std::string>;

struct Resultado {
  Registros registros;
  int error = 0;
  bool operator==(const Resultado&) const = default;
};

/// Lo que hace la ventana: importaciones seguidas, cada una con su recálculo.
Resultado EnListas(const std::vector<Registros>& ficheros) {
  ListaRegistros acumulado;
  for (const Registros& fichero : ficheros) {
    Importar(acumulado, Lista(fichero));
    const int error = NumeroError([&] { RecalcularTotales(acumulado); });
    if (error != 0) return {{}, error};
  }
  return {Bytes(acumulado), 0};
}

Resultado EnFlujo(const std::vector<Registros>& ficheros) {
  ReglasImportacion reglas;
  Resultado resultado;
  resultado.error = NumeroError([&] {
    for (std::size_t f = 0; f < ficheros.size(); ++f) {
      reglas.empezarFichero(f + 1 == ficheros.size());
      for (std::string registro : ficheros[f]) {
        const Destino destino = reglas.dar(registro);
        if (destino == Destino::Quitar) continue;
        if (destino == Destino::Reescribir) Aplicar(registro, reglas.cambios());
        resultado.registros.push_back(registro);
      }
    }
  });
  if (resultado.error != 0) resultado.registros.clear();
  return resultado;
}

std::string Totalizado(std::string_view codigo, std::string_view fecha, std::string_view importe,
                       std::string_view adeudos, std::string_view registros) {
  if (codigo == "04")
    return Registro(
        "04", {{kFecha04, fecha}, {kImporte04, importe}, {kAdeudos04, adeudos}, {kRegistros04, registros}});
  if (codigo == "05")
    return Registro("05", {{kImporte05, importe}, {kAdeudos05, adeudos}, {kRegistros05, registros}});
  return Registro("99", {{kImporte99, importe}, {kAdeudos99, adeudos}, {kRegistros99, registros}});
}

const std::string kA = Acreedor("ES01", "20260105"), kB = Acreedor("ES02", "20260206");
const std::string kUno = Adeudo("1", "00000000100"), kDos = Adeudo("2", "00000000250");
const std::string kTres = Adeudo("3", "LETRAS     ");

TEST(Fusion, ReglasDeImportacion) {
  const Registros primero = {Presentador(), kA,          kUno,       Opcional("004", "1"),
                             Total("04"),   Total("05"), Total("99")};
  const Registros segundo = {Presentador(), kB,          kDos,        Registro("98"),
                             kTres,         Total("04"), Total("05"), Total("99")};
  const struct {
    const char* nombre;
    std::vector<Registros> ficheros;
    Registros esperado;
    int error = 0;
  } casos[] = {
      {"dos ficheros: cabeceras y fecha del primero, totales del segundo",
       {primero, segundo},
       {Presentador(), kA, kUno, Opcional("004", "1"), kDos, kTres,
        Totalizado("04", "20260105", "00000000000000350", "00000003", "0000000006"),
        Totalizado("05", "", "00000000000000350", "00000003", "0000000007"),
        Totalizado("99", "", "00000000000000350", "00000003", "0000000009")}},
      {"dos bloques: contadores corridos",
       {{Presentador(), kA, kUno, Total("04"), kB, kDos, Total("04"), Total("05"), Total("99")}},
       {Presentador(), kA, kUno, Totalizado("04", "20260105", "00000000000000100", "00000001", "0000000003"),
        kB, kDos, Totalizado("04", "20260206", "00000000000000350", "00000002", "0000000006"),
        Totalizado("05", "", "00000000000000350", "00000002", "0000000007"),
        Totalizado("99", "", "00000000000000350", "00000002", "0000000009")}},
      {"sin totales el último: se pierden",
       {primero, {kDos}},
       {Presentador(), kA, kUno, Opcional("004", "1"), kDos}},
      {"sin cabeceras: fecha vacía no cambia nada",
       {{kUno, Registro("04", {{kFecha04, "99999999"}})}},
       {kUno, Totalizado("04", "99999999", "00000000000000100", "00000001", "0000000002")}},
      {"fecha de un 02 corto: solo los bytes que tiene",
       {{kA.substr(0, 49), kUno, Registro("04", {{kFecha04, "abcdefgh"}})}},
       {kA.substr(0, 49), kUno, Totalizado("04", "2026efgh", "00000000000000100", "00000001", "0000000003")}},
      {"un primero que no deja nada no es el primero",
       {{"", Registro("77")}, {Presentador(), kDos}},
       {Presentador(), kDos}},
      {"solo totales: la lista no está vacía y el segundo pierde la cabecera",
       {{Total("99")}, {Presentador(), kDos}},
       {kDos}},
      {"solo totales y luego nada: el tercero vuelve a ser el primero",
       {{Total("99")}, {Registro("77")}, {Presentador(), kDos}},
       {Presentador(), kDos}},
      {"totales antes de los adeudos",
       {{Total("99"), kUno}},
       {Totalizado("99", "", "00000000000000000", "00000000", "0000000002"), kUno}},
      {"totales cortado dentro del último campo",
       {{Total("99").substr(0, 30)}},
       {Totalizado("99", "", "00000000000000000", "00000000", "0000000002").substr(0, 30)}},
      {"totales que no llega al último campo", {{Total("99").substr(0, 27)}}, {}, 5},
      {"un 04 que acaba donde empieza su último campo",
       {{Total("04").substr(0, 71)}},
       {Totalizado("04", "", "00000000000000000", "00000000", "0000000001").substr(0, 71)}},
      {"un 05 sin nada más", {{"05"}}, {}, 5},
      {"totales corto en un fichero que no es el último", {{Presentador(), "99"}, primero}, {}, 5},
      {"desborda entre dos ficheros",
       {{Adeudo("1", "02147483647"), Total("04")}, {Adeudo("2", "00000000001")}, {kUno}},
       {},
       6},
      {"el máximo justo",
       {{Adeudo("1", "02147483647"), Total("99")}},
       {Adeudo("1", "02147483647"), Totalizado("99", "", "00000002147483647", "00000001", "0000000003")}},
      {"desborda antes que el corto", {{Adeudo("1", "99999999999"), "99"}}, {}, 6},
      {"el corto antes que el desbordado", {{"99", Adeudo("1", "99999999999")}}, {}, 5},
      {"vacíos", {{}, {}}, {}}};
  for (const auto& caso : casos) {
    const Resultado esperado{caso.esperado, caso.error};
    EXPECT_EQ(EnListas(caso.ficheros), esperado) << caso.nombre;
    EXPECT_EQ(EnFlujo(caso.ficheros), esperado) << caso.nombre;
  }
}

TEST(Fusion, RedondeaAlParYLeeConBenevolencia) {
  const struct {
    std::vector<const char*> importes;
    std::int32_t total;
  } casos[] = {{{"0000000.5"}, 0},
               {{"0000001.5"}, 2},
               {{"0000002.5"}, 2},
               {{"1", "0.5"}, 2},
               {{"0.5", "0.5"}, 0},
               {{"-5", "3"}, -2},
               {{"0000000012A", "", "  7"}, 19},
               {{"-99999999999"}, 0},  // desborda por abajo
               {{"2147483647.4"}, 2147483647}};
  for (const auto& caso : casos) {
    Recuento recuento;
    const int error = NumeroError([&] {
      for (const char* importe : caso.importes)
        recuento.contar(Adeudo("", importe));
    });
    EXPECT_EQ(recuento.totales().importe, caso.total) << caso.importes.front();
    EXPECT_EQ(error, caso.importes.front() == std::string_view("-99999999999") ? 6 : 0);
  }
  Recuento recuento;  // el empate por encima del máximo también desborda
  recuento.contar(Adeudo("", "2147483647"));
  EXPECT_EQ(NumeroError([&] { recuento.contar(Adeudo("", "0.5")); }), ficheros::kDesbordamiento);
  recuento.contar(Opcional("004", "x"));
  EXPECT_EQ(recuento.totales().registros, 2);
}

TEST(Fusion, LoReescritoAntesDelErrorSeConserva) {
  ListaRegistros lista = Lista({kUno, Total("04"), Adeudo("2", "02147483600"), Total("05"), kDos});
  EXPECT_EQ(NumeroError([&] { RecalcularTotales(lista); }), ficheros::kDesbordamiento);
  EXPECT_EQ(lista[1], Totalizado("04", "", "00000000000000100", "00000001", "0000000002"));
  EXPECT_EQ(lista[3], Total("05"));

  ListaRegistros cortos = Lista({kUno, Total("04"), Total("05").substr(0, 60), Total("99")});
  EXPECT_EQ(NumeroError([&] { RecalcularTotales(cortos); }), ficheros::kArgumentoNoValido);
  EXPECT_NE(cortos[1], Total("04"));
  EXPECT_EQ(cortos[2], Total("05").substr(0, 60));  // ni a medias
  EXPECT_EQ(cortos[3], Total("99"));
}

}  // namespace
