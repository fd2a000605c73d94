#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <set>

#include "Carpeta.h"
#include "Registros.h"
#include "iso20022/Exportacion.h"
#include "iso20022/Textos.h"
#include "remesa/Fichero.h"

// Lo que se anota al pasar a XML.

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

using ListaTextos = std::vector<std::string>;
using Cambio = std::function<void(ListaTextos&)>;

constexpr std::size_t kR01 = 0, kR02 = 1, kAna = 2, kLuis = 3, kR04 = 4;

std::string Adeudo(std::string_view referencia, std::string_view mandato, std::string_view nombre) {
  return Registro("0319143003", {{{11, 45}, referencia},
                                 {{46, 80}, mandato},
                                 {{81, 84}, "RCUR"},
                                 {{89, 99}, "00000001234"},
                                 {{100, 107}, "20200229"},
                                 {{119, 188}, nombre},
                                 {{403, 437}, "AES9121000418450200051332"}});
}

/// Una remesa de la que no hay nada que decir.
ListaTextos Base() {
  return {Registro("0119143001", {{{11, 45}, "ES08000E77846772"},
                                  {{46, 115}, "PRESENTADOR"},
                                  {{116, 123}, "20261105"},
                                  {{124, 158}, "PRE2026110510203012345REF"}}),
          Registro("0219143002", {{{11, 45}, "ES08000E77846772"},
                                  {{46, 53}, "20261201"},
                                  {{54, 123}, "ACREEDOR"},
                                  {{266, 299}, "ES9121000418450200051332"}}),
          Adeudo("R1", "M1", "ANA"),
          Adeudo("R2", "M2", "LUIS"),
          Registro("04"),
          Registro("05"),
          Registro("99")};
}

Cambio Poner(std::size_t i, int desde, const std::string& texto) {
  return [=](ListaTextos& r) {
    remesa::EscribirCampo(r[i], {desde, desde + static_cast<int>(texto.size()) - 1}, texto);
  };
}
Cambio Meter(std::size_t i, const std::string& registro) {
  return [=](ListaTextos& r) { r.insert(r.begin() + static_cast<std::ptrdiff_t>(i), registro); };
}
Cambio Quitar(std::size_t i) {
  return [=](ListaTextos& r) { r.erase(r.begin() + static_cast<std::ptrdiff_t>(i)); };
}
/// Un opcional de Ana, que es quien va la primera.
Cambio Opcional(const char* dato, int desde = 600, const std::string& texto = " ") {
  std::string registro = Registro("0319143" + std::string(dato) + Base()[kAna].substr(10, 70));
  remesa::EscribirCampo(registro, {desde, 600}, texto);
  return Meter(kLuis, registro);
}
Cambio Version(const char* version) {
  return [=](ListaTextos& r) {
    for (std::size_t i = kR01; i <= kLuis; ++i)
      r[i].replace(2, 5, version);
  };
}

constexpr auto kTodas = iso20022::Direcciones::Todas;
constexpr auto kNecesarias = iso20022::Direcciones::Necesarias;
constexpr auto kNinguna = iso20022::Direcciones::Ninguna;

struct Caso {
  std::vector<Cambio> cambios;
  std::string codigos;  // en orden
  int quedan = 2;       // adeudos que se escriben con --omitir; -1, no se puede
  iso20022::Direcciones direcciones = kNecesarias;
  bool v02 = false;
  std::uint64_t cada = 0;
  std::string bic = {};
};

const std::string kVia = "CL MAYOR 1";
const Cambio kSuiza = Poner(kAna, 403, "ACH9300762011623852957   ");

