// Rechazos y devoluciones de texto, en su forma breve. De sus mismos registros se hace la remesa en que se
// presentaron, se buscan en ella y se hace la siguiente.
#include <algorithm>
#include <map>

#include "Objetivo.h"
#include "devoluciones/Textos.h"
#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/TotalesNorma.h"

using namespace fuzz;
using namespace devoluciones;
using namespace remesa;

namespace {

/// Las líneas que el lector ve: acaban también en LF, y las vacías no cuentan.
std::vector<std::string> LineasLeidas(std::string_view bytes) {
  std::vector<std::string> lineas;
  for (const std::string& linea : Lineas(bytes)) {
    std::string_view resto = linea;
    const bool entera = linea.size() == kLongitudRegistro;
    for (bool queda = true; queda;) {
      const std::size_t lf = entera ? std::string_view::npos : resto.find('\n');
      queda = lf != std::string_view::npos;
      const std::string_view una = resto.substr(0, lf);
      if (una.find_first_not_of(" \t\x1A") != std::string_view::npos) lineas.emplace_back(una);
      if (queda) resto.remove_prefix(lf + 1);
    }
  }
  return lineas;
}

bool EsDevolucion(std::string_view linea) {
  return linea.starts_with("13") || linea.starts_with("23");
}

/// Los registros de presentación que habrían dado estos.
std::string Presentada(const std::vector<std::string>& lineas) {
  std::string bytes = "0119143001\r\n";
  for (std::string linea : lineas) {
    if (linea.size() < 2 || (linea[0] != '1' && linea[0] != '2')) continue;
    linea[0] = '0';
    if (Codigo(linea) == CodigoRegistro::Adeudo)
      linea.replace(2, std::min<std::size_t>(8, linea.size() - 2), "19143003");
    bytes += linea + "\r\n";
  }
  return bytes;
}

void MirarNueva(const Lote& lote, const Cotejo& cotejo, std::size_t elegidas, const RemesaNueva& nueva) {
  std::map<std::string, std::size_t> presentados;
  for (std::size_t i = 0; i < lote.size(); ++i)
    for (const std::size_t adeudo : cotejo.hallazgo(i).adeudos)
      presentados[Ajustado(cotejo.presentado(adeudo).registros.front()).substr(45)] = adeudo;
  std::size_t fuera = 0;
  for (const Fuera& una : nueva.fuera) {
    Exigir(!TextoFuera(una).isEmpty(), "se dice por qué queda fuera");
    fuera += una.adeudos;
  }
  Exigir(nueva.adeudos + fuera == elegidas, "lo elegido va o se dice por qué no");
  TotalesNorma totales;
  std::int64_t importe = 0;
  std::size_t adeudos = 0;
  for (const std::string_view registro : nueva.registros) {
    Exigir(registro.size() == kLongitudRegistro, "los registros son de 600");
    for (const TotalDebido& debido : totales.dar(registro, Clase(registro)))
      Exigir(LeerCampo(registro, debido.donde) == CifrasDe(debido.valor, debido.donde.longitud()),
             "los totales son los de la norma");
    if (Clase(registro) != ClaseRegistro::Adeudo) continue;
    ++adeudos;
    importe += ImporteDe(registro);
    Exigir(presentados.contains(std::string(registro.substr(45))),
           "cada adeudo es uno presentado, sin cambios");
  }
  Exigir(adeudos == nueva.adeudos && importe == nueva.importe, "se cuenta lo que va");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  const std::string bytes = Desplegar({reinterpret_cast<const char*>(datos), largo});
  const auto ruta = Ruta("devueltos");
  Escribir(ruta, bytes);
  Lote lote;
  try {
    lote.leer(ruta);
  } catch (const FicheroAjeno&) {
    return 0;
  }
  const auto lineas = LineasLeidas(bytes);
  Exigir(static_cast<std::size_t>(std::ranges::count_if(lineas, EsDevolucion)) == lote.size(),
         "cada registro de adeudo es una devolución");
  for (const AvisoLectura& aviso : lote.ficheros()[0].avisos)
    Exigir(!TextoAviso(aviso, lote.ficheros()[0].forma).isEmpty(), "cada aviso se explica");
  const std::size_t cuantas = lote.size();
  if (cuantas > 0) {
    lote.leer(ruta);
    Exigir(lote.size() == cuantas, "el mismo fichero no añade nada");
  }
  const auto remesa = Ruta("presentada");
  Escribir(remesa, Presentada(lineas));
  Cotejo cotejo(lote);
  cotejo.buscarEn(remesa);
  PeticionNueva peticion{{}, HabilDesde(std::chrono::year(2026) / 12 / 1), {}};
  for (std::size_t i = 0; i < lote.size(); ++i) {
    Exigir(ValoresColumnas(lote, &cotejo, i).size() == TitulosColumnas().size(),
           "cada columna tiene su valor");
    peticion.elegidas.push_back(i);
  }
  try {
    MirarNueva(lote, cotejo, lote.size(), HacerRemesa(lote, cotejo, peticion));
  } catch (const ficheros::ErrorEjecucion& error) {
    Exigir(error.numero() == 6, "solo puede no caber un total");
  }
  return 0;
}
