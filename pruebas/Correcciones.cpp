#include "remesa/Correcciones.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "RemesasAlAzar.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/Fichero.h"

using namespace remesa;
using namespace pruebas;
using namespace std::chrono_literals;

namespace {

constexpr Dia kHoy{2026y, std::chrono::October, 5d};

ListaTextos Limpia(const char* nombre) {
  return Bytes(LeerFichero(std::string(DIR_DATOS "/limpias/") + nombre + ".Q19"));
}

/// "E305@3 A406@5" de lo hecho, con + lo arrastrado.
std::string Dicho(const ResultadoCorreccion& resultado) {
  std::string dicho;
  for (const Correccion& c : resultado.hechas)
    dicho.append(dicho.empty() ? "" : " ")
        .append(TextoCodigo(c.codigo))
        .append(c.arrastrada ? "+@" : "@")
        .append(std::to_string(c.registro));
  return dicho;
}

struct Corregida {
  ListaTextos registros;
  std::string dicho;
  ResultadoCorreccion resultado;
};

Corregida Corregir(const ListaTextos& registros, const PeticionCorreccion& peticion = {.hoy = kHoy}) {
  ListaRegistros lista = Lista(registros);
  ResultadoCorreccion resultado = remesa::Corregir(lista, peticion);
  return {Bytes(lista), Dicho(resultado), std::move(resultado)};
}

/// En qué se distinguen, en corto: "3,119: JOSE por JOSÉ".
std::string Diferencias(const ListaTextos& una, const ListaTextos& otra) {
  std::string dicho = una.size() == otra.size() ? "" : std::to_string(una.size()) + " registros";
  for (std::size_t i = 0; i < std::min(una.size(), otra.size()); ++i) {
    if (una[i] == otra[i]) continue;
    const auto [a, b] = std::ranges::mismatch(una[i], otra[i]);
    const auto desde = static_cast<std::size_t>(a - una[i].begin());
    dicho += " " + std::to_string(i + 1) + "," + std::to_string(desde + 1) + ": " + una[i].substr(desde, 20) +
             " por " + otra[i].substr(desde, 20);
  }
  return dicho;
}

/// Pone un texto en una posición del registro, desde 1.
struct Estrago {
  std::size_t registro;
  int desde;
  std::string texto;
};

void Estropear(ListaTextos& r, const Estrago& estrago) {
  r[estrago.registro - 1].replace(static_cast<std::size_t>(estrago.desde) - 1, estrago.texto.size(),
                                  estrago.texto);
}

TEST(Correcciones, ElDocumentoDiceLasQueHay) {
  std::ifstream fichero(DIR_PROYECTO "/docs/comprobaciones.md");
  const std::string documento{std::istreambuf_iterator<char>(fichero), {}};
  const std::string tabla = documento.substr(documento.find("## Lo que se puede corregir"));
  for (const CodigoHallazgo codigo : CodigosHallazgo()) {
    const std::string texto(TextoCodigo(codigo));
    const bool dicho = tabla.find(" " + texto + " |\n") != std::string::npos ||
                       tabla.find(" " + texto + ", ") != std::string::npos;
    EXPECT_EQ(dicho, PuedeCorregirse(codigo)) << texto;
  }
}

// Lo que se estropea y tiene una sola respuesta vuelve a ser lo que era, byte a byte.
TEST(Correcciones, LoEstropeadoVuelveAsiMismo) {
  const struct {
    std::vector<Estrago> estragos;
    const char* dicho;
  } casos[] = {
      {{}, ""},
      {{{1, 8, "009"}, {2, 8, "001"}}, "E203@1 E203@2"},
      {{{3, 119, "  ANA PENA LOPEZ"}}, "E310@3"},
      {{{3, 89, "1250       "}}, "E310@3"},
      {{{3, 89, "       1250"}, {17, 63, "10      "}}, "E310@3 E310@17"},
      {{{3, 404, "es8000810101300001000010"}}, "E305@3"},
      {{{3, 404, " ES80 0081 0101 3000 0100 0010"}}, "E305@3"},
      {{{15, 221, "es74 21000119830019000064"}}, "E305@15"},
      {{{1, 11, "Es70000B99812034"}}, "E307@1"},
      // Lo que repiten de la cabecera va detrás.
      {{{2, 11, "es70 000B99812034"}, {17, 3, "es70 000B99812034"}, {18, 3, "es70 000B99812034"}},
       "E307@2 E307+@17 E307+@18"},
      {{{17, 3, "ES90001A99776544"}, {17, 38, "20261020"}, {18, 3, "                "}},
       "E402@17 E402@17 E301@18"},
      {{{17, 38, "2026ABCD"}, {18, 3, "ES71000B99812034"}}, "E302@17 E307@18"},
      {{{10, 11, "A0008"}, {15, 46, "      "}}, "E401@10 E301@15"},
      {{{3, 590, "X"}, {2, 320, "ABC"}, {19, 100, "9"}}, "A303@2 A303@3 A303@19"},
      {{{17, 46, "9"}, {17, 63, "9"}, {18, 72, "9"}, {19, 3, "1"}}, "E403@17 E404@17 E405@18 E403@19"},
      {{{17, 46, std::string(35, ' ')}, {19, 20, "0000000A"}}, "E301@17 E301@17 E301@17 E302@19"},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.dicho);
    const ListaTextos limpia = Limpia("un-acreedor");
    ListaTextos mala = limpia;
    for (const Estrago& estrago : caso.estragos)
      Estropear(mala, estrago);
    const Corregida corregida = Corregir(mala);
    EXPECT_EQ(corregida.dicho, caso.dicho);
    EXPECT_EQ(Diferencias(corregida.registros, limpia), "");
    EXPECT_EQ(corregida.resultado.quedan.errores + corregida.resultado.quedan.avisos, 0u);
  }
  for (const char* nombre : {"dos-cuentas", "varios-acreedores"})
    EXPECT_EQ(Diferencias(Corregir(Limpia(nombre)).registros, Limpia(nombre)), "");

