#include "remesa/Comprobacion.h"

#include "Carpeta.h"
#include "Registros.h"
#include "remesa/Guardado.h"
#include "remesa/NumeroFiscal.h"
#include "remesa/SEPA.h"
#include "remesa/Validez.h"

using namespace remesa;
using namespace pruebas;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

using Registros = std::vector<std::string>;

constexpr Dia kHoy{2026y, std::chrono::January, 5d};
constexpr const char* kAcreedor = "ES08000E77846772";
constexpr const char* kIban = "ES9121000418450200051332";  // del acreedor
constexpr const char* kIban1 = "ES0721000101400001000010";
constexpr const char* kIban2 = "ES3621000102970002000013";

enum {
  kPresentador,
  kCabecera,
  kAdeudo,
  kUltimos,
  kCambio,
  kAdeudo2,
  kTotales,
  kTotalesAcreedor,
  kGenerales
};

Posiciones De(int desde, std::string_view texto) {
  return {desde, desde + static_cast<int>(texto.size()) - 1};
}

std::string Con(std::string_view cabeza, std::initializer_list<std::pair<int, std::string_view>> campos) {
  std::string registro = Registro(cabeza);
  for (const auto& [desde, texto] : campos)
    EscribirCampo(registro, De(desde, texto), texto);
  return registro;
}

/// Una remesa en la que no hay nada que decir: dos adeudos, el primero con dos registros opcionales.
Registros Buena() {
  const auto adeudo = [](const char* referencia, const char* mandato, const char* iban) {
    return Con("0319143003", {{11, referencia},
                              {46, mandato},
                              {81, "RCUR"},
                              {89, "00000000150"},
                              {100, "20200101"},
                              {119, "ANA PENA"},
                              {403, "A"},
                              {404, iban}});
  };
  return {
      Con("0119143001", {{11, kAcreedor},
                         {46, "ACADEMIA"},
                         {116, "20260104"},
                         {124, "PRE2026010412300000001"},
                         {159, "21000418"}}),
      Con("0219143002", {{11, kAcreedor}, {46, "20260112"}, {54, "ACADEMIA"}, {266, kIban}}),
      adeudo("REF1", "MANDATO1", kIban1),
      Con("0319143004", {{11, "REF1"}, {46, "MANDATO1"}, {223, "TITULAR"}, {293, "2"}, {294, "J12345678Z"}}),
      Con("0319143006",
          {{11, "REF1"}, {46, "MANDATO1"}, {81, "ANTERIOR"}, {186, "ES03000W9614457A"}, {255, "SMNDA"}}),
      adeudo("REF2", "MANDATO2", kIban2),
      Con("04", {{3, kAcreedor}, {38, "20260112"}, {46, "00000000000000300000000020000000006"}}),
      Con("05", {{3, kAcreedor}, {38, "00000000000000300000000020000000007"}}),
      Con("99", {{3, "00000000000000300000000020000000009"}})};
}

std::string Bytes(const Registros& registros, const char* fin = "\r\n") {
  std::string bytes;
  for (const std::string& registro : registros)
    bytes += registro + fin;
  return bytes;
}

/// Los códigos con su registro: "E304@3 E403@7".
std::string Codigos(const std::vector<Hallazgo>& hallazgos) {
  std::string codigos;
  for (const Hallazgo& h : hallazgos)
    codigos +=
        (codigos.empty() ? "" : " ") + std::string(TextoCodigo(h.codigo)) + "@" + std::to_string(h.registro);
  return codigos;
}

class PruebaComprobacion : public Carpeta {
 protected:
  std::vector<Hallazgo> comprobar(std::string_view bytes, Dia hoy = kHoy) {
    std::vector<Hallazgo> hallazgos;
    const auto resultado = ComprobarFichero(escribir("remesa.Q19", bytes), hoy,
                                            [&](Hallazgo&& h) { hallazgos.push_back(std::move(h)); });
    EXPECT_EQ(resultado.errores + resultado.avisos, hallazgos.size());
    return hallazgos;
  }
};

