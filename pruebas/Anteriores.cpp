#include <QCoreApplication>
#include <map>
#include <random>
#include <set>
#include <unordered_map>

#include "Carpeta.h"
#include "Registros.h"
#include "anteriores/Cruce.h"
#include "iso20022/Exportacion.h"
#include "remesa/Fichero.h"

using namespace anteriores;
using namespace remesa;
namespace fs = std::filesystem;

namespace {

constexpr const char* kMotivoDado = "AM04";

struct Debe {
  std::string acreedor = "ES33000B99654105", fecha = "20261201";
  std::string mandato = {}, referencia = {}, importe = "00000001000", concepto = "CUOTA";
  std::string cuenta = "ES9121000418450200051332", tipo = "RCUR", firma = "20260101";
  bool con006 = false;
};

/// Una remesa con un bloque por adeudo, o sus devoluciones ('2').
std::vector<std::string> Fichero(const std::vector<Debe>& adeudos, std::string_view identificacion,
                                 char cifra = '0') {
  const std::string c(1, cifra);
  std::vector<std::string> r{
      pruebas::Registro(c + "119143001", {{kIdentificadorPresentador, "ES33000B99654105"},
                                          {kFechaCreacion, "20261124"},
                                          {kIdentificacionFichero, identificacion}})};
  for (const Debe& d : adeudos) {
    r.push_back(pruebas::Registro(c + "219143002", {{kIdentificadorAcreedor, d.acreedor},
                                                    {kFechaCobro, cifra == '0' ? d.fecha : "20271231"}}));
    r.push_back(pruebas::Registro(c + "319143003", {{kReferenciaAdeudo, d.referencia},
                                                    {kReferenciaMandato, d.mandato},
                                                    {kTipoAdeudo, d.tipo},
                                                    {kImporteAdeudo, d.importe},
                                                    {kFechaFirma, d.firma},
                                                    {kClaseCuenta, "A"},
                                                    {kCuentaDeudor, d.cuenta},
                                                    {kConcepto, d.concepto},
                                                    {kMotivo, cifra == '0' ? "" : kMotivoDado},
                                                    {kFechaCobroOriginal, cifra == '0' ? "" : d.fecha}}));
    if (d.con006)
      r.push_back(pruebas::Registro(
          "0319143006",
          {{kReferenciaAdeudo, d.referencia}, {kReferenciaMandato, d.mandato}, {kEntidadOriginal, "SMNDA"}}));
    r.push_back(pruebas::Registro(c + "4"));
  }
  r.push_back(pruebas::Registro(c + "5"));
  r.push_back(pruebas::Registro("99"));
  return r;
}

std::string Unidos(const std::vector<std::string>& registros, std::string_view fin = "\r\n") {
  std::string bytes;
  for (const std::string& registro : registros)
    bytes.append(registro).append(fin);
  return bytes;
}

/// Código, fichero y registro de antes.
using Dicho = std::tuple<std::string, std::string, std::uint64_t>;

class Anteriores : public pruebas::Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    fs::create_directories(carpeta_ / "antes/dentro");
  }
  std::shared_ptr<const Indice> indice(std::shared_ptr<const Indice> anterior = {}) const {
    return Indice::Hacer({.carpetas = {carpeta_ / "antes"}, .desde = LeerFecha("20250101")},
                         std::move(anterior));
  }
  fs::path antes(const std::string& nombre, const std::vector<Debe>& adeudos, std::string_view identificacion,
                 char cifra = '0', std::string_view fin = "\r\n") const {
    return escribir("antes/" + nombre, Unidos(Fichero(adeudos, identificacion, cifra), fin));
  }
  /// Lo que se dice, por el registro de la remesa nueva.
  static std::map<std::uint64_t, std::vector<Dicho>> Cruzado(const Indice& indice, const fs::path& ruta) {
    std::map<std::uint64_t, std::vector<Dicho>> dichos;
    CruzarFichero(
        indice, ruta,
        [&](Hallazgo&& h) {
          ASSERT_TRUE(h.antes);
          dichos[h.registro].emplace_back(TextoCodigo(h.codigo),
                                          fs::path(h.antes->fichero).filename().string(), h.antes->registro);
        },
        [] { return true; });
    return dichos;
  }
};

