#include "consola/UnionFlujo.h"

#include <cstring>

#include "Carpeta.h"
#include "Registros.h"
#include "remesa/Fichero.h"
#include "remesa/Guardado.h"

namespace fs = std::filesystem;
using namespace pruebas;

namespace {

/// Lo que queda escrito, o el número del error que lo impidió.
struct Resultado {
  std::string bytes;
  int error = 0;
};

class PruebaUnionFlujo : public Carpeta {
 protected:
  template <class Union>
  Resultado resultado(Union unir) const {
    const fs::path salida = carpeta_ / "salida";
    fs::remove(salida);
    const int error = NumeroError([&] { unir(salida); });
    EXPECT_EQ(fs::exists(salida), error == 0);
    return {leer(salida), error};
  }

  Resultado porListas(const std::vector<fs::path>& ficheros) const {
    return resultado([&](const fs::path& salida) {
      remesa::ListaRegistros acumulado;
      for (const fs::path& fichero : ficheros) {
        remesa::Importar(acumulado, remesa::LeerFichero(fichero));
        remesa::RecalcularTotales(acumulado);
      }
      remesa::GuardarRemesa(salida, acumulado);
    });
  }

  Resultado porFlujo(const std::vector<fs::path>& ficheros, std::size_t bufer) const {
    return resultado([&](const fs::path& salida) {
      ficheros::EscrituraSegura escritura(salida);
      consola::UnionFlujo flujo(escritura, bufer);
      for (const fs::path& fichero : ficheros)
        flujo.unir(fichero, &fichero == &ficheros.back());
      escritura.confirmar();
    });
  }

  void comparar(const std::vector<std::string>& contenidos,
                std::initializer_list<std::size_t> buferes) const {
    std::vector<fs::path> ficheros;
    ficheros.reserve(contenidos.size());
    for (const std::string& contenido : contenidos)
      ficheros.push_back(escribir(std::to_string(ficheros.size()) + ".Q19", contenido));
    const Resultado esperado = porListas(ficheros);
    for (const std::size_t bufer : buferes) {
      const Resultado obtenido = porFlujo(ficheros, bufer);
      EXPECT_EQ(obtenido.error, esperado.error) << "búfer " << bufer;
      EXPECT_TRUE(obtenido.bytes == esperado.bytes) << "búfer " << bufer << ": " << obtenido.bytes.size()
                                                    << " bytes frente a " << esperado.bytes.size();
    }
  }
};

TEST_F(PruebaUnionFlujo, FinesDeLineaYLongitudes) {
  const std::string cabeza = Presentador() + "\r\n" + Acreedor("ES01", "20261201") + "\r\n";
  const std::string adeudo = Adeudo("1", "00000012345") + "\r\n",
                    totales = Total("04") + "\r\n" + Total("99");
  // Lo que pasa del búfer parece otro adeudo, y no lo es.
  std::string larga = Adeudo("1", "00000000007");
  while (larga.size() < 5000)
    larga += "0319143003";
  const std::string remesa = cabeza + adeudo + adeudo + totales + "\r\n";
  const std::vector<std::string> casos[] = {
      {remesa, "", remesa},
      {cabeza + Adeudo("1", "00000000100").substr(0, 99)},  // corto, y sin CR
      {cabeza + adeudo + totales + "\r"},
      {Presentador() + "\n" + Adeudo("1", "1") + "\n"},
      {cabeza + "\r\r\n\n" + adeudo + "\r\n\r\n" + adeudo + totales},
      {cabeza + Adeudo("1", std::string_view("\t12\0\x1a", 5)) + "\r\n" + totales},
      {remesa, cabeza + adeudo + Registro("04", {}, 70) + "\r\n"},
      {remesa + Registro("99", {}, 30) + "\r\n" + Registro("05", {}, 63) + "\r\n"},
      {cabeza + Adeudo("1", "-0000000003") + "\r" + Adeudo("2", "       12.50") + "\r\n" + totales},
      {cabeza + larga + "\r\n" + adeudo + totales, remesa + Registro("77", {}, 9000)},
  };
  for (const auto& ficheros : casos) {
    SCOPED_TRACE(&ficheros - casos);
    comparar(ficheros, {1024, 1203, 1204, 1205, 1206, consola::LectorRegistros::kBufer});
  }
}

// Que el fin de línea caiga en cada sitio del búfer, también en líneas que lo llenan.
TEST_F(PruebaUnionFlujo, BordesDelBufer) {
  for (const char* fin : {"\r\n", "\r", "\r\n\n"})
    for (std::size_t largo = 1018; largo <= 1026; ++largo) {
      SCOPED_TRACE(testing::Message() << "largo " << largo << ", fin de " << std::strlen(fin));
      const std::string linea = Adeudo("1", "00000000001") + std::string(largo - 600, ' ') + fin;
      comparar({linea + linea + Adeudo("2", "2") + fin + Total("99")}, {1024, 1025});
    }
}

TEST_F(PruebaUnionFlujo, FicherosAlAzar) {
  const std::string inicios[] = {Presentador(),
                                 Acreedor("ES01", "20261231"),
                                 Adeudo("1", "00000001999"),
                                 Adeudo("2", "00000000001"),
                                 Opcional("004", "2"),
                                 Adeudo("3", "   -3"),
                                 Adeudo("4", "02000000000"),
                                 Total("04"),
                                 Total("05"),
                                 Total("99"),
                                 Registro("07"),
                                 ""};
  const std::string fines[] = {"\r\n", "\r\n", "\r\n", "\r", "\n", "\r\r\n", ""};
  const std::size_t largos[] = {600, 600, 600, 600, 0, 2, 37, 70, 80, 598, 599, 601, 602, 1700};
  for (unsigned semilla = 1; semilla <= 150; ++semilla) {
    SCOPED_TRACE(testing::Message() << "semilla " << semilla);
    std::mt19937 azar(semilla);
    const auto de = [&](const auto& lista) -> const auto& {
      return lista[azar() % std::size(lista)];
    };
    std::vector<std::string> ficheros(1 + azar() % 4);
    for (std::string& fichero : ficheros)
      for (auto n = azar() % 12; n > 0; --n) {
        std::string registro = de(inicios);
        registro.resize(azar() % 3 == 0 ? de(largos) : 600, ' ');
        fichero += registro + de(fines);
      }
    comparar(ficheros, {1024 + semilla % 400, consola::LectorRegistros::kBufer});
  }
}

}  // namespace