TEST_F(PruebaComprobacion, UnCampoEstropeado) {
  const struct {
    std::size_t registro;
    int desde;
    std::string texto;
    const char* codigos;
    Posiciones donde{0, 0};
    const char* esperado = "";
  } casos[] = {
      {kAdeudo, 1, "03", ""},
      {kPresentador, 3, "19445", "E206@1", {3, 7}, "19143"},
      {kAdeudo2, 3, "19154", "E206@6", {3, 7}, "19143"},
      {kPresentador, 3, "19142", "E202@1", {3, 7}, "19143"},
      {kAdeudo2, 3, "     ", "E202@6", {3, 7}, "19143"},
      {kCabecera, 8, "001", "E203@2", {8, 10}, "002"},
      {kCambio, 8, "007", "E203@5", {8, 10}, "003 004 005 006"},
      {kCambio, 1, "77", "E201@5", {1, 2}, "01 02 03 04 05 99"},
      {kAdeudo, 1, "3 ", "E201@3", {1, 2}, "01 02 03 04 05 99"},
      {kAdeudo, 8, "   ", "E203@3", {8, 10}, "003 004 005 006"},
      {kUltimos, 223, std::string(90, ' '), "A202@4", {8, 10}},
      {kCabecera, 54, "        ", "E301@2", {54, 123}},
      {kAdeudo, 119, "        ", "E301@3", {119, 188}},
      {kAdeudo, 189, "CALLE MAYOR 1", "E301@3 A302@3", {329, 330}},
      {kCabecera, 224, "SEVILLA", "E301@2 A302@2", {264, 265}},
      {kUltimos, 293, " ", "E301@4", {293, 293}, "2"},
      {kUltimos, 11, "    ", "E301@4", {11, 45}},
      {kAdeudo, 331, "1", "E301@3", {332, 367}, "A I"},
      {kAdeudo, 404, "DE89370400440532013000  ", ""},
      {kAdeudo, 404, "CH9300762011623852957   ", "E301@3 A310@3", {108, 118}},
      {kAdeudo, 404, "RS35260005601001611379  ", "E301@3 A310@3 A306@3", {108, 118}},
      {kPresentador, 159, "21A0", "E302@1", {159, 162}},
      {kAdeudo, 331, "X", "E302@3", {331, 331}, "1 2"},
      {kAdeudo, 89, "0000000X150", "E302@3", {89, 99}},
      {kTotales, 38, "2026011X", "E302@7", {38, 45}},
      {kAdeudo, 331, "0", ""},
      {kPresentador, 116, "20260230", "E303@1", {116, 123}},
      {kAdeudo, 100, "20231301", "E303@3", {100, 107}},
      {kAdeudo, 89, "00000000000", "E304@3 E403@7 E403@8 E403@9", {89, 99}},
      {kAdeudo, 404, "ES08", "E305@3", {404, 437}, "07"},
      {kAdeudo, 427, " ", "E305@3", {404, 437}},
      {kAdeudo, 404, "es", "E305@3", {404, 437}},
      {kAdeudo, 404, "XX", "E305@3", {404, 437}},
      {kAdeudo, 404, "DE8937040044053201300A  ", "E305@3", {404, 437}},
      {kAdeudo, 403, " 21000101400001000010    ", "E301@3 E305@3", {403, 403}},
      {kCabecera, 266, "ES9221000418450200051332", "E305@2", {266, 299}, "91"},
      {kCambio, 221, "ES92", "E305@5 E408@5", {221, 254}},
      {kAdeudo, 403, "B", "E306@3", {404, 437}},
      {kAdeudo, 403, "B21000101400001000010    ", "A308@3", {404, 437}},
      {kAdeudo, 403, "B21000101410001000010    ", "A308@3 A307@3", {404, 437}},
      {kAdeudo, 404, "ES4221000101410001000010", "A307@3", {404, 437}},
      {kAdeudo, 404, "BR1800360305000010009795493C1", "E311@3", {404, 437}},
      {kAdeudo, 404, kIban, "A416@3", {404, 437}},
      {kPresentador, 13, "09", "E307@1", {11, 45}, "08"},
      {kCabecera, 46, "20261340", "E303@2", {46, 53}},
      {kCabecera, 13, "09", "E307@2", {11, 45}, "08"},
      {kCambio, 190, "A", "E307@5", {186, 220}},
      {kAdeudo, 81, "RCRU", "E308@3", {81, 84}, "FNAL FRST OOFF RCUR"},
      {kAdeudo, 81, "RST ", "E308@3", {81, 84}, "FNAL FRST OOFF RCUR"},
      {kAdeudo, 329, "XX", "E308@3", {329, 330}},
      {kAdeudo, 403, "C", "E308@3", {403, 403}, "A B"},
      {kUltimos, 293, "3", "E308@4", {293, 293}, "1 2"},
      {kCambio, 255, "OTRA", "E308@5", {255, 259}, "SMNDA"},
      {kUltimos, 294, "I", "E309@4", {294, 329}, "J"},
      {kUltimos, 294, "J         ", "E309@4", {294, 329}, "J"},
      {kUltimos, 303, "A", "A312@4", {294, 329}, "Z"},
      {kAdeudo, 368, "EMISOR", "E309@3", {368, 402}},
      {kAdeudo, 404, " "s + kIban1, "E310@3", {404, 437}},
      {kUltimos, 11, " REF1", "E310@4", {11, 45}},
      {kAdeudo, 89, "    0000150", "E310@3", {89, 99}, "00000000150"},
      {kTotales, 46, "              300", "E310@7", {46, 62}, "00000000000000300"},
      {kAdeudo, 108, "DEUTDEFFXXX", "E312@3", {108, 118}, "ES"},
      {kAdeudo, 108, "BBVAESMMXXX", "A313@3", {108, 118}, "2100"},
      {kPresentador, 124, "XRE", "E313@1", {124, 158}},
      {kPresentador, 135, "25", "E313@1", {124, 158}},
      {kPresentador, 127, "20260103", "E314@1", {124, 158}, "20260104"},
      {kPresentador, 124, "PREFSDD", ""},
      {kAdeudo, 85, "SUP", "E315@3", {85, 88}},
      {kAdeudo, 85, "SUPP", ""},
      {kAdeudo, 438, "CORT", "A311@3", {438, 441}},
      {kUltimos, 293, "1", "E309@4", {294, 329}, "A I"},
      {kUltimos, 293, "1AXX334914A", "E309@4", {294, 329}, "A+BIC I"},
      {kUltimos, 11, "REF2", "E401@4", {11, 45}, "REF1"},
      {kCambio, 46, "MANDATO3", "E401@5", {46, 80}, "MANDATO1"},
      {kTotales, 3, "ES53000A12345678", "E402@7", {3, 37}, kAcreedor},
      {kTotales, 3, "ES99000E77846772", "E307@7", {3, 37}, "08"},
      {kTotales, 38, "20261340", "E303@7", {38, 45}},
      {kTotales, 38, "20260113", "E402@7", {38, 45}, "20260112"},
      {kTotales, 38, "18990113", "A305@7", {38, 45}},
      {kTotalesAcreedor, 3, "ES53000A12345678", "E402@8", {3, 37}, kAcreedor},
      {kTotales, 62, "1", "E403@7", {46, 62}, "00000000000000300"},
      {kTotalesAcreedor, 62, "3", "E404@8", {55, 62}, "00000002"},
      {kGenerales, 37, "8", "E405@9", {28, 37}, "0000000009"},
      {kAdeudo, 442, "CUOTA A\xD1O", "A301@3", {449, 449}},
      {kAdeudo, 442, "A&B \xE1&\xE9", "A301@3", {443, 448}},
      {kAdeudo, 189, "CALLE MAYOR 1" + std::string(127, ' ') + "ES", "A302@3", {189, 238}},
      {kUltimos, 223, "\0\r"s.substr(0, 1), "A301@4", {223, 223}},
      {kAdeudo, 590, "X", "A303@3", {582, 600}},
      {kAdeudo, 108, "BANCO", "A304@3", {108, 118}},
      {kAdeudo, 108, "CAIXESBBXXX", ""},
      {kAdeudo, 100, "18991231", "A305@3", {100, 107}},
      {kCambio, 81, "MANDATO1", "E409@5", {81, 115}},
      {kCambio, 116, "ACADEMIA", "E409@5", {116, 185}},
      {kCambio, 81, std::string(180, ' '), "E409@5", {8, 10}},
      {kUltimos, 223, "ANA PENA", "E410@4", {223, 292}},
      {kUltimos, 81, "ACADEMIA", "E410@4", {81, 150}},
      {kAdeudo, 11, "REF3", "E401@4 E401@5 A401@6", {11, 45}, "REF3"},
      {kAdeudo2, 46, "MANDATO1", "A403@6 A404@6", {46, 80}},
      {kAdeudo, 100, "20260113", "A405@3", {100, 107}, "20260112"},
      {kAdeudo2, 81, "FRST", "A406@6", {81, 84}, "RCUR"},
      {kAdeudo, 81, "FRST", ""},  // con SMNDA
      {kAdeudo, 100, "20260106", "A411@3", {100, 107}, "20260105"},
      {kPresentador, 116, "20260106", "A412@1", {116, 123}, "20260105"},
      {kAdeudo2, 81, "OOFF", "A414@6", {100, 107}},
      {kPresentador, 159, "0049", "A415@1", {159, 162}, "2100"},
      {kCabecera, 46, "20260102", "A407@2 E402@7", {46, 53}, "20260106"},
      {kCabecera, 46, "20260105", "A410@2 E402@7", {46, 53}, "20260106"},
      {kCabecera, 46, "20270306", "A413@2 E402@7", {46, 53}},
      {kCabecera, 46, "20260110", "A408@2 E402@7", {46, 53}, "20260112"},
      {kCabecera, 46, "20260403", "A409@2 E402@7", {46, 53}, "20260407"},
      {kCabecera, 46, "20161003", "A407@2 A405@3 A405@6 E402@7", {46, 53}, "20260106"},
  };
  for (const auto& caso : casos) {
    Registros remesa = Buena();
    EscribirCampo(remesa[caso.registro], De(caso.desde, caso.texto), caso.texto);
    SCOPED_TRACE(caso.codigos + " con «"s + caso.texto + "» en " + std::to_string(caso.desde));
    const std::vector<Hallazgo> hallazgos = comprobar(Bytes(remesa));
    EXPECT_EQ(Codigos(hallazgos), caso.codigos);
    if (hallazgos.empty()) continue;
    EXPECT_EQ(hallazgos[0].donde, caso.donde);
    EXPECT_EQ(hallazgos[0].esperado, caso.esperado);
    EXPECT_EQ(hallazgos[0].fila, hallazgos[0].registro);
  }
}

