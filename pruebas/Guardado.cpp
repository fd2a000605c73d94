
#include "Guardado.h"

using namespace remesa;
using pruebas::Guardados;
using pruebas::Lista;
using pruebas::Nombres;
using pruebas::NumeroError;

namespace {

TEST_F(Guardados, CadaRegistroOcupa600YAcabaEnCRLF) {
  const std::string justo(600, 'j'), corto(598, 'c'), largo(610, 'l');
  GuardarRemesa(carpeta_ / "r.Q19", Lista({justo, corto, largo, ""}));
  EXPECT_EQ(leer(carpeta_ / "r.Q19"), justo + "\r\n" + corto + "  \r\n" + std::string(600, 'l') + "\r\n" +
                                          std::string(600, ' ') + "\r\n");
  GuardarRemesa(carpeta_ / "r.Q19", {});
  EXPECT_EQ(leer(carpeta_ / "r.Q19"), "");
  EXPECT_EQ(nombres(), Nombres{"r.Q19"});
}

TEST_F(Guardados, MezclaTrozosGrandesYPequenosEnOrden) {
  ficheros::EscrituraSegura salida(carpeta_ / "f");
  std::string todo;
  for (const std::size_t largo :
       {1ul, 300'000ul, 2ul, 1'048'576ul, 0ul, 5ul, 3'000'000ul, 1'048'575ul, 7ul}) {
    const std::string trozo(largo, static_cast<char>('a' + largo % 23));
    salida.escribir(trozo);
    todo += trozo;
  }
  salida.confirmar();
  EXPECT_EQ(leer(carpeta_ / "f"), todo);
}

TEST_F(Guardados, SinConfirmarNoQuedaNada) {
  const auto fichero = escribir("f", "viejo");
  {
    ficheros::EscrituraSegura salida(fichero);
    salida.escribir(std::string(2 << 20, 'x'));
    EXPECT_EQ(nombres().size(), 2u);
  }
  EXPECT_EQ(NumeroError([&] {
              GuardarRemesa(fichero, Lista(std::vector<std::string>(5000, "x")),
                            [](std::size_t, std::size_t) {
                              throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
                            });
            }),
            ficheros::kDesbordamiento);
  EXPECT_EQ(leer(fichero), "viejo");
  EXPECT_EQ(nombres(), Nombres{"f"});
}

// El segundo no puede ponerse en su sitio, que ya no es el que era: el primero vuelve a ser lo que fue.
TEST_F(Guardados, VariosALaVezTodosONinguno) {
  const auto viejo = escribir("1", "viejo"), nuevo = carpeta_ / "0", otro = carpeta_ / "2";
  for (const bool falla : {true, false}) {
    ficheros::EscrituraConjunta escritura;
    for (const auto& destino : {nuevo, viejo, otro})
      escritura.anadir(destino).escribir("nuevo");
    if (falla) std::filesystem::create_directories(otro / "carpeta");
    EXPECT_EQ(NumeroError([&] { escritura.confirmar(); }) != 0, falla);
    EXPECT_EQ(leer(viejo), falla ? "viejo" : "nuevo");
    EXPECT_EQ(std::filesystem::exists(nuevo), !falla);
    if (falla) std::filesystem::remove_all(otro);
  }
  EXPECT_EQ(nombres(), (Nombres{"0", "1", "2"}));
}

TEST_F(Guardados, NoBorraElTemporalDeUnProgramaVivo) {
  ficheros::EscrituraSegura uno(carpeta_ / "f");
  uno.escribir("uno");
  guardar(carpeta_ / "f", "dos");
  guardar(carpeta_ / "g", "tres");
  uno.confirmar();
  EXPECT_EQ(leer(carpeta_ / "f"), "uno");
  EXPECT_EQ(nombres(), (Nombres{"f", "g"}));
}

}  // namespace
