#include "remesa/Observaciones.h"

#include <algorithm>
#include <limits>

#include "ficheros/ErrorEjecucion.h"

namespace remesa {
namespace {

using Clase_ = ClaseObservacion;

constexpr std::int64_t kImporteMaximo = std::numeric_limits<std::int32_t>::max();

// Los números de registro de lo importado dejan de valer dentro de la acumulación.
Apariciones Juntar(const Apariciones& acumulado, const Apariciones& previo) {
  return {acumulado.cuenta + previo.cuenta, acumulado.primero};
}

class Lista {
 public:
  void anadir(Observacion observacion) { lista_.push_back(std::move(observacion)); }
  void anadirSi(Clase_ clase, const Apariciones& hallazgo) {
    if (hallazgo.cuenta > 0) anadir({clase, hallazgo.cuenta, hallazgo.primero});
  }
  std::vector<Observacion> entregar() { return std::move(lista_); }

 private:
  std::vector<Observacion> lista_;
};

// Lo primero de `previo` que no es lo del bloque que recibirá sus adeudos.
void CompararBloques(Lista& lista, const Resumen& previo, const Resumen& acumulado, Clase_ clase,
                     std::string Bloque02::*dato) {
  const std::string& antes = acumulado.ultimoBloque.*dato;
  const auto distinto = [&](const Bloque02& bloque) { return bloque.*dato != antes; };
  const auto primero = std::ranges::find_if(previo.bloques, distinto);
  if (primero == previo.bloques.end()) return;
  Observacion observacion{clase};
  observacion.cuenta = static_cast<std::size_t>(std::ranges::count_if(previo.bloques, distinto));
  observacion.antes = antes;
  observacion.ahora = (*primero).*dato;
  lista.anadir(std::move(observacion));
}

/// Las cabeceras que no tiene: "01", "02", "01 y 02" o "".
std::string Faltan(const Resumen& resumen) {
  if (resumen.cabeceras01 > 0) return resumen.cabeceras02 > 0 ? "" : "02";
  return resumen.cabeceras02 > 0 ? "01" : "01 y 02";
}

}  // namespace

Resumen TrasImportar(const Resumen& acumulado, const Resumen& previo) {
  Resumen resultado = acumulado;
  if (acumulado.vacia()) {
    resultado.cabeceras01 = previo.cabeceras01;
    resultado.cabeceras02 = previo.cabeceras02;
    resultado.bloques = previo.bloques;
    resultado.ultimoBloque = previo.ultimoBloque;
  }
  resultado.registros03 += previo.registros03;
  resultado.deTotales = previo.deTotales;
  resultado.totalesInteriores = previo.totalesInteriores;
  resultado.registros =
      resultado.cabeceras01 + resultado.cabeceras02 + resultado.registros03 + resultado.deTotales;
  resultado.adeudos += previo.adeudos;
  resultado.importe += previo.importe;
  resultado.copiasIntercaladas = Juntar(acumulado.copiasIntercaladas, previo.copiasIntercaladas);
  resultado.opcionalesSueltos = Juntar(acumulado.opcionalesSueltos, previo.opcionalesSueltos);
  resultado.totalesDistintos = {};
  resultado.totalesSegunNorma = resultado.cabeceras02 <= 1;
  resultado.errorRecalculo = 0;
  resultado.registroError = 0;
  return resultado;
}

std::vector<Observacion> ObservarImportacion(const Resumen& previo, const Resumen& acumulado) {
  Lista lista;
  if (previo.vacia()) return {};
  if (previo.registros == 1 && previo.conLF.cuenta == 1) return {{Clase_::SoloLF, 1, 1}};
  lista.anadirSi(Clase_::ConLF, previo.conLF);
  if (previo.enUtf8.cuenta > 0)
    lista.anadir({.clase = Clase_::Utf8,
                  .cuenta = previo.enUtf8.cuenta,
                  .primero = previo.enUtf8.primero,
                  .ahora = previo.palabraUtf8});
  if (acumulado.importe + previo.importe > kImporteMaximo)
    lista.anadir({Clase_::Desbordamiento, previo.deTotales, 0, acumulado.importe + previo.importe});
  if (previo.errorRecalculo == ficheros::kArgumentoNoValido)
    lista.anadir({Clase_::TotalesSinSitio, 1, previo.registroError});
  const std::string faltan = Faltan(acumulado.vacia() ? previo : acumulado);
  const bool lasTrae = (acumulado.cabeceras01 == 0 && previo.cabeceras01 > 0) ||
                       (acumulado.cabeceras02 == 0 && previo.cabeceras02 > 0);
  if (!faltan.empty() && acumulado.vacia())
    lista.anadir({Clase_::SinCabeceras, 0, 0, 0, faltan});
  else if (!faltan.empty() && lasTrae)
    lista.anadir({Clase_::CabecerasPerdidas, 0, 0, 0, faltan});
  if (acumulado.cabeceras02 > 0) {
    CompararBloques(lista, previo, acumulado, Clase_::OtroAcreedor, &Bloque02::acreedor);
    CompararBloques(lista, previo, acumulado, Clase_::OtraFecha, &Bloque02::fecha);
    CompararBloques(lista, previo, acumulado, Clase_::OtraCuenta, &Bloque02::cuenta);
  }
  lista.anadirSi(Clase_::TotalesInteriores, {acumulado.totalesInteriores, 0});
  lista.anadirSi(Clase_::CodigosDescartados, previo.descartados);
  lista.anadirSi(Clase_::RegistrosLargos, previo.largos);
  lista.anadirSi(Clase_::RegistrosCortos, previo.cortos);
  if (previo.deTotales == 0) lista.anadir({Clase_::SinTotales, acumulado.deTotales});
  return lista.entregar();
}

bool SePierdenSusAdeudos(const Resumen& previo) {
  return previo.registros03 == 0 && (previo.conLF.cuenta > 0 || previo.tipo != TipoFichero::Presentacion);
}

std::vector<Observacion> ObservarAcumulado(const Resumen& acumulado) {
  Lista lista;
  if (acumulado.vacia()) return {};
  if (const std::string faltan = Faltan(acumulado); !faltan.empty())
    lista.anadir({Clase_::FaltanCabeceras, 0, 0, 0, faltan});
  const Apariciones& distintos = acumulado.totalesDistintos;
  const bool desborda =
      acumulado.importe > kImporteMaximo || acumulado.errorRecalculo == ficheros::kDesbordamiento;
  if (desborda) lista.anadir({Clase_::TotalesDesbordados, acumulado.deTotales, 0, acumulado.importe});
  if (acumulado.deTotales == 0) {
    lista.anadir({Clase_::TotalesAusentes});
  } else if (desborda) {
    // Ya está dicho: ni cuadran ni se pueden calcular.
  } else if (acumulado.errorRecalculo != 0) {
    lista.anadir({Clase_::TotalesCortos});
  } else if (distintos.cuenta > 0) {
    lista.anadir({acumulado.totalesSegunNorma ? Clase_::TotalesPorBloque : Clase_::TotalesNoCuadran,
                  distintos.cuenta, distintos.primero});
  } else if (acumulado.cabeceras02 > 1) {
    lista.anadir({Clase_::VariosBloques, acumulado.cabeceras02});
  }
  lista.anadirSi(Clase_::CopiaIntercalada, acumulado.copiasIntercaladas);
  lista.anadirSi(Clase_::OpcionalesSueltos, acumulado.opcionalesSueltos);
  return lista.entregar();
}

}  // namespace remesa
