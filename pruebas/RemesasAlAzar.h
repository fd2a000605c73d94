#pragma once

#include <array>
#include <random>
#include <string>
#include <vector>

#include "Registros.h"
#include "remesa/CuentaNacional.h"

// Remesas y mensajes correctos, con todo lo que pueden llevar, que salen de una semilla. Posiciones y nombres
// están escritos aquí a mano: lo que se prueba no los pone.

namespace pruebas {

using ListaTextos = std::vector<std::string>;

inline std::string Cifras(std::uint64_t valor, std::size_t ancho) {
  const std::string texto = std::to_string(valor);
  return std::string(ancho - std::min(ancho, texto.size()), '0') + texto;
}

class Azar {
 public:
  explicit Azar(unsigned semilla) : motor_(semilla) {}
  /// De 0 a `limite` - 1.
  std::size_t hasta(std::size_t limite) { return motor_() % limite; }
  bool unaDe(std::size_t veces) { return hasta(veces) == 0; }
  template <std::size_t N>
  std::string unoDe(const std::array<const char*, N>& textos) {
    return textos[hasta(N)];
  }

  /// Del juego de SEPA, de 1 a `maximo`, sin blancos en los extremos.
  std::string texto(std::size_t maximo) {
    constexpr std::string_view kJuego = "ABCXYZabcxyz0189/-?:().,'+ ";
    std::string texto(1 + hasta(maximo), 'A');
    for (std::size_t i = 1; i + 1 < texto.size(); ++i)
      texto[i] = kJuego[hasta(kJuego.size())];
    return texto;
  }
  /// Una referencia que no se repite, sin dos barras seguidas.
  std::string referencia() { return "R" + Cifras(++referencias_, 6) + (unaDe(3) ? "/A-B.(1) X" : ""); }
  std::string cuentaEspanola() {
    const std::string numero = Cifras(hasta(1000000000), 10);
    for (int control = 0; control < 100; ++control) {
      const std::string ccc = (unaDe(2) ? "21000418" : "00491500") + Cifras(control, 2) + numero;
      if (remesa::ControlCcc(ccc)) return remesa::IbanDeCcc(ccc);
    }
    return "ES9121000418450200051332";
  }
  std::string cuenta() {
    return unaDe(3) ? unoDe(std::array{"DE89370400440532013000", "GB82WEST12345698765432",
                                       "CH9300762011623852957", "FR1420041010050500013M02606"})
                    : cuentaEspanola();
  }
  std::string acreedor() {
    return unoDe(std::array{"ES08", "ES53", "ES03"}) == "ES08" ? "ES08" + Cifras(hasta(3), 3) + "E77846772"
           : unaDe(2)                                          ? "ES53" + Cifras(hasta(3), 3) + "A12345678"
                                                               : "ES03000W9614457A";
  }
  std::string bic() { return unoDe(std::array{"CAIXESBBXXX", "DEUTDEFF", "BNPAFRPP"}); }
  std::string fecha() { return "2026" + Cifras(1 + hasta(12), 2) + Cifras(1 + hasta(28), 2); }
  std::string tipo() { return unoDe(std::array{"RCUR", "FRST", "FNAL", "OOFF"}); }
  std::string poblacion() { return unoDe(std::array{"MADRID", "LAS ROZAS", "L'Hospitalet-Sur", "A"}); }

 private:
  std::mt19937 motor_;
  std::uint64_t referencias_ = 0;
};

/// Registros de una remesa, con todos los opcionales y campos que pueden llevar.
class Remesas : public Azar {
 public:
  /// `agrupada`: en cada bloque van juntos los adeudos de un tipo y una categoría.
  explicit Remesas(unsigned semilla, bool agrupada) : Azar(semilla), agrupada_(agrupada) {}

  ListaTextos remesa() {
    ListaTextos r{Registro(
        "0119143001", {{{11, 45}, "ES08000E77846772"},
                       {{46, 115}, texto(70)},
                       {{116, 123}, "20261105"},
                       {{124, 158}, unaDe(4) ? "PREFSDD20261105X" : "PRE2026110510203012345REF0000000001"},
                       {{159, 166}, "21000418"}})};
    for (std::size_t acreedores = 1 + hasta(3), a = 0; a < acreedores; ++a) {
      const std::string acreedor = "ES" +
                                   std::string(a == 0   ? "08"
                                               : a == 1 ? "03"
                                                        : "53") +
                                   (a == 0   ? "000E77846772"
                                    : a == 1 ? "000W9614457A"
                                             : "000A12345678");
      for (std::size_t bloques = 1 + hasta(3); bloques > 0; --bloques)
        bloque(r, acreedor, Cifras(20261100 + 10 * a + bloques, 8));
    }
    return r;
  }