TEST_F(PruebaComprobacion, RegistrosDeMasDeMenosYFueraDeSitio) {
  const auto quitar = [](std::size_t cual) {
    return [cual](Registros& r) { r.erase(r.begin() + static_cast<std::ptrdiff_t>(cual)); };
  };
  const auto poner = [](std::size_t donde, const std::string& registro) {
    return [=](Registros& r) { r.insert(r.begin() + static_cast<std::ptrdiff_t>(donde), registro); };
  };
  const Registros buena = Buena();
  const struct {
    std::function<void(Registros&)> dano;
    const char* codigos;
  } casos[] = {
      {quitar(kPresentador), "E204@1 E405@8"},
      {quitar(kCabecera), "E204@2 E405@6 E405@7 E405@8"},
      {[](Registros& r) {
         EscribirCampo(r[kTotales], kFecha04, "20261340");
         EscribirCampo(r[kTotalesAcreedor], kAcreedor05, "ES99");
         r.erase(r.begin() + kCabecera);
       },
       "E204@2 E303@6 E405@6 E307@7 E405@7 E405@8"},
      {[](Registros& r) {
         for (const std::size_t i : {kCabecera, kTotales, kTotalesAcreedor})
           EscribirCampo(r[i], i == kCabecera ? kIdentificadorAcreedor : kAcreedor04, "ES99");
       },
       "E307@2"},
      {[](Registros& r) { r[kTotales].resize(20); }, "E101@7"},
      {quitar(kTotales), "E204@7 E405@7 E405@8"},
      {quitar(kTotalesAcreedor), "E204@8 E405@8"},
      {quitar(kGenerales), "E205@0"},
      {poner(kGenerales + 1, buena[kPresentador]), "E204@10 E205@0"},
      {poner(kUltimos, buena[kUltimos]), "E204@5 E405@8 E405@9 E405@10"},
      {[](Registros& r) { std::swap(r[kUltimos], r[kCambio]); }, "E204@5"},
      {[](Registros& r) { std::swap(r[kAdeudo], r[kUltimos]); }, "E204@3"},
      {poner(kAdeudo2, Con("0319143005", {{11, "REF1"}, {46, "MANDATO1"}})),
       "E204@6 A201@6 E405@8 E405@9 E405@10"},
      // La misma copia que hace «Insertar tipo 03».
      {poner(kAdeudo2 + 1, buena[kAdeudo2]),
       "A402@7 A403@7 E403@8 E404@8 E405@8 E403@9 E404@9 E405@9 E403@10 E404@10 E405@10"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo2], {46, 53}, "MANDATO1");
         EscribirCampo(r[kAdeudo2], {404, 437}, "ES7921000813610123456789");
       },
       "A403@6 A404@6"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo2], {46, 53}, "MANDATO1");
         EscribirCampo(r[kAdeudo2], {403, 437}, "B21000101400001000010    ");
       },
       "A308@6 A403@6"},
      // El cambio de cuenta que un 006 comunica.
      {[](Registros& r) {
         std::swap(r[kAdeudo], r[kAdeudo2]);
         std::rotate(r.begin() + kUltimos, r.begin() + kAdeudo2, r.begin() + kTotales);
         for (const std::size_t i : {kAdeudo, kUltimos, kCambio, kAdeudo2})
           EscribirCampo(r[i], {46, 53}, "MANDATO1");
         EscribirCampo(r[kAdeudo], {89, 99}, "00000000200");
         EscribirCampo(r[kUltimos], {89, 99}, "00000000100");
       },
       "A401@4"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo2], {46, 53}, "MANDATO1");
         EscribirCampo(r[kAdeudo2], {81, 84}, "OOFF");
         EscribirCampo(r[kAdeudo2], {100, 107}, "20250101");
         EscribirCampo(r[kAdeudo2], {404, 427}, kIban1);
       },
       "A403@6 E406@6"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo2], {404, 427}, kIban1);
       },
       "A417@6"},
      {[](Registros& r) {
         EscribirCampo(r[kCambio], {221, 259}, "ES2201820101700001000010               ");
       },
       "E407@5"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo], {404, 430}, "FR1420041010050500013M02606");
         EscribirCampo(r[kAdeudo], {108, 118}, "DEUTDEFFXXX");
       },
       "A309@3"},
      {[](Registros& r) {
         for (std::size_t i = kPresentador; i < kTotales; ++i)
           EscribirCampo(r[i], kVersion, kVersion1944);
       },
       "A105@0"},
      // Lo que falta no es otra cuenta.
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo2], {46, 53}, "MANDATO1");
         r[kAdeudo2].resize(410);
       },
       "E101@6 A403@6"},
      // Sin el 02 de un bloque, su 04 no es del anterior.
      {[&](Registros& r) {
         r.insert(r.begin() + kTotalesAcreedor, buena.begin() + kCabecera, buena.begin() + kTotalesAcreedor);
         EscribirCampo(r[kTotalesAcreedor], {1, 2}, "77");
         EscribirCampo(r[kTotalesAcreedor + 5], {38, 45}, "20260113");
       },
       "E201@8 E204@9 A402@9 A403@9 A402@12 A403@12 E405@13 E403@14 E404@14 E405@14 E403@15 E404@15 E405@15"},
      // Otro acreedor pide antes el 05 del suyo.
      {[&](Registros& r) {
         r.insert(r.begin() + kTotalesAcreedor, buena.begin() + kCabecera, buena.begin() + kTotalesAcreedor);
         EscribirCampo(r[kTotalesAcreedor], {11, 26}, "ES53000A12345678");
       },
       "E204@8 E402@13 E402@14 E403@14 E404@14 E405@14 E403@15 E404@15 E405@15"},
      {[](Registros& r) { r[kAdeudo].resize(598); }, "E101@3"},
      {[](Registros& r) { r[kAdeudo].resize(50); }, "E101@3"},
      {[](Registros& r) {
         EscribirCampo(r[kAdeudo], {189, 201}, "CALLE MAYOR 1");
         r[kAdeudo].resize(240);
       },
       "E101@3"},
      {[](Registros& r) { r[kAdeudo] += "XX"; }, "E101@3"},
      {poner(kAdeudo2, ""), "E101@6"},
      {poner(kAdeudo2, Registro("")), "E201@6 E405@8 E405@9 E405@10"},
      {poner(kAdeudo2, std::string(kLongitudRegistro, '\0')), "E201@6 E405@8 E405@9 E405@10"},
      {poner(kGenerales + 1, Registro("")), "E201@10"},
      {poner(0, Registro("")), "E201@1 E405@10"},
      {[](Registros& r) { r = {Registro("")}; }, "E201@1 E205@0"},
      {[](Registros& r) { r = {"hola"}; }, "E104@0"},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.codigos);
    Registros remesa = Buena();
    caso.dano(remesa);
    EXPECT_EQ(Codigos(comprobar(Bytes(remesa))), caso.codigos);
  }
}