// Como el índice, pero mirando todos los de antes de uno en uno, con sus textos.
class Lento {
 public:
  struct Suyo {
    Debe debe;
    std::string fichero;
    std::uint64_t registro;
    bool volvio = false;
  };
  std::vector<Suyo> todos;

  /// Los que cada código puede nombrar.
  std::map<std::string, std::set<std::pair<std::string, std::uint64_t>>> candidatos(const Debe& d) const {
    std::map<std::string, std::set<std::pair<std::string, std::uint64_t>>> c;
    std::string ultima;
    for (const Suyo& s : todos)
      if (delMandato(d, s.debe) && s.debe.fecha <= d.fecha) ultima = std::max(ultima, s.debe.fecha);
    bool vivaIgual = false, vivaCerca = false, conEsta = false;
    for (const Suyo& s : todos) {
      if (!delMandato(d, s.debe)) continue;
      const bool igual = igualesEn(d, s.debe, true), cerca = igualesEn(d, s.debe, false);
      vivaIgual |= igual && !s.volvio;
      vivaCerca |= cerca && !igual && !s.volvio;
      conEsta |= s.debe.fecha == ultima && suCuenta(s.debe) == suCuenta(d);
    }
    for (const Suyo& s : todos) {
      if (!delMandato(d, s.debe)) continue;
      const auto anadir = [&](const char* codigo) { c[codigo].emplace(s.fichero, s.registro); };
      const Debe& a = s.debe;
      const bool igual = igualesEn(d, a, true), cerca = igualesEn(d, a, false);
      if (igual && !s.volvio) anadir("A418");
      if (igual && s.volvio && !vivaIgual) anadir("A425");
      if (cerca && !s.volvio) anadir("A419");
      if (cerca && s.volvio && !vivaCerca && !vivaIgual) anadir("A425");
      if (!s.volvio && (a.tipo == "OOFF" || d.tipo == "OOFF")) anadir("A420");
      if (!s.volvio && a.tipo == "FNAL" && a.fecha <= d.fecha) anadir("A421");
      if (!s.volvio && d.tipo == "FRST" && !d.con006 && a.tipo != "OOFF" && a.fecha <= d.fecha)
        anadir("A422");
      if (a.fecha == ultima && !conEsta && !d.con006) anadir("A424");
    }
    return c;
  }

 private:
  /// Las 20 cifras, en un IBAN español también.
  static std::string suCuenta(const Debe& x) { return x.cuenta.substr(x.cuenta.size() - 20); }
  static bool delMandato(const Debe& d, const Debe& a) {
    const auto quien = [](const Debe& x) { return x.acreedor.substr(0, 4) + x.acreedor.substr(7); };
    return !d.mandato.empty() && quien(d) == quien(a) && d.mandato == a.mandato;
  }
  static bool igualesEn(const Debe& d, const Debe& a, bool referencia) {
    if (d.importe != a.importe) return false;
    if (referencia) return !d.referencia.empty() && d.referencia == a.referencia;
    const auto dia = [](const Debe& x) { return std::chrono::sys_days(*LeerFecha(x.fecha)); };
    return d.concepto == a.concepto && std::abs((dia(d) - dia(a)).count()) < 20;
  }
};

