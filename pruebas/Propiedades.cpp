#include <map>

#include "Carpeta.h"
#include "Registros.h"
#include "remesa/Fichero.h"
#include "remesa/Fusion.h"
#include "remesa/Guardado.h"

// Lo que se cumple con cualesquiera remesas. Lo que debe salir lo calcula aquí una segunda implementación,
// llana a propósito: posiciones escritas a mano (desde 0) y enteros. Todo sale de la semilla, que se dice al
// fallar.

using namespace pruebas;

namespace {

constexpr unsigned kSemillas = 100;

using Registros = std::vector<std::string>;

std::string codigo(const std::string& registro) {
  return registro.substr(0, 2);
}
bool esDeTotales(const std::string& registro) {
  return codigo(registro) == "04" || codigo(registro) == "05" || codigo(registro) == "99";
}
std::string a600(std::string registro) {
  registro.resize(600, ' ');
  return registro;
}

std::string cifras(long long valor, std::size_t ancho) {
  std::string texto = std::to_string(valor);
  return std::string(ancho - texto.size(), '0') + texto;
}

class Azar {
 public:
  explicit Azar(unsigned semilla) : motor_(semilla) {}
  /// De 0 a `limite` - 1.
  std::size_t hasta(std::size_t limite) { return motor_() % limite; }
  bool unaDe(std::size_t veces) { return hasta(veces) == 0; }

  /// Un adeudo con referencia única y, a veces, sus registros opcionales.
  void adeudo(Registros& en) {
    const std::string referencias = cifras(++adeudos_, 12) + std::string(58, unaDe(3) ? 'M' : ' ');
    en.push_back("0319143003" + referencias + "RCUR    " +
                 cifras(static_cast<long long>(hasta(10000000)), 11) + relleno());
    for (const char* dato : {"004", "005", "006"})
      if (unaDe(12)) en.push_back("0319143" + std::string(dato) + referencias + relleno());
  }

  /// Varios acreedores, cada uno con sus bloques; los totales, a veces sin rellenar, mal o ninguno.
  Registros remesa() {
    Registros registros;
    if (!unaDe(8)) registros.push_back("0119143001" + relleno());
    const bool sinTotales = unaDe(8);
    for (std::size_t acreedores = 1 + hasta(2); acreedores > 0; --acreedores) {
      for (std::size_t bloques = 1 + hasta(3); bloques > 0; --bloques) {
        registros.push_back("0219143002" + std::string(35, static_cast<char>('A' + hasta(26))) + "2026" +
                            cifras(1 + static_cast<long long>(hasta(12)), 2) + "15" + relleno());
        for (std::size_t n = hasta(6); n > 0; --n)
          adeudo(registros);
        if (unaDe(10)) registros.push_back("77de otra cosa" + relleno());
        if (!sinTotales) registros.push_back("04" + std::string(78, unaDe(2) ? '9' : ' ') + relleno());
      }
      if (!sinTotales) registros.push_back("05" + std::string(70, ' ') + relleno());
    }
    if (!sinTotales) registros.push_back("99" + std::string(35, '0') + relleno());
    return registros;
  }

  /// Los registros, casi todos de 600, con los fines de línea que el programa admite.
  std::string fichero(const Registros& registros) {
    std::string bytes;
    const bool mezclados = unaDe(4);
    for (std::string registro : registros) {
      if (!unaDe(6)) registro = a600(registro);
      bytes += registro + (mezclados && unaDe(2) ? "\r" : "\r\n");
      if (mezclados && unaDe(5)) bytes += "\r\n";
    }
    if (unaDe(4)) bytes.resize(bytes.find_last_not_of("\r\n") + 1);
    return bytes;
  }

 private:
  /// Detrás de los campos que se miran: nada, datos o más de los que caben.
  std::string relleno() {
    constexpr std::size_t kLargos[] = {0, 0, 20, 400, 511, 512, 700};
    return std::string(kLargos[hasta(std::size(kLargos))], unaDe(2) ? ' ' : 'x');
  }

  std::mt19937 motor_;
  long long adeudos_ = 0;
};

/// Lo que debe quedar en la acumulación, y luego en el fichero, al importar uno tras otro.
Registros unionLlana(const std::vector<Registros>& ficheros) {
  Registros acumulado;
  for (const Registros& fichero : ficheros) {
    const bool primera = acumulado.empty();
    std::erase_if(acumulado, esDeTotales);
    for (const std::string& registro : fichero) {
      const bool cabecera = codigo(registro) == "01" || codigo(registro) == "02";
      if (codigo(registro) == "03" || esDeTotales(registro) || (cabecera && primera))
        acumulado.push_back(registro);
    }
  }
  long long importe = 0;
  long long adeudos = 0;
  long long registros = 0;
  std::string fecha;
  for (std::string& r : acumulado) {
    if (codigo(r) != "01") ++registros;
    if (codigo(r) == "02") fecha = r.substr(45, 8);
    if (r.substr(0, 2) == "03" && r.substr(7, 3) == "003") {
      ++adeudos;
      importe += std::stoll(r.substr(88, 11));
    }
    const std::size_t donde = codigo(r) == "04" ? 45 : codigo(r) == "05" ? 37 : 2;
    if (codigo(r) == "04") r.replace(37, fecha.size(), fecha);
    if (esDeTotales(r))
      r.replace(donde, 35,
                cifras(importe, 17) + cifras(adeudos, 8) + cifras(registros + (codigo(r) == "99"), 10));
  }
  for (std::string& r : acumulado)
    r = a600(r);
  return acumulado;
}

class Propiedades : public Carpeta {};

}  // namespace

TEST_F(Propiedades, LaFusionConservaLosAdeudosYSusTotales) {
  for (unsigned semilla = 1; semilla <= kSemillas; ++semilla) {
    SCOPED_TRACE(testing::Message() << "semilla " << semilla);
    Azar azar(semilla);
    std::vector<Registros> ficheros(1 + azar.hasta(5));
    remesa::ListaRegistros acumulado;
    Registros entran;  // los "03", sin lo que pase de 600
    remesa::Totales totales;
    for (Registros& registros : ficheros) {
      registros = azar.remesa();
      for (const std::string& registro : registros)
        if (codigo(registro) == "03") entran.push_back(a600(registro));
      remesa::Importar(acumulado, remesa::LeerFichero(escribir("f.Q19", azar.fichero(registros))));
      totales = remesa::RecalcularTotales(acumulado);
    }
    remesa::GuardarRemesa(carpeta_ / "salida", acumulado);
    const Registros salen = Bytes(remesa::LeerFichero(carpeta_ / "salida"));
    ASSERT_EQ(salen, unionLlana(ficheros));

    Registros deudores;
    std::map<std::string, int> veces;
    long long importe = 0;
    for (const std::string& registro : salen) {
      if (codigo(registro) != "03") continue;
      deudores.push_back(registro);
      if (registro.substr(7, 3) != "003") continue;
      ++veces[registro.substr(10, 12)];
      importe += std::stoll(registro.substr(88, 11));
    }
    ASSERT_EQ(deudores, entran);
    for (const auto& [referencia, cuantas] : veces)
      ASSERT_EQ(cuantas, 1) << referencia;
    ASSERT_EQ(totales.importe, importe);
    ASSERT_EQ(totales.adeudos, static_cast<int>(veces.size()));
  }
}
