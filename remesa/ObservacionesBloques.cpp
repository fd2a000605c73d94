#include "remesa/ObservacionesBloques.h"

namespace remesa {

std::vector<Observacion> ObservarImportacion(const Resumen& previo, const IndiceBloques& indice) {
  using C = ClaseObservacion;
  const AvisosBloques& avisos = indice.avisos();
  if (previo.vacia()) return {};
  if (previo.registros == 1 && previo.conLF.cuenta == 1) return {{C::SoloLF, 1, 1}};
  if (avisos.sinDueno != 0) return {{C::SinDueno, 1, avisos.sinDueno}};
  std::vector<Observacion> lista;
  const auto anadir = [&](C clase, const Apariciones& cuales) -> Observacion* {
    if (cuales.cuenta == 0) return nullptr;
    return &lista.emplace_back(Observacion{clase, cuales.cuenta, cuales.primero});
  };
  anadir(C::ConLF, previo.conLF);
  if (Observacion* utf8 = anadir(C::Utf8, previo.enUtf8)) utf8->ahora = previo.palabraUtf8;
  if (previo.registros03 > 0)
    lista.push_back({.clase = C::BloquesNuevos, .cuenta = avisos.nuevos, .total = indice.vivos()});
  anadir(C::CabeceraIncorrecta, avisos.incorrectas);
  if (!indice.hayPresentador()) lista.push_back({.clase = C::SinCabeceras, .antes = "01"});
  if (Observacion* otro = anadir(C::OtroPresentador, avisos.presentadores)) {
    otro->antes = avisos.presentador;
    otro->ahora = avisos.otroPresentador;
  }
  if (Observacion* distinta =
          anadir(avisos.otroNombre ? C::CabeceraOtroNombre : C::CabeceraDistinta, avisos.distintas)) {
    distinta->antes = avisos.acreedor;
    distinta->fecha = avisos.fecha;
    distinta->ahora = avisos.nombre;
  }
  anadir(C::CodigosDescartados, previo.descartados);
  anadir(C::RegistrosLargos, previo.largos);
  anadir(C::RegistrosCortos, previo.cortos);
  return lista;
}

std::vector<Observacion> ObservarAcumulado(const Resumen& acumulado, const IndiceBloques& indice) {
  using C = ClaseObservacion;
  std::vector<Observacion> lista;
  if (acumulado.vacia()) return lista;
  if (acumulado.cabeceras01 == 0) lista.push_back({.clase = C::FaltanCabeceras, .antes = "01"});
  const auto anadir = [&](C clase, const Apariciones& cuales) {
    if (cuales.cuenta > 0) lista.push_back({clase, cuales.cuenta, cuales.primero});
  };
  if (acumulado.deTotales == 0)
    lista.push_back({C::TotalesAusentes});
  else if (!acumulado.totalesSegunNorma)
    lista.push_back({C::TotalesNoCuadran});
  anadir(C::CabeceraIncorrecta, indice.avisos().incorrectas);
  anadir(C::OpcionalesSueltos, acumulado.opcionalesSueltos);
  return lista;
}

}  // namespace remesa
