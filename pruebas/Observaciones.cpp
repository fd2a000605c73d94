#include "remesa/Observaciones.h"

#include <gtest/gtest.h>

#include "Registros.h"

using namespace remesa;
using namespace pruebas;

namespace {

using C = ClaseObservacion;
using Registros = std::vector<std::string>;

const std::string kA = Acreedor("ES01", "20260105");

Registros Remesa(const Registros& adeudos, const std::string& acreedor = kA) {
  Registros todo = {Presentador(), acreedor};
  todo.insert(todo.end(), adeudos.begin(), adeudos.end());
  for (const char* codigo : {"04", "05", "99"})
    todo.push_back(Total(codigo));
  return todo;
}

std::vector<C> Clases(const std::vector<Observacion>& observaciones) {
  std::vector<C> clases;
  clases.reserve(observaciones.size());
  for (const Observacion& o : observaciones)
    clases.push_back(o.clase);
  return clases;
}

ListaRegistros Acumulada(const Registros& registros) {
  ListaRegistros lista = Lista(registros);
  RecalcularTotales(lista);
  return lista;
}

TEST(Observaciones, DeUnFicheroQueSeVaAImportar) {
  const std::string a1 = Adeudo("1", "100");
  const Registros sana = Remesa({a1, Opcional("004", "1")});
  std::string unida;
  for (const std::string& registro : sana)
    unida += registro + "\n";
  const Registros medio = Remesa({Adeudo("1", "1200000000")});
  const struct {
    const char* nombre;
    Registros acumulado, previo;
    std::vector<C> clases;
    std::size_t cuenta = 0, primero = 0;
  } casos[] = {
      {"sana", {}, sana, {}},
      {"sana sobre otra", sana, sana, {}},
      {"nada previsto", sana, {}, {}},
      {"fin de línea y marca de fin al final",
       {},
       [&] {
         auto r = sana;
         r.push_back("");
         r.push_back("\x1A");
         return r;
       }(),
       {}},
      {"todo en LF", {}, {unida}, {C::SoloLF}, 1, 1},
      {"un LF dentro", {}, Remesa({a1.substr(0, 299) + "\n" + a1.substr(0, 300)}), {C::ConLF}, 1, 3},
      {"código desconocido", {}, Remesa({Registro("77"), a1, Registro("AB")}), {C::CodigosDescartados}, 2, 3},
      {"largos", {}, Remesa({a1 + "  ", a1, a1 + "x"}), {C::RegistrosLargos}, 2, 3},
      {"cortos", {}, Remesa({a1, a1.substr(0, 598)}), {C::RegistrosCortos}, 1, 4},
      {"sin totales", sana, {Presentador(), kA, a1}, {C::SinTotales}, 3, 0},
      {"sin cabeceras", {}, {a1, Total("99")}, {C::SinCabeceras}},
      {"sin cabeceras, pero ya las hay", sana, {a1, Total("99")}, {}},
      {"sin cabeceras en la acumulación", {a1, Total("99")}, sana, {C::CabecerasPerdidas}},
      {"sin cabeceras en ninguno", {a1, Total("99")}, {a1, Total("99")}, {}},
      {"pasa del máximo con lo que había", medio, medio, {C::Desbordamiento}, 3, 0},
      {"y sin totales", medio, {Adeudo("1", "1200000000")}, {C::Desbordamiento, C::SinTotales}},
      {"total sin sitio", {}, {Presentador(), kA, a1, "04"}, {C::TotalesSinSitio, C::RegistrosCortos}, 1, 4},
      {"totales entre adeudos",
       Remesa({a1, Total("04"), Total("05"), kA, a1}),
       sana,
       {C::TotalesInteriores},
       2,
       0},
      {"otro acreedor y otra fecha",
       sana,
       Remesa({a1}, Acreedor("ES02", "20260106")),
       {C::OtroAcreedor, C::OtraFecha},
       1},
      {"otra fecha", sana, Remesa({a1, Acreedor("ES01", "20260106"), a1}), {C::OtraFecha}, 1},
      {"dos bloques en la primera importación", {}, Remesa({a1, Acreedor("ES01", "20260106"), a1}), {}}};
  for (const auto& caso : casos) {
    const auto observaciones =
        ObservarImportacion(Resumir(Lista(caso.previo), true), Resumir(Acumulada(caso.acumulado)));
    EXPECT_EQ(Clases(observaciones), caso.clases) << caso.nombre;
    if (observaciones.empty() || caso.cuenta == 0) continue;
    EXPECT_EQ(observaciones.front().cuenta, caso.cuenta) << caso.nombre;
    EXPECT_EQ(observaciones.front().primero, caso.primero) << caso.nombre;
  }
}

TEST(Observaciones, DeLaAcumulacion) {
  const std::string a = Adeudo("a", "100"), a4 = Opcional("004", "a"), b = Adeudo("b", "50"),
                    b6 = Opcional("006", "b");
  const std::string otra = Adeudo("otra", "100");
  const std::string porBloque04 =
      Registro("04", {{kImporte04, "50"}, {kAdeudos04, "1"}, {kRegistros04, "3"}});
  Registros norma =
      Bytes(Acumulada(Remesa({a, Total("04"), kA, a})));  // los del primer bloque, iguales en ambas
  norma[6] = Registro("04", {{kImporte04, "100"}, {kAdeudos04, "1"}, {kRegistros04, "3"}});
  const struct {
    const char* nombre;
    ListaRegistros lista;
    std::vector<C> clases;
    std::size_t primero = 0;
  } casos[] = {
      {"vacía", {}, {}},
      {"sana", Acumulada(Remesa({a, a4, b, b6})), {}},
      {"recalcular y cambiar después",
       [&] {
         auto l = Acumulada(Remesa({a}));
         l.sustituir(2, b);
         return l;
       }(),
       {C::TotalesNoCuadran},
       4},
      {"sin recalcular", Lista(Remesa({a})), {C::TotalesNoCuadran}, 4},
      {"sin totales", Lista({Presentador(), kA, a}), {C::TotalesAusentes}},
      {"sin el 02", Acumulada({Presentador(), a, Total("99")}), {C::FaltanCabeceras}},
      {"desbordada y sin totales",
       Lista({Presentador(), kA, Adeudo("a", "2147483648")}),
       {C::TotalesDesbordados, C::TotalesAusentes}},
      {"por bloque", Lista(norma), {C::TotalesPorBloque}},
      {"varios bloques recalculados", Acumulada(norma), {C::VariosBloques}},
      {"total corto", Lista({Presentador(), kA, a, "99"}), {C::TotalesCortos}},
      {"desbordada", Lista(Remesa({Adeudo("a", "2147483648")})), {C::TotalesDesbordados}},
      {"copia delante del opcional", Acumulada(Remesa({a, a, a4, b, b6})), {C::CopiaIntercalada}, 5},
      {"copia ya cambiada", Acumulada(Remesa({a, otra, a4, Opcional("006", "a")})), {C::CopiaIntercalada}, 5},
      {"copia tras los opcionales", Acumulada(Remesa({a, a4, a})), {}},
      {"copia de uno sin opcionales", Acumulada(Remesa({a, a, b, b6})), {}},
      {"borrado el primero", Acumulada(Remesa({a4, b, b6})), {C::OpcionalesSueltos}, 3},
      {"borrado el segundo", Acumulada(Remesa({a, a4, b6})), {C::OpcionalesSueltos}, 5},
      {"el opcional de otro bloque", Acumulada(Remesa({a, Total("04"), a4})), {C::OpcionalesSueltos}, 5}};
  for (const auto& caso : casos) {
    const auto observaciones = ObservarAcumulado(Resumir(caso.lista));
    EXPECT_EQ(Clases(observaciones), caso.clases) << caso.nombre;
    const std::size_t primero =
        caso.primero == 0 || observaciones.empty() ? 0 : observaciones.front().primero;
    EXPECT_EQ(primero, caso.primero) << caso.nombre;
  }
}

// El resumen del recálculo y el combinado por importaciones dicen lo que dice recorrer la lista.
TEST(Observaciones, ElResumenEsElMismoPorTodosLosCaminos) {
  const Registros ficheros[] = {
      Remesa({Adeudo("a", "100"), Total("04"), Opcional("004", "x"), Registro("77")}),
      Remesa({Adeudo("b", "7"), ""}, Acreedor("ES02", "20260303")),
      {Presentador(), Adeudo("c", "3")}};
  ListaRegistros lista;
  Resumen combinado;
  for (const Registros& fichero : ficheros) {
    const ListaRegistros previo = Lista(fichero);
    combinado = TrasImportar(combinado, Resumir(previo));
    Importar(lista, previo);
    Resumen delRecalculo;
    RecalcularYResumir(lista, delRecalculo);
    const Resumen entero = Resumir(lista);
    for (const Resumen& r : {combinado, delRecalculo}) {
      EXPECT_EQ(r.registros, entero.registros);
      EXPECT_EQ(r.adeudos, entero.adeudos);
      EXPECT_EQ(r.importe, entero.importe);
      EXPECT_EQ(r.deTotales, entero.deTotales);
      EXPECT_EQ(r.totalesInteriores, entero.totalesInteriores);
      EXPECT_EQ(r.bloques, entero.bloques);
      EXPECT_EQ(r.ultimoBloque, entero.ultimoBloque);
      EXPECT_EQ(Clases(ObservarAcumulado(r)), Clases(ObservarAcumulado(entero)));
    }
  }
  EXPECT_EQ(combinado.importe, 110);
  EXPECT_EQ(combinado.cabeceras02, 1u);

  ListaRegistros fallida = Lista({Total("04"), "99", Adeudo("a", "5")});
  Resumen resumen;
  EXPECT_EQ(NumeroError([&] { RecalcularYResumir(fallida, resumen); }), ficheros::kArgumentoNoValido);
  EXPECT_EQ(resumen.registros, 3u);
  EXPECT_EQ(resumen.adeudos, 1u);
}

}  // namespace
