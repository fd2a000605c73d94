#include "remesa/Fichero.h"

#include "Carpeta.h"
#include "Registros.h"

using namespace remesa;
using namespace std::string_literals;
using pruebas::Bytes;
using pruebas::NumeroError;

namespace {

class Ficheros : public pruebas::Carpeta {};

TEST_F(Ficheros, MiraLaCabeza) {
  const std::pair<std::string, Cabeza> casos[] = {{"", Cabeza::Desconocida},
                                                  {"011914", Cabeza::Desconocida},
                                                  {"0119143", Cabeza::Q19},
                                                  {"0119143001", Cabeza::Q19},
                                                  {"XX19143", Cabeza::Q19},
                                                  {"\0\n19143"s, Cabeza::Q19},
                                                  {"5180123", Cabeza::VersionAnterior},
                                                  {"5180", Cabeza::Desconocida},
                                                  {"5119143", Cabeza::Q19},
                                                  {"0119144", Cabeza::Desconocida},
                                                  {"NOESQ19", Cabeza::Desconocida}};
  for (const auto& [bytes, cabeza] : casos)
    EXPECT_EQ(ComprobarCabeza(escribir("f", bytes)), cabeza) << bytes;
}

TEST_F(Ficheros, CortaLasLineasEnCR) {
  const std::string larga(3'000'000, 'x');
  const std::string justa((1 << 20) - 1, 'y');  // el CR, último byte del primer trozo; el LF, en el siguiente
  const std::pair<std::string, std::vector<std::string>> casos[] = {
      {"", {}},
      {"a\r\nb\r\n", {"a", "b"}},
      {"a\r\nb", {"a", "b"}},
      {"a\rb\r", {"a", "b"}},
      {"a\nb\n", {"a\nb\n"}},
      {"a\r\n\nb\r\n", {"a", "\nb"}},
      {"\n\r\n\r\n", {"\n", ""}},
      {"\r\r\n\r", {"", "", ""}},
      {"\r", {""}},
      {"\n", {"\n"}},
      {"a\tb\0c\x1A\r\n\x1A"s, {"a\tb\0c\x1A"s, "\x1A"}},
      {larga + "\r\n" + larga, {larga, larga}},
      {justa + "\r\nz\r\n", {justa, "z"}},
      {justa + "\rz\r\n", {justa, "z"}}};
  for (const auto& [bytes, lineas] : casos)
    EXPECT_EQ(Bytes(LeerFichero(escribir("f", bytes))), lineas) << bytes.substr(0, 20);
}

TEST_F(Ficheros, LoQueNoSePuedeLeerEsUnError) {
  const std::pair<std::filesystem::path, int> casos[] = {
      {carpeta_ / "falta", ficheros::kNoEncontrado},
      {carpeta_ / "falta" / "f", ficheros::kRutaNoEncontrada},
      {carpeta_, ficheros::kErrorDeAcceso},
      {escribir("f", "x") / "dentro", ficheros::kRutaNoEncontrada},
      {"", ficheros::kNoEncontrado}};
  for (const auto& [ruta, numero] : casos) {
    EXPECT_EQ(NumeroError([&, r = ruta] { LeerFichero(r); }), numero) << ruta;
    EXPECT_EQ(NumeroError([&, r = ruta] { ComprobarCabeza(r); }), numero) << ruta;
  }
}

TEST_F(Ficheros, ElErrorLlevaTextoYFichero) {
  try {
    LeerFichero(carpeta_ / "falta");
    FAIL();
  } catch (const ficheros::ErrorEjecucion& error) {
    EXPECT_EQ(error.texto(), "No se encontró el archivo");
    EXPECT_EQ(error.fichero(), carpeta_ / "falta");
  }
}

}  // namespace
