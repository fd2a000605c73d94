#include "consola/UnionFlujo.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <random>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Fichero.h"
#include "remesa/Guardado.h"

namespace fs = std::filesystem;

namespace {

/// Lo que queda escrito, o el número del error que lo impidió.
struct Resultado {
  std::string bytes;
  int error = 0;
  bool operator==(const Resultado&) const = default;
};

std::string Completo(std::string inicio, std::size_t largo = 600) {
  inicio.resize(largo, ' ');
  return inicio;
}

std::string Adeudo(const std::string& importe, const std::string& dato = "003") {
  return "0319143" + dato + std::string(78, 'R') + importe;
}

class PruebaUnionFlujo : public testing::Test {
 protected:
  void SetUp() override {
    carpeta_ = fs::path(testing::TempDir()) / ("union-flujo-" + std::to_string(std::random_device{}()));
    fs::create_directory(carpeta_);
  }
  void TearDown() override { fs::remove_all(carpeta_); }

  std::vector<fs::path> escribir(const std::vector<std::string>& contenidos) const {
    std::vector<fs::path> ficheros;
    for (const std::string& contenido : contenidos) {
      ficheros.push_back(carpeta_ / (std::to_string(ficheros.size()) + ".Q19"));
      std::ofstream(ficheros.back(), std::ios::binary) << contenido;
    }
    return ficheros;
  }

  template <class Union>
  Resultado resultado(Union unir) const {
    const fs::path salida = carpeta_ / "salida";
    fs::remove(salida);
    try {
      unir(salida);
    } catch (const ficheros::ErrorEjecucion& error) {
      EXPECT_FALSE(fs::exists(salida));
      return {{}, error.numero()};
    }
    std::ifstream f(salida, std::ios::binary);
    return {std::string(std::istreambuf_iterator<char>(f), {}), 0};
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
    const auto ficheros = escribir(contenidos);
    const Resultado esperado = porListas(ficheros);
    for (const std::size_t bufer : buferes) {
      const Resultado obtenido = porFlujo(ficheros, bufer);
      EXPECT_EQ(obtenido.error, esperado.error) << "búfer " << bufer;
      EXPECT_TRUE(obtenido.bytes == esperado.bytes) << "búfer " << bufer << ": " << obtenido.bytes.size()
                                                    << " bytes frente a " << esperado.bytes.size();
    }
  }

  fs::path carpeta_;
};

TEST_F(PruebaUnionFlujo, CasosConNombre) {
  const std::string cabeza = Completo("0119143001") + "\r\n";
  const std::string acreedor = Completo("0219143002" + std::string(35, 'A') + "20261201") + "\r\n";
  const std::string adeudo = Completo(Adeudo("00000012345")) + "\r\n";
  const std::string totales = Completo("04") + "\r\n" + Completo("05") + "\r\n" + Completo("99") + "\r\n";
  const std::string remesa = cabeza + acreedor + adeudo + adeudo + totales;
  const std::string enorme = Completo(Adeudo("02147483640")) + "\r\n";

  const struct {
    const char* nombre;
    std::vector<std::string> ficheros;
  } casos[] = {
      {"una", {remesa}},
      {"tres", {remesa, remesa, remesa}},
      {"sin totales al final", {remesa, cabeza + acreedor + adeudo}},
      {"dos bloques primero y último", {cabeza + acreedor + adeudo + totales + acreedor + adeudo + totales}},
      {"dos bloques y otra", {cabeza + acreedor + adeudo + totales + acreedor + adeudo + totales, remesa}},
      {"sin cabeceras, luego con ellas", {adeudo + totales, remesa}},
      {"solo totales, luego con cabeceras", {totales, remesa}},
      {"solo totales, nada, luego con cabeceras", {totales, "XX19143", remesa}},
      {"nada y luego con cabeceras", {"XX19143\r\n" + Completo("07"), remesa}},
      {"fichero vacío", {remesa, "", remesa}},
      {"adeudo corto en la última línea, sin CR", {cabeza + acreedor + Adeudo("00000000100")}},
      {"última línea acabada en CR", {cabeza + acreedor + adeudo + totales.substr(0, totales.size() - 1)}},
      {"solo LF", {Completo("0119143001") + "\n" + Completo(Adeudo("1")) + "\n"}},
      {"CR y LF repetidos", {cabeza + "\r\r\n\n" + adeudo + "\r\n\r\n" + adeudo + totales}},
      {"NUL, 1A y TAB", {cabeza + Completo(Adeudo(std::string("\t12\0\x1a", 5))) + "\r\n" + totales}},
      {"totales cortos en la primera", {cabeza + adeudo + "04\r\n", remesa}},
      {"totales cortos en la última", {remesa, cabeza + adeudo + Completo("04", 70) + "\r\n"}},
      {"totales cortados a media posición",
       {remesa + Completo("99", 30) + "\r\n" + Completo("05", 63) + "\r\n"}},
      {"desbordamiento entre ficheros", {cabeza + enorme + totales, cabeza + enorme + totales}},
      {"desbordamiento antes que el corto", {cabeza + enorme + enorme + "04\r\n", remesa}},
      {"importe negativo y con decimales",
       {cabeza + Completo(Adeudo("-0000000003")) + "\r" + Completo(Adeudo("       12.50")) + "\r\n" +
        totales}},
      {"línea mayor que el búfer",
       {cabeza + Completo(Adeudo("00000000007"), 5000) + "\r\n" + adeudo + totales,
        remesa + Completo("77", 9000)}},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.nombre);
    comparar(caso.ficheros, {1024, 1203, 1204, 1205, 1206, consola::LectorRegistros::kBufer});
  }
}

// Que el fin de línea caiga en cada sitio del búfer, también en líneas que lo llenan.
TEST_F(PruebaUnionFlujo, BordesDelBufer) {
  for (const char* fin : {"\r\n", "\r", "\r\n\n"})
    for (std::size_t largo = 1018; largo <= 1026; ++largo) {
      SCOPED_TRACE(testing::Message() << "largo " << largo << ", fin de " << std::strlen(fin));
      const std::string linea = Completo(Adeudo("00000000001"), largo) + fin;
      comparar({linea + linea + Completo(Adeudo("2")) + fin + "99" + std::string(598, ' ')}, {1024, 1025});
    }
}

TEST_F(PruebaUnionFlujo, FicherosAlAzar) {
  const std::string inicios[] = {Completo("0119143001", 20),
                                 Completo("0219143002", 45) + "20261231",
                                 Adeudo("00000001999"),
                                 Adeudo("00000000001"),
                                 Adeudo("0", "004"),
                                 Adeudo("   -3"),
                                 Adeudo("02000000000"),
                                 "04",
                                 "05",
                                 "99",
                                 "07",
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
        const std::string& inicio = de(inicios);
        fichero += Completo(inicio, azar() % 3 == 0 ? std::max(inicio.size(), de(largos)) : 600) + de(fines);
      }
    comparar(ficheros, {1024 + semilla % 400, consola::LectorRegistros::kBufer});
  }
}

}  // namespace