TEST_F(PruebaComprobacion, DosAcreedoresConSusTotales) {
  const Registros primera = Buena();
  Registros remesa(primera.begin(), primera.end() - 1);
  for (std::size_t i = kCabecera; i < kGenerales; ++i) {
    std::string registro = primera[i];
    const int donde = i < kTotales ? 11 : 3;
    if (i == kCabecera || i >= kTotales)
      EscribirCampo(registro, De(donde, kAcreedor), "ES53000A12345678");
    else
      EscribirCampo(registro, {11, 13}, "OTR");
    remesa.push_back(registro);
  }
  remesa.push_back(Con("99", {{3, "00000000000000600000000040000000016"}}));
  EXPECT_EQ(Codigos(comprobar(Bytes(remesa))), "");
}

// De uno y de varios acreedores, con opcionales y deudores de dentro y de fuera del Espacio Económico
// Europeo.
TEST_F(PruebaComprobacion, DeLasLimpiasNada) {
  int ficheros = 0;
  for (const auto& entrada : std::filesystem::directory_iterator(DIR_DATOS "/limpias")) {
    SCOPED_TRACE(entrada.path());
    ++ficheros;
    std::string bytes = leer(entrada.path());
    EXPECT_EQ(Codigos(comprobar(bytes, {2026y, std::chrono::October, 5d})), "");
    // Las dos cuentas de un acreedor en el mismo día son dos bloques; la misma, no.
    const std::size_t primera = bytes.find("ES"s, 602 + 265), otra = bytes.find("\n0219143002", 1200);
    if (entrada.path().stem() != "dos-cuentas" || otra == std::string::npos) continue;
    bytes.replace(otra + 266, 24, bytes, primera, 24);
    EXPECT_EQ(Codigos(comprobar(bytes, {2026y, std::chrono::October, 5d})), "E411@7");
  }
  EXPECT_EQ(ficheros, 3);
}