  // Con registros de más, de menos o cambiados de sitio.
  const ListaTextos limpia = Limpia("un-acreedor");
  ListaTextos mala = limpia;
  for (const std::size_t i : {2u, 8u, 16u, 18u})
    mala[i].resize(mala[i].find_last_not_of(' ') + 1);
  mala[9] += "   ";
  std::rotate(mala.begin() + 12, mala.begin() + 14, mala.begin() + 15);  // 006, 003, 004
  std::swap(mala[12], mala[13]);                                         // 003, 006, 004
  std::rotate(mala.begin() + 2, mala.begin() + 3, mala.begin() + 6);     // A0001 tras A0004
  mala.insert(mala.begin() + 10, Registro("0319143005A0007                              M-0007"));
  for (const auto& [registro, desde, texto] :
       {Estrago{18, 79, "17"}, Estrago{19, 71, "18"}, Estrago{20, 36, "20"}})
    Estropear(mala, {registro, desde, texto});
  const Corregida corregida = Corregir(mala);
  EXPECT_EQ(Diferencias(corregida.registros, limpia), "");
  EXPECT_EQ(corregida.dicho,
            "E101@6 E101@9 E101@10 A201@11 E101@18 E101@20 A401@6 E405+@18 E405+@19 E405+@20 E204@16");
  EXPECT_EQ(corregida.resultado.procedencia.front(), 0u);
  EXPECT_EQ(corregida.resultado.procedencia[2], 5u);
}