TEST_F(Anteriores, ComoMirarlosTodos) {
  for (unsigned semilla = 1; semilla <= 25; ++semilla) {
    SCOPED_TRACE(semilla);
    std::mt19937 azar(semilla);
    const auto de = [&](std::initializer_list<const char*> valores) {
      return *(valores.begin() + azar() % valores.size());
    };
    const auto algunos = [&](std::size_t cuantos) {
      std::vector<Debe> adeudos(cuantos);
      for (Debe& d : adeudos) {
        d.acreedor = de({"ES33000B99654105", "ES33001B99654105", "ES53000A12345678"});
        d.mandato = de({"M1", "M2", "M3", "M4", "M5", ""});
        d.referencia = de({"R1", "R2", "R3", ""});
        d.importe = de({"00000001000", "00000001001"});
        d.concepto = de({"CUOTA", "OTRA"});
        d.fecha = de({"20261101", "20261112", "20261120", "20261121", "20261201", "20270101"});
        d.tipo = de({"RCUR", "RCUR", "RCUR", "RCUR", "RCUR", "RCUR", "FRST", "FNAL", "OOFF"});
        d.cuenta = de({"ES9121000418450200051332", "21000418450200051332", "ES7921000813610123456789"});
        d.con006 = azar() % 4 == 0;
      }
      return adeudos;
    };
    Lento lento;
    std::shared_ptr<const Indice> hecho;
    // Tres veces: nuevo, con un fichero cambiado y con uno menos. Ha de ser como si se hiciera otra vez.
    std::map<std::string, std::vector<Debe>> ficheros;
    for (int vez = 0; vez < 3; ++vez) {
      if (vez == 2) {
        fs::remove(carpeta_ / "antes" / ficheros.begin()->first);
        ficheros.erase(ficheros.begin());
      }
      for (int i = 0; i < (vez == 0 ? 4 : vez == 1 ? 1 : 0); ++i) {
        const std::string nombre = (i % 2 == 0 ? "f" : "dentro/f") + std::to_string(i) + ".Q19";
        ficheros[nombre] = algunos(1 + azar() % 12 + (vez == 1 ? 20 : 0));
        antes(nombre, ficheros[nombre], "PRE" + nombre, '0', azar() % 2 == 0 ? "\r\n" : "\n");
      }
      // Vuelven algunos, todos los que son el mismo adeudo del mismo día.
      std::vector<Debe> vueltos;
      lento.todos.clear();
      for (const auto& [nombre, adeudos] : ficheros) {
        std::uint64_t registro = 0;
        for (const Debe& d : adeudos) {
          registro += 3;
          lento.todos.push_back({d, fs::path(nombre).filename().string(), registro});
          if (d.con006) ++registro;
          if (azar() % 6 == 0 && !d.mandato.empty() && !d.referencia.empty()) vueltos.push_back(d);
        }
      }
      for (Lento::Suyo& s : lento.todos)
        for (const Debe& v : vueltos)
          s.volvio |= s.debe.acreedor.substr(7) == v.acreedor.substr(7) && s.debe.mandato == v.mandato &&
                      s.debe.referencia == v.referencia && s.debe.importe == v.importe &&
                      s.debe.fecha == v.fecha;
      for (Debe& v : vueltos)
        v.con006 = false;
      antes("vueltas.Q19", vueltos, "DEV", '2');
      hecho = indice(hecho);
      ASSERT_TRUE(hecho->omitidos().empty()) << hecho->omitidos().front().causa;
      ASSERT_EQ(hecho, indice(hecho)) << "nada ha cambiado";
      const std::vector<Debe> nuevos = algunos(30);
      const auto dichos = Cruzado(*hecho, escribir("nueva.Q19", Unidos(Fichero(nuevos, "PRENUEVA"))));
      std::uint64_t registro = 0;
      for (const Debe& d : nuevos) {
        registro += 3;
        auto esperados = lento.candidatos(d);
        const auto suyos = dichos.find(registro);
        std::set<std::string> codigos;
        std::pair<std::string, std::uint64_t> enviado;
        for (const auto& [codigo, fichero, suRegistro] :
             suyos == dichos.end() ? std::vector<Dicho>() : suyos->second) {
          EXPECT_TRUE(esperados[codigo].contains({fichero, suRegistro})) << codigo << fichero << suRegistro;
          EXPECT_TRUE(codigos.insert(codigo).second) << codigo;
          if (codigo == "A418") enviado = {fichero, suRegistro};
        }
        for (auto& [codigo, cuales] : esperados) {
          // Del que ya se ha dicho que es el mismo no se repite que está cerca.
          if (codigo == "A419" && !codigos.contains(codigo)) cuales.erase(enviado);
          if (codigo == "A419" && !codigos.contains(codigo) && codigos.contains("A418")) continue;
          EXPECT_TRUE(cuales.empty() || codigos.contains(codigo))
              << codigo << " falta en el registro " << registro;
        }
        if (d.con006) ++registro;
      }
    }
  }
}

