#include "remesa/Adeudos.h"
#include "remesa/Fusion.h"

#include <gtest/gtest.h>

#include "Registros.h"

using namespace remesa;
using namespace pruebas;

namespace {

TEST(ListaRegistros, QuitaDispersosEnOrden) {
  const std::pair<std::vector<std::size_t>, std::vector<std::string>> casos[] = {
      {{}, {"a", "b", "c", "d", "e"}}, {{0}, {"b", "c", "d", "e"}}, {{4}, {"a", "b", "c", "d"}},
      {{0, 1, 2, 3, 4}, {}},           {{1, 3}, {"a", "c", "e"}},   {{0, 2, 4}, {"b", "d"}}};
  for (const auto& [indices, quedan] : casos) {
    ListaRegistros lista = Lista({"a", "b", "c", "d", "e"});
    lista.quitar(indices);
    EXPECT_EQ(Bytes(lista), quedan);
  }
}

TEST(ListaRegistros, LosBloquesMuertosNoSeAcumulan) {
  ListaRegistros lista = Lista(
      {Presentador(), Acreedor("A", "20260101"), Adeudo("1", "1"), Total("04"), Total("05"), Total("99")});
  for (int i = 0; i < 1000; ++i) {
    lista.sustituir(2, Adeudo("1", std::to_string(i)));
    InsertarCopia(lista, 2);
    const std::size_t uno[] = {2};
    EliminarAdeudos(lista, uno);
    RecalcularTotales(lista);
  }
  EXPECT_LE(lista.bloques().size(), 64u);
  EXPECT_EQ(LeerCampo(lista[2], kImporteAdeudo), "999        ");
}

TEST(ListaRegistros, UnaListaViveMasQueAquellaDeDondeVienenSusRegistros) {
  ListaRegistros lista;
  {
    const ListaRegistros otra = Lista({"a", "", "c"});
    const std::size_t indices[] = {0, 1, 2};
    lista.anadirDe(otra, indices);
  }
  const std::size_t primero[] = {0};
  lista.quitar(primero);
  lista.duplicar(1, 2);
  lista.sustituir(2, std::string(lista[1]) + "d");
  EXPECT_EQ(Bytes(lista), (std::vector<std::string>{"", "c", "cd"}));
}

TEST(Adeudos, SoloSeDuplicaUnAdeudoDeLaVersion) {
  const std::pair<std::string, bool> casos[] = {{Adeudo("1", "5"), true},
                                                {Opcional("004", "1"), false},
                                                {Registro("0319143013"), false},
                                                {Registro("0319144003"), false},
                                                {Registro("0219143003"), false},
                                                {"0319143003", true},
                                                {"X319143003", false},
                                                {"03191430", false},
                                                {Total("99"), false},
                                                {"", false}};
  for (const auto& [registro, duplicable] : casos) {
    ListaRegistros lista = Lista({registro, "z"});
    EXPECT_EQ(InsertarCopia(lista, 0), duplicable) << registro.substr(0, 10);
    EXPECT_EQ(lista.size(), duplicable ? 3u : 2u);
    EXPECT_EQ(lista[1], duplicable ? registro : "z");
    EXPECT_EQ(lista[lista.size() - 1], "z");
  }
  ListaRegistros vacia;
  EXPECT_FALSE(InsertarCopia(vacia, 0));
}

TEST(Adeudos, EliminaLosSeleccionadosYDejaSiempreUno) {
  const std::string a = Adeudo("a", "1"), b = Opcional("004", "a"), c = Adeudo("c", "3");
  const std::vector<std::string> todo = {Presentador(), a, b, c, Total("99")};
  const struct {
    std::vector<std::size_t> seleccion;
    bool puede;
    std::vector<std::string> quedan;
  } casos[] = {{{}, true, todo},
               {{1}, true, {todo[0], b, c, todo[4]}},
               {{0, 4}, true, todo},
               {{0, 2, 3, 4}, true, {todo[0], a, todo[4]}},
               {{1, 2, 3}, false, {todo[0], a, todo[4]}},
               {{0, 1, 2, 3, 4}, false, {todo[0], a, todo[4]}}};
  for (const auto& caso : casos) {
    ListaRegistros lista = Lista(todo);
    EXPECT_EQ(PuedeEliminar(lista, caso.seleccion), caso.puede);
    EXPECT_EQ(EliminarAdeudos(lista, caso.seleccion), todo.size() - caso.quedan.size());
    EXPECT_EQ(Bytes(lista), caso.quedan);
  }
  const std::size_t uno[] = {0};
  ListaRegistros sinAdeudos = Lista({Presentador()});
  EXPECT_FALSE(PuedeEliminar(sinAdeudos, uno));
  EXPECT_FALSE(PuedeEliminar(ListaRegistros(), {}));
  EXPECT_EQ(ContarDeudores(Lista(todo)), 3u);
}

}  // namespace
