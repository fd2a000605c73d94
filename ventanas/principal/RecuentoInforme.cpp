#include "ventanas/principal/RecuentoInforme.h"

#include "comunes/plataforma/Formatos.h"
#include "remesa/Campos.h"
#include "remesa/TotalesNorma.h"

namespace principal {

using namespace Qt::StringLiterals;

bool EntraEnInforme(std::string_view registro, bool soloAdeudos) {
  return remesa::Codigo(registro) == remesa::CodigoRegistro::Adeudo &&
         remesa::LeerCampo(registro, remesa::kMarcaAdeudo) == "300" &&
         (!soloAdeudos || remesa::Clase(registro) == remesa::ClaseRegistro::Adeudo);
}

RecuentoInforme ContarInforme(const remesa::ListaRegistros& lista) {
  RecuentoInforme recuento;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    const std::string_view registro = lista[i];
    if (!EntraEnInforme(registro, false)) continue;
    const bool adeudo = remesa::Clase(registro) == remesa::ClaseRegistro::Adeudo;
    ++(adeudo ? recuento.adeudos : recuento.otros);
    (adeudo ? recuento.importe : recuento.importeOtros) += remesa::ImporteDe(registro);
  }
  return recuento;
}

QString TextoRecuentoInforme(const RecuentoInforme& recuento) {
  if (recuento.otros == 0) return {};
  const auto cuantos = [](std::size_t cuenta) {
    return comunes::FormatoNumero(static_cast<double>(cuenta), 0);
  };
  return (recuento.otros == 1 ? u"Incluye %1 registro que no es un adeudo (%2 €). Adeudos: %3, %4 €"_s
                              : u"Incluye %1 registros que no son adeudos (%2 €). Adeudos: %3, %4 €"_s)
      .arg(cuantos(recuento.otros), comunes::FormatoCentimos(recuento.importeOtros),
           cuantos(recuento.adeudos), comunes::FormatoCentimos(recuento.importe));
}

}  // namespace principal