const std::vector<Caso> kCasos{
    {{}, ""},
    {{Version("19154")}, ""},
    {{Version("19445")}, ""},
    // Del fichero y del 01: no se salvan.
    {{Poner(kR01, 1, "Relación")}, "E501", -1},
    {{Quitar(kR01)}, "E502", -1},
    {{Meter(kR02, Base()[kR01])}, "E503", -1},
    {{Poner(kR01, 11, "ES09")}, "E504", -1},
    {{Poner(kR01, 116, "20261131")}, "E505", -1},
    {{Poner(kR01, 124, std::string(35, ' '))}, "E510", -1},
    {{Poner(kR01, 124, "A//B")}, "E513", -1},
    {{Poner(kLuis, 3, "19445")}, "E509", -1},
    {{Quitar(kAna), Quitar(kAna)}, "E519", -1},
    {{[](ListaTextos& r) { r.insert(r.begin() + kR04, 500, Base()[kAna]); }},
     "E520",
     -1,
     kNecesarias,
     false,
     1},
    // De un 02: se salvan los de los demás, y aquí no los hay.
    {{Poner(kR02, 11, "ES09")}, "E504 E519", -1},
    {{Poner(kR02, 46, "20260230")}, "E505 E519", -1},
    {{Poner(kR02, 54, "        ")}, "E510 E519", -1},
    {{Poner(kR02, 266, "ES92")}, "E506 E519", -1},
    {{Poner(kR02, 3, "19144")}, "E508 E519", -1},
    {{Meter(kR04, Base()[kAna]), Meter(kR04, Base()[kR02]), Poner(kR04, 266, "ES92")}, "E506"},
    // De un adeudo.
    {{Poner(kAna, 100, "20210229")}, "E505", 1},
    {{Poner(kAna, 404, "ES92")}, "E506", 1},
    {{Poner(kAna, 403, "B21000418450200051333    ")}, "E507", 1},
    {{Poner(kAna, 3, "19144")}, "E508", 1},
    {{Poner(kAna, 46, "  ")}, "E510", 1},
    {{Poner(kAna, 119, "\xA0  ")}, "E510", 1},
    {{Poner(kAna, 81, "RPRE")}, "E511", 1},
    {{Poner(kAna, 89, "00000000000")}, "E512", 1},
    {{Poner(kAna, 89, " 0000001234")}, "E512", 1},
    {{Poner(kAna, 46, "/M1")}, "E513", 1},
    {{Poner(kAna, 11, "R1\\")}, "A501 E513", 1},
    {{Meter(kR02, Base()[kAna])}, "E514", 2},
    {{Opcional("009")}, "E515", 1},
    {{Opcional("004", 81, "NOMBRE"), Poner(kLuis, 11, "R9")}, "E516", 1},
    {{Meter(kAna, Registro("0319143004"))}, "E516"},
    {{Opcional("004", 81, "NOMBRE"), Opcional("004", 81, "NOMBRE")}, "E517", 1},
    {{Opcional("006", 255, "OTRA")}, "E518", 1},
    {{Opcional("006", 186, "ES08000E77846773")}, "E504", 1},
    {{Opcional("006", 221, "ES9221000418450200051332")}, "E506", 1},
    {{Opcional("006", 81, "A//B")}, "E513", 1},
    // Lo que se cambia o se queda fuera.
    {{Poner(kAna, 119, "JOS\xC9")}, "A501"},
    {{Poner(kAna, 403, "B21000418450200051332    ")}, "A502"},
    {{Opcional("006", 221, "21000418450200051332")}, "A502"},
    {{Opcional("005")}, "A503"},
    {{Poner(kAna, 331, "1X")}, "A504"},
    {{Poner(kAna, 331, "1")}, "A504"},
    {{Poner(kAna, 331, "1ACAIXESBBXXXX")}, "A505"},
    {{Poner(kAna, 331, "1ACA1XESBB")}, "A505", 2, kNecesarias, true},
    {{Poner(kAna, 331, "1ACA1XESBB")}, ""},
    {{Poner(kAna, 331, "1ACAIXESBB"), Poner(kAna, 368, "EMISOR")}, "A506"},
    {{Poner(kAna, 331, "1J00000000T")}, "A507"},
    {{Poner(kAna, 438, "ren")}, "A508"},
    {{Poner(kAna, 85, "CA")}, "A508"},
    {{Poner(kAna, 239, "28001 MADRID"), Poner(kAna, 289, std::string(36, 'P')), Poner(kAna, 329, "ES")},
     "A509",
     2,
     kTodas},
    {{Opcional("006", 221, "ES9121000418450200051332" + std::string(10, ' ') + "SMNDA")}, "A510"},
    {{Opcional("004")}, "A511"},
    {{Opcional("006")}, "A511"},
    {{Poner(kR01, 167, "X"), Poner(kR02, 300, "X"), Poner(kAna, 582, "X")}, "A512 A512 A512"},
    {{Meter(kR04, "77")}, "A513"},
    {{Meter(kR04, Base()[kAna]), Meter(kR04, Base()[kR02]), Poner(kR04, 11, "ES03000W9614457A")}, "A514", 3},
    {{kSuiza}, "A515 A516"},
    {{kSuiza, Poner(kAna, 108, "UBSWCHZH"), Poner(kAna, 239, "8001, ZURICH"), Poner(kAna, 329, "CH")}, ""},
    {{kSuiza, Poner(kAna, 108, "UBSWCHZH"), Poner(kAna, 239, "8001 ZURICH"), Poner(kAna, 329, "CH")},
     "A516 A517",
     2,
     kNinguna},
    {{Poner(kAna, 189, kVia), Poner(kR02, 124, kVia)}, "A517"},
    {{Poner(kAna, 189, kVia)}, "A518", 2, kTodas},
    {{Poner(kAna, 239, "MADRID 280010"), Poner(kAna, 329, "ES")}, "A518", 2, kTodas},
    {{Poner(kAna, 239, "MADRID (28001)"), Poner(kAna, 329, "ES")}, "", 2, kTodas},
    {{Poner(kR02, 174, "28001-MADRID"), Poner(kR02, 264, "ES")}, "", 2, kTodas},
    {{Poner(kAna, 108, "CAIXES")}, "A519"},
    {{Poner(kAna, 11, "  ")}, "A520"},
    {{Meter(kR04, Base()[kAna]), Meter(kR04, "04")}, "A523", 3},
    {{[](ListaTextos& r) { r[kAna] += "MAS"; }}, "A524"},
    {{Poner(kAna, 403, "C")}, "A525"},
    {{}, "A526", 2, kNecesarias, false, 0, "CAIXA"},
};

