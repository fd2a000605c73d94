#include "remesa/Hallazgo.h"

#include <algorithm>
#include <array>
#include <utility>

namespace remesa {
namespace {

using C = CodigoHallazgo;

constexpr std::array kTextosCodigo{
    std::pair{C::Longitud, "E101"},
    std::pair{C::SoloLF, "E102"},
    std::pair{C::SinRegistros, "E103"},
    std::pair{C::NoEsRemesa, "E104"},
    std::pair{C::DeVuelta, "E105"},
    std::pair{C::Utf8, "E106"},
    std::pair{C::CodigoDesconocido, "E201"},
    std::pair{C::Version, "E202"},
    std::pair{C::NumeroDato, "E203"},
    std::pair{C::FueraDeOrden, "E204"},
    std::pair{C::FaltaRegistro, "E205"},
    std::pair{C::VersionesMezcladas, "E206"},
    std::pair{C::ObligatorioVacio, "E301"},
    std::pair{C::NoNumerico, "E302"},
    std::pair{C::FechaInexistente, "E303"},
    std::pair{C::ImporteCero, "E304"},
    std::pair{C::Iban, "E305"},
    std::pair{C::Ccc, "E306"},
    std::pair{C::IdentificadorAcreedor, "E307"},
    std::pair{C::FueraDeLista, "E308"},
    std::pair{C::Identificacion, "E309"},
    std::pair{C::SinAlinear, "E310"},
    std::pair{C::FueraDeSEPA, "E311"},
    std::pair{C::BicNoEspanol, "E312"},
    std::pair{C::IdentificacionFichero, "E313"},
    std::pair{C::FechaIdentificacion, "E314"},
    std::pair{C::Proposito, "E315"},
    std::pair{C::ReferenciasDistintas, "E401"},
    std::pair{C::OtraCabecera, "E402"},
    std::pair{C::TotalImportes, "E403"},
    std::pair{C::TotalAdeudos, "E404"},
    std::pair{C::TotalRegistros, "E405"},
    std::pair{C::Secuencia, "E406"},
    std::pair{C::OtraEntidad, "E407"},
    std::pair{C::SmndaConCuenta, "E408"},
    std::pair{C::NadaCambia, "E409"},
    std::pair{C::MismoTitular, "E410"},
    std::pair{C::BloqueRepetido, "E411"},
    std::pair{C::IdentificacionUsada, "E412"},
    std::pair{C::MarcaDeBytes, "A101"},
    std::pair{C::SoloCR, "A102"},
    std::pair{C::FinesMezclados, "A103"},
    std::pair{C::SinUltimoFin, "A104"},
    std::pair{C::EntreEmpresas, "A105"},
    std::pair{C::RegistroSinUso, "A201"},
    std::pair{C::OpcionalVacio, "A202"},
    std::pair{C::Caracteres, "A301"},
    std::pair{C::Direccion, "A302"},
    std::pair{C::LibreConDatos, "A303"},
    std::pair{C::Bic, "A304"},
    std::pair{C::FechaAntigua, "A305"},
    std::pair{C::PaisIncorporado, "A306"},
    std::pair{C::DigitosCcc, "A307"},
    std::pair{C::CuentaNacional, "A308"},
    std::pair{C::BicDeOtroPais, "A309"},
    std::pair{C::FaltaDireccion, "A310"},
    std::pair{C::PropositoRaro, "A311"},
    std::pair{C::NumeroFiscal, "A312"},
    std::pair{C::OtroBanco, "A313"},
    std::pair{C::SinOrdenar, "A401"},
    std::pair{C::ReferenciaRepetida, "A402"},
    std::pair{C::CobroDoble, "A403"},
    std::pair{C::MandatoDosCuentas, "A404"},
    std::pair{C::FirmaPosterior, "A405"},
    std::pair{C::Frst, "A406"},
    std::pair{C::CobroPasado, "A407"},
    std::pair{C::CobroFinDeSemana, "A408"},
    std::pair{C::CobroFestivo, "A409"},
    std::pair{C::CobroHoy, "A410"},
    std::pair{C::FirmaFutura, "A411"},
    std::pair{C::CreacionFutura, "A412"},
    std::pair{C::CobroLejano, "A413"},
    std::pair{C::FirmaCaducada, "A414"},
    std::pair{C::EntidadReceptora, "A415"},
    std::pair{C::CuentaPropia, "A416"},
    std::pair{C::DosMandatos, "A417"},
    std::pair{C::YaEnviado, "A418"},
    std::pair{C::CobroCercano, "A419"},
    std::pair{C::MandatoUnico, "A420"},
    std::pair{C::TrasUltimo, "A421"},
    std::pair{C::YaHuboPrimero, "A422"},
    std::pair{C::MandatoSinUso, "A423"},
    std::pair{C::CuentaCambiada, "A424"},
    std::pair{C::YaDevuelto, "A425"},
    std::pair{C::YaGuardado, "A426"},
};

constexpr auto kCodigos = [] {
  std::array<C, kTextosCodigo.size()> codigos{};
  std::ranges::transform(kTextosCodigo, codigos.begin(), [](const auto& par) { return par.first; });
  return codigos;
}();

// Los textos se buscan por el valor de la enumeración.
constexpr bool EnOrden() {
  for (std::size_t i = 0; i < kTextosCodigo.size(); ++i)
    if (static_cast<std::size_t>(kTextosCodigo[i].first) != i) return false;
  return true;
}
static_assert(EnOrden());

}  // namespace

std::span<const CodigoHallazgo> CodigosHallazgo() {
  return kCodigos;
}

std::string_view TextoCodigo(CodigoHallazgo codigo) {
  return kTextosCodigo[static_cast<std::size_t>(codigo)].second;
}

bool EsError(CodigoHallazgo codigo) {
  return TextoCodigo(codigo).front() == 'E';
}

}  // namespace remesa