TEST_F(PruebaComprobacion, FinesDeLineaYMarcas) {
  const Registros buena = Buena();
  const std::string crlf = Bytes(buena);
  const struct {
    std::string bytes;
    const char* codigos;
  } casos[] = {
      {crlf, ""},
      {"", "E103@0"},
      {Bytes(buena, "\n"), "E102@0"},
      {Bytes(buena, "\r"), "A102@0"},
      {buena[0] + "\r" + Bytes({buena.begin() + 1, buena.end()}), "A103@0"},
      {buena[0] + "\n" + Bytes({buena.begin() + 1, buena.end()}), "E102@0 A103@0"},
      {"\xEF\xBB\xBF" + crlf, "A101@0"},
      {"\xFF\xFE" + crlf, "E104@0"},
      {"\n01ORD34" + std::string(593, '0') + "\n", "E104@0"},
      {"05/12/2026;cobro\r", "E104@0"},
      {"2119143001\r\n", "E105@0"},
      // En UTF-8, completado contando caracteres o bytes.
      {std::string(crlf).replace(602 * kAdeudo + 122, 4,
                                 "PE\xC3\x91"
                                 "A"),
       "E106@0"},
      {std::string(crlf).replace(602 * kAdeudo + 122, 5,
                                 "PE\xC3\x91"
                                 "A"),
       "E106@0"},
      {crlf.substr(0, crlf.size() - 2), "A104@0"},
      {crlf.substr(0, crlf.size() - 1), "A103@0"},
      {crlf.substr(0, 602 * 3), "E205@0"},
      {crlf + "\x1A", "E101@10 A104@0"},
      {"5180" + std::string(158, '0'), "E104@0"},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.codigos);
    EXPECT_EQ(Codigos(comprobar(caso.bytes)), caso.codigos);
  }
  // El programa toma todo por un registro; aquí se cuentan los que son.
  std::string danada = Bytes(buena, "\n");
  danada[601 * kAdeudo + 81] = 'X';
  const std::vector<Hallazgo> hallazgos = comprobar(danada);
  ASSERT_EQ(Codigos(hallazgos), "E308@3 E102@0");
  EXPECT_EQ(hallazgos[0].fila, 1U);
  EXPECT_EQ(hallazgos[0].deudor, "ANA PENA");
  EXPECT_EQ(hallazgos[0].referencia, "REF1");
}