TEST_F(Anteriores, DeDosHuellasIgualesNoSeAcusa) {
  std::unordered_map<std::uint32_t, std::string> vistos;
  std::string uno, otro;
  for (int i = 0; uno.empty(); ++i) {
    const std::string concepto = "CONCEPTO " + std::to_string(i);
    const auto [hay, nuevo] = vistos.emplace(static_cast<std::uint32_t>(Huella(concepto)), concepto);
    if (!nuevo) uno = hay->second, otro = concepto;
  }
  antes("a.Q19", {{.mandato = "M", .referencia = "R1", .concepto = uno}}, "PREA");
  const auto nueva = [&](const std::string& concepto) {
    return escribir("n.Q19",
                    Unidos(Fichero({{.mandato = "M", .referencia = "R2", .concepto = concepto}}, "PREN")));
  };
  EXPECT_EQ(Cruzado(*indice(), nueva(uno)).size(), 1U);
  EXPECT_TRUE(Cruzado(*indice(), nueva(otro)).empty());
}

TEST_F(Anteriores, ElMismoFicheroYLaMismaRemesaEnXml) {
  const std::vector<Debe> adeudos{{.mandato = "M", .referencia = "R"}, {.mandato = "N", .referencia = "S"}};
  const fs::path uno = antes("uno.Q19", adeudos, "PRE2026112412003000000ACUARIO000000");
  EXPECT_TRUE(Cruzado(*indice(), uno).empty());
  EXPECT_EQ(CruzarFichero(
                *indice(), uno, [](Hallazgo&&) {}, [] { return true; })
                .elMismo,
            uno);
  // Otro con lo mismo, y con otros fines de línea.
  const std::map<std::uint64_t, std::vector<Dicho>> guardado{{0, {{"A426", "uno.Q19", 1}}}};
  const fs::path copia = escribir("copia.Q19", leer(uno));
  EXPECT_EQ(Cruzado(*indice(), copia), guardado);
  EXPECT_EQ(
      Cruzado(*indice(),
              escribir("lf.Q19", Unidos(Fichero(adeudos, "PRE2026112412003000000ACUARIO000000"), "\n"))),
      guardado);
  // Con otra identificación son otros; con la misma y otros adeudos, la identificación se repite.
  const auto codigos = [&](const std::vector<Debe>& debes, const char* identificacion) {
    std::string dichos;
    for (const auto& [registro, suyos] :
         Cruzado(*indice(), escribir("n.Q19", Unidos(Fichero(debes, identificacion)))))
      for (const auto& [codigo, fichero, otro] : suyos)
        dichos += codigo + "@" + std::to_string(registro) + " ";
    return dichos;
  };
  EXPECT_EQ(codigos(adeudos, "PRE2026112412003000001ACUARIO000000"), "A418@3 A418@6 ");
  EXPECT_EQ(codigos({{.mandato = "Z", .referencia = "Z"}}, "PRE2026112412003000000ACUARIO000000"), "E412@1 ");
  EXPECT_EQ(GuardadaAntes(*indice(), LeerFichero(copia), [] { return true; }), uno);
  // Lo que ya no está, o ha cambiado, no se dice.
  const auto anterior = indice();
  antes("uno.Q19", {adeudos.front()}, "PRE2026112412003000000ACUARIO000000");
  EXPECT_TRUE(Cruzado(*anterior, escribir("n.Q19", Unidos(Fichero(adeudos, "PREX")))).empty());
  fs::remove(uno);
  EXPECT_TRUE(Cruzado(*anterior, escribir("n.Q19", Unidos(Fichero(adeudos, "PREX")))).empty());
  EXPECT_TRUE(indice(anterior)->entradas().empty());
  // La misma, guardada en XML, donde sus textos van en el juego de SEPA.
  std::string conEnes = leer(fs::path(DIR_EJEMPLOS) / "gimnasio-acuario.Q19");
  for (std::size_t i = 0; (i = conEnes.find("SEPA/ACU", i)) != std::string::npos;)
    conEnes[i + 2] = '\xD1';
  const fs::path remesa = escribir("enes.Q19", conEnes);
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(remesa));
  iso20022::OpcionesExportacion opciones;
  opciones.omitir = true;
  iso20022::Exportacion exportacion(std::move(fuentes), opciones);
  ASSERT_TRUE(exportacion.examinar([](iso20022::Nota&&) {}));
  exportacion.escribir(carpeta_ / "antes/uno.xml");
  const auto deXml = Cruzado(*indice(), remesa);
  ASSERT_EQ(deXml.size(), 1U);
  EXPECT_EQ(deXml.begin()->second, (std::vector<Dicho>{{"A426", "uno.xml", 1}}));
}

