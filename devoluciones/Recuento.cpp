#include "devoluciones/Recuento.h"

#include <algorithm>
#include <map>

namespace devoluciones {
namespace {

class Agrupador {
 public:
  Cuenta& de(const Dato& clave, const Dato& nombre = {}) {
    const auto [donde, nuevo] = indices_.try_emplace({clave.presente(), clave.enRegistro()}, grupos_.size());
    if (nuevo) grupos_.push_back({clave, nombre, {}});
    Grupo& grupo = grupos_[donde->second];
    if (grupo.nombre.vacio()) grupo.nombre = nombre;
    return grupo.cuenta;
  }
  std::vector<Grupo> terminar() { return std::move(grupos_); }

 private:
  std::map<std::pair<bool, std::string>, std::size_t> indices_;
  std::vector<Grupo> grupos_;
};

}  // namespace

void Cuenta::sumar(const Devolucion& devolucion) {
  const bool entero = devolucion.alcance != Alcance::Adeudo;
  adeudos = SumaAcotada(adeudos, entero ? devolucion.adeudos.value_or(0) : 1);
  importe = SumaAcotada(importe, devolucion.importe.value_or(0));
  if (!devolucion.importe) ++sinImporte;
  if (entero) ++bloques;
}

Recuento Recontar(const Lote& lote, const Cotejo* cotejo) {
  Recuento recuento;
  Agrupador motivos, acreedores;
  for (std::size_t i = 0; i < lote.size(); ++i) {
    if (lote.estaEnOtro(i)) continue;
    const Devolucion devolucion = cotejo != nullptr ? cotejo->completada(i, cotejo->hallazgo(i)) : lote[i];
    recuento.total.sumar(devolucion);
    motivos.de(devolucion.motivo).sumar(devolucion);
    acreedores.de(devolucion.acreedor, devolucion.nombreAcreedor).sumar(devolucion);
  }
  recuento.porMotivo = motivos.terminar();
  recuento.porAcreedor = acreedores.terminar();
  std::ranges::stable_sort(recuento.porMotivo, std::ranges::greater(),
                           [](const Grupo& g) { return g.cuenta.adeudos; });
  return recuento;
}

}  // namespace devoluciones