 private:
  void bloque(ListaTextos& r, const std::string& acreedor, const std::string& fecha) {
    std::string r02 = Registro(
        "0219143002",
        {{{11, 45}, acreedor}, {{46, 53}, fecha}, {{54, 123}, texto(70)}, {{266, 299}, cuentaEspanola()}});
    if (unaDe(2)) direccion(r02, 124);
    r.push_back(r02);
    std::string grupo = tipo() + (unaDe(2) ? "CASH" : "    ");
    for (std::size_t adeudos = 1 + hasta(6); adeudos > 0; --adeudos) {
      if (!agrupada_) grupo = tipo() + (unaDe(2) ? "CASH" : "    ");
      if (agrupada_ && unaDe(3)) grupo = siguiente(grupo);
      adeudo(r, grupo);
    }
  }

  /// Otro tipo, que no ha estado antes en el bloque.
  static std::string siguiente(const std::string& grupo) {
    const std::map<std::string, std::string> detras{
        {"RCUR", "FRST"}, {"FRST", "FNAL"}, {"FNAL", "OOFF"}, {"OOFF", "OOFF"}};
    return detras.at(grupo.substr(0, 4)) + grupo.substr(4);
  }

  void adeudo(ListaTextos& r, const std::string& grupo) {
    const std::string ref = unaDe(9) ? "" : referencia(), mandato = referencia();
    std::string r003 = Registro("0319143003", {{{11, 45}, ref},
                                               {{46, 80}, mandato},
                                               {{81, 88}, grupo},
                                               {{89, 99}, Cifras(1 + hasta(99999999), 11)},
                                               {{100, 107}, fecha()},
                                               {{108, 118}, unaDe(2) ? bic() : ""},
                                               {{119, 188}, texto(70)},
                                               {{403, 437}, "A" + cuenta()},
                                               {{438, 441}, unaDe(3) ? "RENT" : ""},
                                               {{442, 581}, unaDe(6) ? "" : texto(140)}});
    if (unaDe(2)) direccion(r003, 189);
    if (unaDe(2)) identificacion(r003, 331);
    r.push_back(r003);
    const std::string referencias = r003.substr(10, 70);
    if (unaDe(3)) {
      std::string r004 = Registro("0319143004" + referencias);
      if (unaDe(2)) remesa::EscribirCampo(r004, {81, 150}, texto(70));
      if (unaDe(2)) identificacion(r004, 151);
      if (unaDe(2)) identificacion(r004, 293);
      remesa::EscribirCampo(r004, {223, 292}, texto(70));
      r.push_back(r004);
    }
    if (unaDe(3)) {
      std::string r006 = Registro("0319143006" + referencias);
      remesa::EscribirCampo(r006, {81, 115}, referencia());
      if (unaDe(2)) remesa::EscribirCampo(r006, {116, 185}, texto(70));
      if (unaDe(2)) remesa::EscribirCampo(r006, {186, 220}, "ES53001A12345678");
      if (unaDe(2))
        remesa::EscribirCampo(r006, {255, 259}, "SMNDA");
      else
        remesa::EscribirCampo(r006, {221, 254}, cuenta());
      r.push_back(r006);
    }
  }

  void direccion(std::string& r, int desde) {
    const auto poner = [&](int mas, int ancho, const std::string& t) {
      remesa::EscribirCampo(r, {desde + mas, desde + mas + ancho - 1}, t);
    };
    if (!unaDe(4)) poner(0, 50, texto(50));
    poner(50, 50, (unaDe(3) ? "" : "28001 ") + poblacion());
    if (unaDe(2)) poner(100, 40, texto(35));
    poner(140, 2, unaDe(2) ? "ES" : "CH");
  }

  void identificacion(std::string& r, int desde) {
    const char letra = unoDe(std::array{"A", "I", "J"})[0];
    remesa::EscribirCampo(r, {desde, desde}, letra == 'J' ? "2" : "1");
    remesa::EscribirCampo(r, {desde + 1, desde + 36}, letra + (letra == 'A' ? bic() : texto(35)));
    if (letra != 'A' && unaDe(2)) remesa::EscribirCampo(r, {desde + 37, desde + 71}, texto(35));
  }

  bool agrupada_;
};

}  // namespace pruebas