TEST_F(Anteriores, UnMandatoSinUsarCaduca) {
  antes("viejo.Q19", {{.fecha = "20231101", .mandato = "M"}}, "PREA");
  const auto todo = Indice::Hacer({.carpetas = {carpeta_ / "antes"}});
  const struct {
    Debe debe;
    const char* codigo;
  } casos[] = {
      {{.fecha = "20261101", .mandato = "M", .concepto = "OTRO"}, nullptr},
      {{.fecha = "20261102", .mandato = "M", .concepto = "OTRO"}, "A423"},
      {{.fecha = "20261102", .mandato = "N", .firma = "20231101"}, "A423"},
      {{.fecha = "20261102", .mandato = "N", .firma = "20231102"}, nullptr},
      {{.acreedor = "ES53000A12345678", .fecha = "20261102", .mandato = "M", .firma = "20200101"}, nullptr},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.debe.fecha + caso.debe.mandato + caso.debe.firma);
    const fs::path nueva = escribir("n.Q19", Unidos(Fichero({caso.debe}, "PREN")));
    const auto dichos = Cruzado(*todo, nueva);
    std::vector<Dicho> esperados;
    if (caso.codigo != nullptr) esperados = {{caso.codigo, "viejo.Q19", 3}};
    EXPECT_EQ(dichos.empty() ? std::vector<Dicho>() : dichos.at(3), esperados);
    EXPECT_TRUE(Cruzado(*indice(), nueva).empty()) << "los de antes de la fecha pedida no cuentan";
  }
}

// De lo que no se puede tomar, una línea; y nada de las carpetas cambia.
TEST_F(Anteriores, CarpetasHostiles) {
  const std::vector<Debe> adeudos{{.mandato = "M", .referencia = "R"}};
  antes("bueno.jpg", adeudos, "PREA");
  const std::string bytes = Unidos(Fichero(adeudos, "PREB"));
  escribir("antes/cortado.Q19", bytes.substr(0, 602 * 3));
  escribir("antes/sin02.Q19", bytes.substr(0, 602) + bytes.substr(602 * 2));
  escribir("antes/ceros.Q19",
           bytes.substr(0, 602 * 2) + std::string(700, '\0') + bytes.substr(602 * 2 + 700));
  escribir("antes/corto.Q19", bytes.substr(0, 602 * 2 + 300) + bytes.substr(602 * 3 - 2));
  escribir("antes/vacio.Q19", "");
  escribir("antes/basura.Q19", "0119143001" + std::string(100000, '\xFF'));
  escribir("antes/malo.xml", "<Document><a>");
  escribir("antes/otro.xml", "<?xml version=\"1.0\"?><factura/>");
  escribir("fuera.Q19", bytes);
  escribir("carpeta no.Q19", bytes);
  std::size_t omitidos = 8;
  std::error_code sinEnlaces;
  fs::create_symlink(carpeta_ / "fuera.Q19", carpeta_ / "antes/enlace.Q19", sinEnlaces);
  if (!sinEnlaces) ++omitidos;
  fs::create_directory_symlink(carpeta_ / "antes", carpeta_ / "antes/dentro/bucle", sinEnlaces);
  const auto hecho =
      Indice::Hacer({.carpetas = {carpeta_ / "antes", carpeta_ / "no está", carpeta_ / "carpeta no.Q19",
                                  carpeta_ / "antes/dentro", carpeta_ / "antes"}});
  EXPECT_EQ(hecho->omitidos().size(), omitidos);
  EXPECT_EQ(hecho->carpetasSinLeer().size(), 2U);
  ASSERT_EQ(hecho->entradas().size(), 1U);
  EXPECT_EQ(hecho->ficheros()[0].hallado.ruta.filename(), "bueno.jpg");
  // Detenido a medias, lo dice.
  int veces = 0;
  EXPECT_FALSE(Indice::Hacer({.carpetas = {carpeta_ / "antes"}, .hilos = 1}, {}, [&](auto, auto) {
                 return ++veces < 12;
               })->completo());
}

}  // namespace