class NotasXml : public Carpeta {
 protected:
  std::string codigos(const std::vector<std::filesystem::path>& rutas, iso20022::OpcionesExportacion opciones,
                      int& adeudos) const {
    std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
    fuentes.reserve(rutas.size());
    for (const auto& ruta : rutas)
      fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(ruta));
    iso20022::Exportacion exportacion(std::move(fuentes), std::move(opciones));
    std::multiset<std::string> vistos;
    const auto resumen = exportacion.examinar([&](iso20022::Nota&& nota) {
      vistos.emplace(TextoCodigo(nota.codigo));
      const QString texto = TextoNota(nota);
      EXPECT_TRUE(texto.endsWith('.') && !texto.contains(';') && !texto.contains('%')) << texto.toStdString();
    });
    adeudos = resumen->posible ? static_cast<int>(resumen->adeudos) : -1;
    std::string juntos;
    for (const std::string& codigo : vistos)
      juntos += (juntos.empty() ? "" : " ") + codigo;
    return juntos;
  }
  static std::string fichero(const ListaTextos& registros, const std::string& fin = "\r\n") {
    std::string bytes;
    for (const std::string& r : registros)
      bytes += r + fin;
    return bytes;
  }
};

}  // namespace

TEST_F(NotasXml, CadaUnaDondeToca) {
  std::set<std::string> vistos;
  for (std::size_t i = 0; i < kCasos.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "caso " << i << ", " << kCasos[i].codigos);
    const Caso& caso = kCasos[i];
    ListaTextos registros = Base();
    for (const Cambio& cambiar : caso.cambios)
      cambiar(registros);
    const auto ruta = escribir("remesa.Q19", fichero(registros));
    iso20022::OpcionesExportacion o;
    o.version = caso.v02 ? iso20022::Version::V02 : iso20022::Version::V08;
    o.direcciones = caso.direcciones;
    o.cada = caso.cada;
    o.bicDe = [&](std::string_view) { return caso.bic; };
    int adeudos = 0;
    EXPECT_EQ(codigos({ruta}, o, adeudos), caso.codigos);
    const bool hayErrores = caso.codigos.find('E') != std::string::npos;
    EXPECT_EQ(adeudos == -1, hayErrores) << "sin omitir";
    o.omitir = true;
    codigos({ruta}, o, adeudos);
    EXPECT_EQ(adeudos, caso.quedan);
    for (std::size_t p = 0; p < caso.codigos.size(); p += 5)
      vistos.insert(caso.codigos.substr(p, 4));
  }

  // De varios ficheros, y de sus líneas.
  ListaTextos otro = Base(), sin01 = Base();
  otro[kR01].replace(10, 16, "ES53000A12345678");
  sin01.erase(sin01.begin());
  const auto base = escribir("base.Q19", fichero(Base()));
  const struct {
    std::filesystem::path fichero;
    std::string codigos;
  } segundos[] = {{base, ""},
                  {escribir("otro.Q19", fichero(otro)), "A521"},
                  {escribir("sin01.Q19", fichero(sin01)), ""},
                  {escribir("lf.Q19", fichero(Base(), "\n")), "A522"}};
  for (const auto& [segundo, esperados] : segundos) {
    int adeudos = 0;
    EXPECT_EQ(codigos({base, segundo}, {}, adeudos), esperados) << segundo;
    EXPECT_EQ(adeudos, 4) << segundo;
    vistos.insert(esperados);
  }
  for (std::size_t codigo = 0; codigo <= static_cast<std::size_t>(iso20022::CodigoNota::BicAcreedor);
       ++codigo)
    EXPECT_TRUE(vistos.contains(std::string(TextoCodigo(static_cast<iso20022::CodigoNota>(codigo)))))
        << codigo;
}

// Un resumen y, con detalle, además cada uno.
TEST_F(NotasXml, LoResumidoTambienUnoAUno) {
  ListaTextos registros = Base();
  for (const std::size_t i : {kAna, kLuis}) {
    Poner(i, 119, "JOS\xC9")(registros);
    Poner(i, 189, "\xD1")(registros);
  }
  iso20022::OpcionesExportacion o;
  o.detalle = true;
  int adeudos = 0;
  EXPECT_EQ(codigos({escribir("remesa.Q19", fichero(registros))}, o, adeudos),
            "A501 A501 A501 A517 A517 A517");
}
