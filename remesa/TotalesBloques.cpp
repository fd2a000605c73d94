#include "remesa/TotalesBloques.h"

#include "ficheros/ErrorEjecucion.h"
#include "remesa/IndiceBloques.h"

namespace remesa {
namespace {

// Más no cabe en los campos de importe; comprobarlo en cada adeudo evita que la suma dé la vuelta.
constexpr std::int64_t kImporteMaximo = 99'999'999'999'999'999;

}  // namespace

std::span<const std::string> TotalesBloques::dar(std::string_view registro) {
  nuevos_.clear();
  hayRegistros_ = true;
  const ClaseRegistro clase = Clase(registro);
  if (clase == ClaseRegistro::Acreedor) {
    cerrarBloque();
    const std::string acreedor = AcreedorDe(registro);
    if (acreedor != acreedor_) cerrarAcreedor();
    acreedor_ = acreedor;
    fecha_ = LeerCampo(registro, kFechaCobro);
    hayBloque_ = hayAcreedor_ = true;
  } else if (clase == ClaseRegistro::Adeudo) {
    importe_ += ImporteDe(registro);
    if (importe_ > kImporteMaximo) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  }
  norma_.dar(registro, clase);
  return nuevos_;
}

std::span<const std::string> TotalesBloques::terminar() {
  nuevos_.clear();
  if (!hayRegistros_) return nuevos_;
  cerrarBloque();
  cerrarAcreedor();
  general_ = anadir("99", ClaseRegistro::TotalesGenerales);
  return nuevos_;
}

void TotalesBloques::cerrarBloque() {
  if (!hayBloque_) return;
  std::string registro("04");
  registro.append(acreedor_).resize(static_cast<std::size_t>(kFecha04.desde - 1), ' ');
  anadir(registro.append(fecha_), ClaseRegistro::TotalesFecha);
  hayBloque_ = false;
  importe_ = 0;
}

void TotalesBloques::cerrarAcreedor() {
  if (!hayAcreedor_) return;
  anadir("05" + acreedor_, ClaseRegistro::TotalesAcreedor);
  hayAcreedor_ = false;
}

SumaNorma TotalesBloques::anadir(std::string registro, ClaseRegistro clase) {
  AjustarLongitud(registro);
  const auto debidos = norma_.dar(registro, clase);
  for (const TotalDebido& debido : debidos) {
    const std::string cifras = CifrasDe(debido.valor, debido.donde.longitud());
    if (cifras.size() > static_cast<std::size_t>(debido.donde.longitud()))
      throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
    EscribirCampo(registro, debido.donde, cifras);
  }
  nuevos_.push_back(std::move(registro));
  return {debidos[0].valor, debidos[1].valor, debidos[2].valor};
}

}  // namespace remesa