// La lista guarda en un solo registro las líneas acabadas en LF; al guardarla se pierde todo menos la
// primera.
TEST(Comprobacion, ListaComoEstaYComoQuedaraGuardada) {
  Registros corto = Buena();
  corto[kAdeudo].resize(590);
  Registros conLF = Buena();
  conLF[kAdeudo2] += "\n" + conLF[kTotales].replace(70, 10, "XXXXXXXXXX") + "\n";
  conLF.erase(conLF.begin() + kTotales);
  Registros partido = Buena();
  partido[kUltimos].back() = '\n';
  const struct {
    Registros registros;
    bool comoGuardada;
    const char* codigos;
    std::size_t fila;
  } casos[] = {
      {corto, false, "E101@3", 3},
      {corto, true, "", 0},
      {conLF, false, "E302@7 E102@0", kAdeudo2 + 1},
      {conLF, true, "E204@7 E405@7 E405@8", kTotales + 1},
      {partido, false, "E101@4 E102@0", 4},
      {partido, true, "E101@4 E101@5 E102@0 A103@0", 4},
  };
  for (const auto& caso : casos) {
    std::vector<Hallazgo> hallazgos;
    const auto recibir = [&](Hallazgo&& h) { hallazgos.push_back(std::move(h)); };
    EXPECT_TRUE(ComprobarLista(Lista(caso.registros), kHoy, recibir, caso.comoGuardada).completa);
    EXPECT_EQ(Codigos(hallazgos), caso.codigos);
    EXPECT_EQ(hallazgos.empty() ? 0 : hallazgos[0].fila, caso.fila) << caso.codigos;
  }
}