// Lo que no vuelve a lo que era, sino a lo único que puede ser.
TEST(Correcciones, UnaSolaRespuesta) {
  const struct {
    std::vector<Estrago> estragos;
    const char* dicho;
    std::vector<Estrago> queda;  // sobre lo estropeado
    Dia hoy = kHoy;
  } casos[] = {
      {{{3, 119, "JOS\xC9 \xD1\xFA\xF1\x65z & \xAB\x43\xAA\xBB"}, {3, 442, "\xA0N\xBA"}},
       "A301@3 A301@3",
       {{3, 119, "JOSE Nunez + 'Ca'"}, {3, 442, "NoTA "}}},
      {{{3, 189, "CALLE"}, {3, 329, "ES"}}, "A302@3", {{3, 189, std::string(142, ' ')}}},
      {{{3, 239, "A\xD1O"}}, "A302@3", {{3, 189, std::string(142, ' ')}}},
      {{{3, 81, "FRST"}}, "A406@3", {{3, 81, "RCUR"}}},
      {{},
       "A407@2 E402+@17",
       {{2, 46, "20261103"}, {17, 38, "20261103"}},
       {2026y, std::chrono::November, 2d}},
      {{},
       "A410@2 E402+@17",
       {{2, 46, "20261014"}, {17, 38, "20261014"}},
       {2026y, std::chrono::October, 13d}},
      {{{2, 46, "20261225"}, {17, 38, "20261225"}},
       "A409@2 E402+@17",
       {{2, 46, "20261228"}, {17, 38, "20261228"}}},
      // En minúsculas no se sabía de qué país era la cuenta.
      {{{3, 189, "CALLE"}, {3, 329, "ES"}, {3, 404, "es"}},
       "A302@3 E305@3",
       {{3, 189, std::string(142, ' ')}, {3, 404, "ES"}}},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.dicho);
    ListaTextos mala = Limpia("un-acreedor");
    for (const Estrago& estrago : caso.estragos)
      Estropear(mala, estrago);
    const Corregida corregida = Corregir(mala, {.hoy = caso.hoy});
    std::string dicho = corregida.dicho;
    if (dicho == "E305@3 A302@3") dicho = "A302@3 E305@3";
    EXPECT_EQ(dicho, caso.dicho);
    for (const Estrago& estrago : caso.queda)
      Estropear(mala, estrago);
    EXPECT_EQ(Diferencias(corregida.registros, mala), "");
  }
}

// Lo que puede ser de dos maneras, o no se sabe, se queda como está.
TEST(Correcciones, NadaSeAdivina) {
  const struct {
    const char* que;
    std::vector<Estrago> estragos;
    const char* fichero = "un-acreedor";
    Dia hoy = kHoy;
  } casos[] = {
      {"dígitos de control", {{3, 404, "ES81"}, {2, 11, "ES71"}}},
      {"importes", {{3, 89, "0000000X250"}, {4, 89, "           "}}},
      {"nombre vacío", {{3, 119, std::string(70, ' ')}}},
      {"nombre que no dice nada", {{3, 119, "\xA0\xA0" + std::string(68, ' ')}}},
      {"tipo y BIC en minúsculas", {{3, 81, "rcur"}, {4, 108, "bsabesbbxxx"}}},
      {"registro de otro adeudo", {{10, 11, "A0009"}, {10, 46, "M-0009"}}},
      {"dirección del acreedor", {{2, 124, "CALLE"}, {2, 264, "ES"}}},
      {"referencias que serían iguales", {{4, 46, "M-\xD3   "}, {6, 46, "M-O   "}}},
      {"UTF-8", {{3, 119, "JOS\xC3\x89"}, {3, 590, "X"}}},
      {"primero y último de un mandato",
       {{3, 11, "B0001"}, {3, 81, "FRST"}, {4, 46, "M-0001"}, {4, 404, "ES8000810101300001000010"}}},
      {"bloques que serían el mismo", {}, "varios-acreedores", {2026y, std::chrono::December, 1d}},
      {"línea en LF", {{3, 300, "\n"}}},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    ListaTextos mala = Limpia(caso.fichero);
    for (const Estrago& estrago : caso.estragos)
      Estropear(mala, estrago);
    PeticionCorreccion peticion{.hoy = caso.hoy};
    peticion.admitir = [](const Correccion& c) { return c.codigo != CodigoHallazgo::Frst; };
    const Corregida corregida = Corregir(mala, peticion);
    EXPECT_EQ(corregida.dicho, "");
    EXPECT_EQ(Diferencias(corregida.registros, mala), "");
  }
  ListaTextos mala = Limpia("un-acreedor");
  mala[2].resize(415);  // la cuenta, a medias
  mala[3] += "Y MAS";
  mala.insert(mala.begin() + 9, "  ");
  EXPECT_EQ(Diferencias(Corregir(mala).registros, mala), "");
  mala = {"5180", std::string(600, 'X')};
  EXPECT_EQ(Corregir(mala).resultado.impide->codigo, CodigoHallazgo::NoEsRemesa);
}

