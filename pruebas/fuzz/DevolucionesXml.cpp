// Rechazos y devoluciones en XML: la entrada, tal cual.
#include "Objetivo.h"
#include "devoluciones/Textos.h"
#include "ficheros/ErrorEjecucion.h"

using namespace fuzz;
using namespace devoluciones;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  const auto ruta = Ruta("devueltos.xml");
  Escribir(ruta, {reinterpret_cast<const char*>(datos), largo});
  Lote lote;
  try {
    lote.leer(ruta);
  } catch (const FicheroAjeno& ajeno) {
    Exigir(!ajeno.porque.isEmpty(), "se dice qué es");
    return 0;
  } catch (const ficheros::ErrorEjecucion& error) {
    Exigir(error.numero() == 321, "no es más que un XML mal formado");
    return 0;
  }
  const FicheroLeido& fichero = lote.ficheros()[0];
  Exigir(fichero.cuantas == lote.size(), "todo es del fichero");
  Exigir(fichero.cuantas > 0 || !fichero.avisos.empty(), "si no trae nada, se dice");
  for (const AvisoLectura& aviso : fichero.avisos)
    Exigir(!TextoAviso(aviso, fichero.forma).isEmpty(), "cada aviso se explica");
  const Cotejo cotejo(lote);
  for (std::size_t i = 0; i < lote.size(); ++i) {
    const Devolucion d = lote[i];
    Exigir(d.importe.value_or(0) >= 0, "los importes no son negativos");
    Exigir(d.alcance == Alcance::Adeudo || (!d.referencia.presente() && !d.deudor.presente()),
           "de un bloque entero no se inventa nada");
    Exigir(cotejo.hallazgo(i).estado == EstadoCotejo::NoHallada, "sin remesas no hay nada hallado");
    Exigir(ValoresColumnas(lote, &cotejo, i).size() == TitulosColumnas().size(),
           "cada columna tiene su valor");
    TextoPorQue(d);
  }
  Exigir(Recontar(lote).total.importe >= 0, "la suma no da la vuelta");
  const std::size_t cuantas = lote.size();
  if (cuantas == 0) return 0;
  lote.leer(ruta);
  Exigir(lote.size() == cuantas, "el mismo fichero no añade nada");
  return 0;
}