TEST(Calendario, PascuaYFiestas) {
  for (const char* pascua :
       {"19610402", "20000423", "20080323", "20240331", "20250420", "20260405", "20380425"}) {
    const Dia dia = *LeerFecha(pascua);
    EXPECT_EQ(EscribirFecha(DomingoDePascua(dia.year())), pascua);
  }
  const std::pair<const char*, const char*> habiles[] = {{"20260403", "20260407"}, {"20261225", "20261228"},
                                                         {"20260501", "20260504"}, {"20251231", "20251231"},
                                                         {"20260101", "20260102"}, {"20260106", "20260106"}};
  for (const auto& [dia, habil] : habiles)
    EXPECT_EQ(EscribirFecha(HabilDesde(*LeerFecha(dia))), habil);
  for (const char* mal : {"", "20230229", "00000000", "2026010", "202601011", " 2026010", "20261301"})
    EXPECT_FALSE(LeerFecha(mal)) << mal;
}

TEST(Validez, ClavesConDigitosDeControl) {
  for (const char* bien : {"ES08000E77846772", "ES03000W9614457A", "ES53000A12345678", "ES53999A12345678",
                           "ES53000A-1234 5678", "DE98ZZZ09999999999"})
    EXPECT_TRUE(ComprobarIdentificador(bien).correcto) << bien;
  for (const char* mal : {"", "ES", "ES08", "ES54000A12345678", "ES53000a12345678", "ES53000A1234567",
                          "ES5300XA12345678", "ES53 000A12345678", "XX08000E77846772"})
    EXPECT_FALSE(ComprobarIdentificador(mal).correcto) << mal;
  for (const char* bien : {kIban, "DE89370400440532013000", "GB82WEST12345698765432", "NO9386011117947"})
    EXPECT_TRUE(ComprobarIban(bien).correcto) << bien;
  for (const char* mal : {"", "ES91", "ES91 2100 0418 4502 0005 1332", "9121000418450200051332ES"})
    EXPECT_FALSE(ComprobarIban(mal).correcto) << mal;
  const std::pair<const char*, const char*> fiscales[] = {{"12345678", "Z"},  {"X1234567", "L"},
                                                          {"A1234567", "4"},  {"P1234567", "D"},
                                                          {"C1234567", "4D"}, {"I1234567", ""}};
  for (const auto& [ocho, control] : fiscales)
    EXPECT_EQ(ControlFiscal(ocho), control) << ocho;
}

// El documento explica cada código, y no sobra ninguno.
TEST(Comprobacion, TodosLosCodigosEstanEnElDocumento) {
  std::ifstream fichero(DIR_PROYECTO "/docs/comprobaciones.md");
  const std::string documento{std::istreambuf_iterator<char>(fichero), {}};
  for (const CodigoHallazgo codigo : CodigosHallazgo()) {
    const std::string fila = "| " + std::string(TextoCodigo(codigo)) + " | ";
    EXPECT_EQ(documento.find(fila), documento.rfind(fila)) << fila;
    EXPECT_NE(documento.find(fila), std::string::npos) << fila;
  }
}

}  // namespace
