#include "iso20022/Nota.h"

#include <array>
#include <utility>

namespace iso20022 {
namespace {

using N = CodigoNota;

constexpr std::array kTextosCodigo{
    std::pair{N::NoEsRemesa, "E501"},
    std::pair{N::FaltaPresentador, "E502"},
    std::pair{N::OtroPresentador01, "E503"},
    std::pair{N::Identificador, "E504"},
    std::pair{N::Fecha, "E505"},
    std::pair{N::Iban, "E506"},
    std::pair{N::Ccc, "E507"},
    std::pair{N::Version, "E508"},
    std::pair{N::EsquemasMezclados, "E509"},
    std::pair{N::Vacio, "E510"},
    std::pair{N::TipoAdeudo, "E511"},
    std::pair{N::Importe, "E512"},
    std::pair{N::Barras, "E513"},
    std::pair{N::AdeudoSinCabecera, "E514"},
    std::pair{N::NumeroDato, "E515"},
    std::pair{N::ReferenciasDistintas, "E516"},
    std::pair{N::OpcionalRepetido, "E517"},
    std::pair{N::EntidadOriginal, "E518"},
    std::pair{N::SinAdeudos, "E519"},
    std::pair{N::DemasiadosMensajes, "E520"},
    std::pair{N::Caracteres, "A501"},
    std::pair{N::CccConvertido, "A502"},
    std::pair{N::Balanza, "A503"},
    std::pair{N::IdentificacionSinCodigo, "A504"},
    std::pair{N::IdentificacionBic, "A505"},
    std::pair{N::IdentificacionEmisor, "A506"},
    std::pair{N::IdentificacionTipo, "A507"},
    std::pair{N::CodigoProposito, "A508"},
    std::pair{N::Provincia, "A509"},
    std::pair{N::CuentaConCambio, "A510"},
    std::pair{N::OpcionalVacio, "A511"},
    std::pair{N::Libre, "A512"},
    std::pair{N::RegistroDesconocido, "A513"},
    std::pair{N::VariosAcreedores, "A514"},
    std::pair{N::SinBic, "A515"},
    std::pair{N::SinDireccion, "A516"},
    std::pair{N::DireccionNoEscrita, "A517"},
    std::pair{N::DireccionSinPartir, "A518"},
    std::pair{N::BicNoValido, "A519"},
    std::pair{N::SinReferencia, "A520"},
    std::pair{N::OtroPresentador, "A521"},
    std::pair{N::SoloLF, "A522"},
    std::pair{N::AdeudosTrasTotales, "A523"},
    std::pair{N::RegistroLargo, "A524"},
    std::pair{N::ClaseCuenta, "A525"},
    std::pair{N::BicAcreedor, "A526"},
};

// Los textos se buscan por el valor de la enumeración.
constexpr bool EnOrden() {
  for (std::size_t i = 0; i < kTextosCodigo.size(); ++i)
    if (static_cast<std::size_t>(kTextosCodigo[i].first) != i) return false;
  return true;
}
static_assert(EnOrden());

}  // namespace

std::string_view TextoCodigo(CodigoNota codigo) {
  return kTextosCodigo[static_cast<std::size_t>(codigo)].second;
}

bool EsError(CodigoNota codigo) {
  return TextoCodigo(codigo).front() == 'E';
}

}  // namespace iso20022
