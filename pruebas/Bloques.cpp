#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <set>

#include "Carpeta.h"
#include "Registros.h"
#include "consola/UnionBloques.h"
#include "ficheros/EscrituraSegura.h"
#include "remesa/BloquesListas.h"
#include "remesa/Comprobacion.h"
#include "remesa/Guardado.h"
#include "remesa/Separacion.h"

// La reunión por bloques, contra una segunda implementación, llana a propósito: posiciones escritas a mano
// (desde 0), búsquedas lineales y todo en memoria.

using namespace pruebas;

namespace {

using Registros = std::vector<std::string>;

std::string A600(std::string registro) {
  registro.resize(600, ' ');
  return registro;
}

std::string Cifras(long long valor, std::size_t ancho) {
  const std::string texto = std::to_string(valor);
  return std::string(ancho - texto.size(), '0') + texto;
}

std::string SinFinales(const std::string& texto) {
  return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

struct BloqueLlano {
  std::string clave, cabecera;
  std::vector<Registros> adeudos;
  std::string acreedor() const { return SinFinales(A600(cabecera).substr(10, 35)); }
  std::string fecha() const { return A600(cabecera).substr(45, 8); }
};

bool FechaBuena(const std::string& fecha) {
  return fecha.starts_with("2026") && fecha != "20261301";
}

std::string ClaveLlana(const std::string& r) {
  const BloqueLlano b{{}, r, {}};
  if (r.size() != 600 || b.acreedor().empty() || !FechaBuena(b.fecha())) return "mala " + r;
  return b.acreedor() + "|" + b.fecha() + "|" + SinFinales(r.substr(265, 34));
}

/// La remesa que queda al reunir `previo` con `acumulada`; "sin dueño" si no se puede.
Registros UnirLlano(const Registros& acumulada, const Registros& previo) {
  std::string presentador;
  std::vector<BloqueLlano> bloques;
  Registros acreedores;
  for (const Registros* fichero : {&acumulada, &previo}) {
    std::size_t enCurso = bloques.size();
    bool hay = false, hayCabecera = false;
    for (const std::string& r : *fichero) {
      const std::string codigo = r.substr(0, 2);
      if (codigo == "01" && presentador.empty()) presentador = r;
      if (codigo == "02") {
        const auto suyo = std::ranges::find(bloques, ClaveLlana(r), &BloqueLlano::clave);
        enCurso = static_cast<std::size_t>(suyo - bloques.begin());
        if (suyo == bloques.end()) bloques.push_back({ClaveLlana(r), r, {}});
        hay = false;
        hayCabecera = true;
        if (std::ranges::find(acreedores, bloques[enCurso].acreedor()) == acreedores.end())
          acreedores.push_back(bloques[enCurso].acreedor());
      } else if (codigo == "03") {
        if (!hayCabecera) return {"sin dueño"};
        if (!hay || A600(r).substr(7, 3) == "003") bloques[enCurso].adeudos.emplace_back();
        bloques[enCurso].adeudos.back().push_back(r);
        hay = true;
      }
    }
    std::erase_if(bloques, [](const BloqueLlano& b) { return b.adeudos.empty(); });
    std::erase_if(acreedores, [&](const std::string& a) {
      return std::ranges::none_of(bloques, [&](const BloqueLlano& b) { return b.acreedor() == a; });
    });
  }
  Registros salida;
  if (!presentador.empty()) salida.push_back(presentador);
  long long general[3] = {0, 0, presentador.empty() ? 1 : 2};
  for (const std::string& acreedor : acreedores) {
    std::vector<BloqueLlano> suyos;
    std::ranges::copy_if(bloques, std::back_inserter(suyos),
                         [&](auto& b) { return b.acreedor() == acreedor; });
    std::ranges::stable_sort(suyos, {}, &BloqueLlano::fecha);
    long long suma[3] = {0, 0, 1};
    for (BloqueLlano& b : suyos) {
      long long delBloque[3] = {0, 0, 2};
      for (Registros& adeudo : b.adeudos)
        std::stable_sort(
            adeudo.begin() + (A600(adeudo[0]).substr(7, 3) == "003"), adeudo.end(),
            [](const auto& x, const auto& y) { return A600(x).substr(7, 3) < A600(y).substr(7, 3); });
      std::ranges::stable_sort(b.adeudos, {}, [](const auto& a) { return A600(a[0]).substr(10, 35); });
      salida.push_back(b.cabecera);
      for (const Registros& adeudo : b.adeudos)
        for (const std::string& r : adeudo) {
          salida.push_back(r);
          ++delBloque[2];
          if (A600(r).substr(7, 3) != "003") continue;
          ++delBloque[1];
          delBloque[0] += std::strtoll(A600(r).substr(88, 11).c_str(), nullptr, 10);
        }
      salida.push_back(A600("04" + A600(acreedor).substr(0, 35) + b.fecha() + Cifras(delBloque[0], 17) +
                            Cifras(delBloque[1], 8) + Cifras(delBloque[2], 10)));
      for (int i = 0; i < 3; ++i)
        suma[i] += delBloque[i];
    }
    salida.push_back(A600("05" + A600(acreedor).substr(0, 35) + Cifras(suma[0], 17) + Cifras(suma[1], 8) +
                          Cifras(suma[2], 10)));
    for (int i = 0; i < 3; ++i)
      general[i] += suma[i];
  }
  if (!salida.empty())
    salida.push_back(A600("99" + Cifras(general[0], 17) + Cifras(general[1], 8) + Cifras(general[2], 10)));
  return salida;
}

class Azar {
 public:
  explicit Azar(unsigned semilla) : motor_(semilla) {}
  std::size_t hasta(std::size_t limite) { return motor_() % limite; }
  bool unaDe(std::size_t veces) { return hasta(veces) == 0; }
  template <class Lista>
  const auto& de(const Lista& lista) {
    return lista[hasta(std::size(lista))];
  }

  std::string cabecera() {
    static const std::string kAcreedores[] = {"ES01", "ES02", "ES02 X", ""};
    static const std::string kFechas[] = {"20261201", "20261115", "20261301", "XX"};
    const std::string& acreedor = kAcreedores[unaDe(8) ? 3 : hasta(3)];
    const std::string& fecha = kFechas[unaDe(6) ? 2 + hasta(2) : hasta(2)];
    std::string r = "0219143002" + A600(acreedor).substr(0, 35) + (fecha + "      ").substr(0, 8) +
                    A600(unaDe(2) ? "NOMBRE" : "OTRO").substr(0, 212) + (unaDe(3) ? "CUENTA2" : "CUENTA1");
    r = A600(r);
    if (unaDe(12)) r.resize(45 + hasta(700), ' ');
    return r;
  }

  std::string registro03(const std::string& dato) {
    static const std::string kComienzos[] = {"", "0000000000000000", "00000000000000000000000000000000",
                                             "\xD1", "REF"};
    const std::string referencia = A600(de(kComienzos) + std::to_string(hasta(12))).substr(0, 35);
    std::string r = A600("0319143" + dato + referencia + std::string(43, ' ') +
                         Cifras(static_cast<long long>(hasta(100000000000)), 11) + std::to_string(++numero_));
    if (unaDe(15)) r.resize(45 + hasta(900), 'x');
    return r;
  }

  Registros remesa() {
    static const std::string kDatos[] = {"006", "004", "005", "009", "\xFF  "};
    Registros registros;
    if (!unaDe(4)) registros.push_back(A600("0119143001" + std::to_string(hasta(3))));
    if (unaDe(40)) registros.push_back(registro03("003"));
    for (std::size_t bloques = hasta(6); bloques > 0; --bloques) {
      registros.push_back(cabecera());
      for (std::size_t n = hasta(12); n > 0; --n) {
        registros.push_back(registro03(unaDe(3) ? de(kDatos) : "003"));
        if (unaDe(12))
          registros.push_back(unaDe(2) ? A600("04") : unaDe(2) ? "" : "77" + std::string(hasta(80000), 'y'));
      }
      if (!unaDe(5)) registros.push_back(A600(unaDe(3) ? "05" : "04"));
    }
    registros.push_back(A600("99"));
    return registros;
  }

  std::mt19937& motor() { return motor_; }

 private:
  std::mt19937 motor_;
  int numero_ = 0;
};

std::string Fichero(const Registros& registros) {
  std::string bytes;
  for (const std::string& r : registros)
    bytes += r + "\r\n";
  return bytes;
}

class Bloques : public Carpeta {
 protected:
  /// Lo que escribe la consola, o "sin dueño".
  std::string porFlujo(const std::vector<std::filesystem::path>& rutas, std::size_t bufer) const {
    consola::UnionBloques lectura(bufer);
    for (const auto& ruta : rutas) {
      lectura.leer(ruta);
      if (lectura.reparto().indice().avisos().sinDueno != 0) return "sin dueño";
    }
    lectura.reparto().ordenar();
    std::string salida;
    EscribirBloques(lectura.reparto(), Enteros(lectura.reparto()), lectura.fuente(), {},
                    [&](std::string_view bytes) { salida += bytes; });
    lectura.terminar();
    return salida;
  }
};

}  // namespace

TEST_F(Bloques, LaListaYElFlujoDanLoDelModelo) {
  int reunidas = 0;
  for (unsigned semilla = 1; semilla <= 200; ++semilla) {
    SCOPED_TRACE(testing::Message() << "semilla " << semilla);
    Azar azar(semilla);
    Registros esperada;
    std::vector<std::string> entran;
    remesa::ListaRegistros acumulada;
    std::vector<std::filesystem::path> rutas;
    std::deque<remesa::ListaRegistros> previas;
    for (std::size_t n = 1 + azar.hasta(4); n > 0 && esperada != Registros{"sin dueño"}; --n) {
      const Registros registros = azar.remesa();
      for (const std::string& r : registros)
        if (r.starts_with("03")) entran.push_back(r);
      rutas.push_back(escribir(std::to_string(n), Fichero(registros)));
      esperada = UnirLlano(esperada, registros);
      const Registros antes = Bytes(acumulada);
      previas.push_back(remesa::LeerFichero(rutas.back()));
      const auto reunion = ReunirBloques(acumulada, previas.back());
      ASSERT_EQ(reunion.impide.has_value(), esperada == Registros{"sin dueño"});
      ASSERT_EQ(Bytes(acumulada), reunion.impide ? antes : esperada);
    }
    const bool imposible = esperada == Registros{"sin dueño"};
    std::vector<const remesa::ListaRegistros*> todas;
    std::ranges::transform(previas, std::back_inserter(todas), [](const auto& una) { return &una; });
    remesa::ListaRegistros deUnaVez;
    ASSERT_EQ(ReunirVarios(deUnaVez, todas).impide.has_value(), imposible);
    ASSERT_EQ(Bytes(deUnaVez), imposible ? Registros() : esperada);
    remesa::GuardarRemesa(carpeta_ / "lista", acumulada);
    for (const std::size_t bufer : {std::size_t{0}, std::size_t{1207}, consola::LectorRegistros::kBufer})
      ASSERT_EQ(porFlujo(rutas, bufer), imposible ? "sin dueño" : leer(carpeta_ / "lista")) << bufer;
    if (imposible) continue;
    ++reunidas;
    Registros salen;
    for (const std::string_view r : acumulada)
      if (r.starts_with("03")) salen.emplace_back(r);
    std::ranges::sort(entran);
    std::ranges::sort(salen);
    ASSERT_EQ(salen, entran);
    const Registros antes = Bytes(acumulada);
    RehacerTotales(acumulada);
    ASSERT_EQ(Bytes(acumulada), antes);
  }
  EXPECT_GT(reunidas, 100);
}

namespace {

std::string Hallazgos(const std::filesystem::path& ruta) {
  using namespace std::chrono_literals;
  std::string codigos;
  remesa::ComprobarFichero(ruta, {2026y, std::chrono::October, 5d}, [&](const remesa::Hallazgo& h) {
    codigos += std::string(TextoCodigo(h.codigo)) + '@' + std::to_string(h.registro) + ' ';
  });
  return codigos;
}

std::string ConOtroAcreedor(std::string bytes) {
  const std::string suyo = bytes.substr(602 + 10, 16);
  for (std::size_t p = 0; (p = bytes.find(suyo, p)) != std::string::npos; ++p)
    bytes.replace(p, suyo.size(), "ES08000E77846772");
  return bytes;
}

}  // namespace

// Ni al reunirlas, también con las mismas referencias en otro acreedor, ni al separarlas.
TEST_F(Bloques, DeLasLimpiasSalenLimpias) {
  std::vector<std::filesystem::path> rutas;
  for (const auto& entrada : std::filesystem::directory_iterator(DIR_DATOS "/limpias"))
    rutas.push_back(entrada.path());
  rutas.push_back(escribir("otro.Q19", ConOtroAcreedor(leer(DIR_DATOS "/limpias/un-acreedor.Q19"))));
  ASSERT_EQ(rutas.size(), 4U);
  ASSERT_EQ(Hallazgos(rutas.back()), "");
  const std::string reunida = porFlujo(rutas, consola::LectorRegistros::kBufer);
  const auto ruta = escribir("reunida.Q19", reunida);
  EXPECT_EQ(Hallazgos(ruta), "");

  using remesa::SepararPor;
  const struct {
    remesa::Separacion como;
    std::size_t partes;
  } casos[] = {
      {{SepararPor::Bloque}, 6},  {{SepararPor::Acreedor}, 3},   {{SepararPor::Fecha}, 2},
      {{SepararPor::Cada, 7}, 6}, {{SepararPor::Cada, 1000}, 1},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(static_cast<int>(caso.como.por) * 1000 + static_cast<int>(caso.como.cada));
    consola::UnionBloques lectura;
    lectura.leer(ruta);
    lectura.reparto().ordenar();
    const auto partes = Separar(lectura.reparto(), caso.como);
    EXPECT_EQ(partes.size(), caso.partes);
    const auto carpeta = carpeta_ / "partes";
    const remesa::Momento ahora{std::chrono::local_days(std::chrono::year_month_day(
                                    std::chrono::year(2026), std::chrono::October, std::chrono::day(5))) +
                                std::chrono::hours(9)};
    EXPECT_TRUE(EscribirPartes(lectura.reparto(), partes, lectura.fuente(), carpeta, caso.como, ahora));
    std::vector<std::filesystem::path> escritas;
    std::set<std::string> identificaciones;
    for (const auto& parte : partes) {
      escritas.push_back(carpeta / parte.nombre);
      // Una parte puede quedarse sin la cuenta que está en el banco de la cabecera.
      const std::string hallazgos = Hallazgos(escritas.back());
      EXPECT_TRUE(hallazgos.empty() || hallazgos == "A415@1 ") << parte.nombre << ": " << hallazgos;
      identificaciones.insert(leer(escritas.back()).substr(123, 35));
    }
    EXPECT_EQ(identificaciones.size(), partes.size());
    // Reunidas otra vez son la misma, con otra identificación.
    EXPECT_EQ(porFlujo(escritas, 0).substr(602), reunida.substr(602));
    // Sin pedirlo no se sustituye ninguna, y no queda nada a medias.
    const auto antes = leer(escritas.back());
    std::filesystem::remove(escritas.front());
    if (partes.size() > 1) {
      EXPECT_EQ(NumeroError([&] {
                  EscribirPartes(lectura.reparto(), partes, lectura.fuente(), carpeta, caso.como, ahora);
                }),
                ficheros::kYaExiste);
      EXPECT_FALSE(std::filesystem::exists(escritas.front()));
      EXPECT_EQ(leer(escritas.back()), antes);
    }
    std::filesystem::remove_all(carpeta);
  }
}

// Con las mismas referencias y la hora de antes, o con otro fichero en su sitio.
TEST_F(Bloques, UnFicheroQueCambiaEntreLasDosLecturas) {
  const std::string bytes = leer(DIR_DATOS "/limpias/un-acreedor.Q19");
  for (const bool sustituido : {false, true}) {
    const auto ruta = escribir("f.Q19", bytes);
    consola::UnionBloques lectura;
    lectura.leer(ruta);
    lectura.reparto().ordenar();
    if (sustituido) {
      const auto hora = std::filesystem::last_write_time(ruta);
      std::filesystem::rename(escribir("g.Q19", bytes), ruta);
      std::filesystem::last_write_time(ruta, hora);
    } else {
      escribir("f.Q19", ConOtroAcreedor(bytes));
      std::filesystem::last_write_time(ruta,
                                       std::filesystem::last_write_time(ruta) + std::chrono::seconds(1));
    }
    EXPECT_EQ(NumeroError([&] {
                EscribirBloques(lectura.reparto(), Enteros(lectura.reparto()), lectura.fuente(), {},
                                [](std::string_view) {});
                lectura.terminar();
              }),
              ficheros::kErrorDeAcceso);
  }
}

TEST(TotalesBloques, SoloLosLimitaSuCampo) {
  const auto totales = [](const std::string& importe, std::size_t adeudos) {
    std::vector<std::string> registros{Acreedor("ES01", "20261201")};
    registros.resize(adeudos + 1, Adeudo("R", importe));
    remesa::ListaRegistros lista = Lista(registros);
    RehacerTotales(lista);
    return std::string(LeerCampo(lista[lista.size() - 1], remesa::kImporte99));
  };
  EXPECT_EQ(totales("99999999999", 3), "00000299999999997");
  EXPECT_EQ(totales("-0000000003", 1), "000000000000000-3");
  EXPECT_EQ(totales("  12.50 EUR", 2), "00000000000000024");
  remesa::TotalesBloques muchos;
  muchos.dar(Acreedor("ES01", "20261201"));
  EXPECT_EQ(NumeroError([&] {
              const std::string adeudo = Adeudo("R", "99999999999");
              for (int i = 0; i < 1'000'001; ++i)
                muchos.dar(adeudo);
            }),
            ficheros::kDesbordamiento);
}