/// De cada adeudo, lo que ninguna corrección toca, tan llano como se puede.
std::multiset<std::string> Dinero(const ListaTextos& registros) {
  std::multiset<std::string> adeudos;
  for (std::string r : registros) {
    r.resize(std::max<std::size_t>(r.size(), 600), ' ');
    if (!r.starts_with("03") || r.substr(7, 3) != "003") continue;
    std::string cuenta = r.substr(402, 35), nombre = r.substr(118, 70);
    std::erase(cuenta, ' ');
    for (char& c : cuenta)
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    std::string importe = r.substr(88, 11);
    std::erase(importe, ' ');
    importe.erase(0, importe.find_first_not_of('0'));
    importe.append("|").append(cuenta).append("|").append(Recortar(EquivalenteSEPA(nombre)));
    adeudos.insert(importe);
  }
  return adeudos;
}

void Ensuciar(ListaTextos& r, Azar& azar) {
  for (std::size_t veces = azar.hasta(12); veces > 0; --veces) {
    const std::size_t i = azar.hasta(r.size());
    const int desde = 1 + static_cast<int>(azar.hasta(600));
    const Campo* campo = CampoEn(r[i], desde);
    if (campo == nullptr || r[i].size() < 600 || campo->donde.hasta <= 10) continue;
    std::string bytes(LeerCampo(r[i], campo->donde));
    switch (azar.hasta(7)) {
      case 0:
        std::rotate(bytes.begin(), bytes.end() - 1, bytes.end());
        break;
      case 1:
        for (char& c : bytes)
          if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        break;
      case 2:
        bytes[azar.hasta(bytes.size())] = azar.unoDe(std::array{"\xD1", "&", "\xA0", "\xE9", "7", " "})[0];
        break;
      case 3:
        bytes.assign(bytes.size(), ' ');
        break;
      case 4:
        if (campo->donde.desde == 404) bytes += std::string(bytes);
        bytes.resize(static_cast<std::size_t>(campo->donde.longitud()));
        break;
      case 5:
        std::swap(r[i], r[azar.hasta(r.size())]);
        continue;
      default:
        r[i].resize(r[i].find_last_not_of(' ') + 1);
        continue;
    }
    EscribirCampo(r[i], campo->donde, bytes);
  }
}

// Sobre remesas sucias de cualquier modo: corregir dos veces es corregir una, el dinero no se toca, lo que no
// se admite no se hace, y no queda nada de lo que se ofreció.
TEST(Correcciones, LeyesConRemesasAlAzar) {
  std::size_t hechas = 0;
  for (unsigned semilla = 1; semilla <= 150; ++semilla) {
    SCOPED_TRACE(semilla);
    Remesas azar(semilla, false);
    ListaTextos sucia = azar.remesa();
    Ensuciar(sucia, azar);
    const Corregida una = Corregir(sucia);
    hechas += una.resultado.hechas.size();
    const Corregida otra = Corregir(una.registros);
    const Corregida nada = Corregir(sucia, {.hoy = kHoy, .admitir = [](const Correccion&) { return false; }});
    EXPECT_LE(una.resultado.quedan.errores, nada.resultado.quedan.errores);
    ASSERT_EQ(otra.dicho, "");
    ASSERT_EQ(Diferencias(otra.registros, una.registros), "");
    ASSERT_EQ(Dinero(una.registros), Dinero(sucia));

    // Solo la mitad: de las demás, ninguna, y su dinero es el mismo.
    const auto admitir = [&](const Correccion& c) {
      return (c.registro + static_cast<std::uint64_t>(c.donde.desde)) % 2 == 0;
    };
    const Corregida mitad = Corregir(sucia, {.hoy = kHoy, .admitir = admitir});
    for (const Correccion& c : mitad.resultado.hechas)
      ASSERT_TRUE(c.arrastrada || admitir(c));
    ASSERT_EQ(Dinero(mitad.registros), Dinero(sucia));
    ASSERT_EQ(Corregir(mitad.registros, {.hoy = kHoy, .admitir = [](const Correccion&) { return false; }})
                  .registros,
              mitad.registros);
  }
  EXPECT_GT(hechas, 700u);  // ensuciaba
}

}  // namespace
