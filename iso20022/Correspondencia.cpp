#include "iso20022/Correspondencia.h"

#include <algorithm>
#include <array>
#include <utility>

namespace iso20022 {
namespace {

using C = remesa::ClaseRegistro;
using F = Forma;
using remesa::Posiciones;
namespace t = remesa::tabla;

template <std::size_t N>
consteval Posiciones De(const std::array<remesa::Campo, N>& campos, std::string_view nombre) {
  return remesa::PosicionesDe(campos, nombre);
}

constexpr bool kExigido = true;

// En el orden del esquema dentro de cada grado.
constexpr std::array kCorrespondencias{
    Correspondencia{Grado::Mensaje, "MsgId", F::IdMensaje, C::Presentador,
                    De(t::kPresentador, "Identificación del fichero"), kExigido},
    Correspondencia{Grado::Mensaje, "CreDtTm", F::FechaHora, C::Presentador,
                    De(t::kPresentador, "Fecha de creación del fichero"), kExigido},
    Correspondencia{Grado::Mensaje, "NbOfTxs", F::Cuantos},
    Correspondencia{Grado::Mensaje, "CtrlSum", F::Suma},
    Correspondencia{Grado::Mensaje, "InitgPty/Nm", F::Texto, C::Presentador,
                    De(t::kPresentador, "Nombre del presentador")},
    Correspondencia{Grado::Mensaje, "InitgPty", F::Presentador, C::Presentador,
                    De(t::kPresentador, "Identificador del presentador"), kExigido},

    Correspondencia{Grado::Bloque, "PmtInfId", F::IdBloque},
    Correspondencia{Grado::Bloque, "PmtMtd", F::Fijo, C::Desconocido, {0, 0}, false, "DD"},
    Correspondencia{Grado::Bloque, "NbOfTxs", F::Cuantos},
    Correspondencia{Grado::Bloque, "CtrlSum", F::Suma},
    Correspondencia{Grado::Bloque, "PmtTpInf/SvcLvl/Cd", F::Fijo, C::Desconocido, {0, 0}, false, kEsquema},
    Correspondencia{Grado::Bloque, "PmtTpInf/LclInstrm/Cd", F::Instrumento},
    Correspondencia{Grado::Bloque, "PmtTpInf/SeqTp", F::TipoAdeudo, C::Adeudo,
                    De(t::kAdeudo, "Tipo de adeudo"), kExigido},
    Correspondencia{Grado::Bloque, "PmtTpInf/CtgyPurp/Cd", F::Codigo, C::Adeudo,
                    De(t::kAdeudo, "Categoría de propósito")},
    Correspondencia{Grado::Bloque, "ReqdColltnDt", F::Fecha, C::Acreedor, De(t::kAcreedor, "Fecha de cobro"),
                    kExigido},
    Correspondencia{Grado::Bloque, "Cdtr/Nm", F::Texto, C::Acreedor, De(t::kAcreedor, "Nombre del acreedor"),
                    kExigido},
    Correspondencia{Grado::Bloque, "Cdtr", F::Direccion, C::Acreedor,
                    De(t::kAcreedor, "Dirección del acreedor (D1)")},
    Correspondencia{Grado::Bloque, "CdtrAcct/Id/IBAN", F::Cuenta, C::Acreedor,
                    De(t::kAcreedor, "Cuenta del acreedor"), kExigido},
    Correspondencia{Grado::Bloque, "CdtrAgt", F::BancoAcreedor},
    Correspondencia{Grado::Bloque, "ChrgBr", F::Fijo, C::Desconocido, {0, 0}, false, "SLEV"},
    Correspondencia{Grado::Bloque, "CdtrSchmeId", F::Acreedor, C::Acreedor,
                    De(t::kAcreedor, "Identificador del acreedor"), kExigido},
    Correspondencia{Grado::Bloque,
                    "UltmtCdtr/Nm",
                    F::Texto,
                    C::Ultimos,
                    De(t::kUltimos, "Nombre del último acreedor"),
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Bloque,
                    "UltmtCdtr",
                    F::Identificacion,
                    C::Ultimos,
                    De(t::kUltimos, "Tipo de identificación del último acreedor"),
                    false,
                    {},
                    Uso::SoloLeer},

    Correspondencia{Grado::Adeudo, "PmtId/EndToEndId", F::ReferenciaAdeudo, C::Adeudo,
                    De(t::kAdeudo, "Referencia del adeudo")},
    Correspondencia{
        Grado::Adeudo, "PmtTpInf/SvcLvl/Cd", F::Fijo, C::Desconocido, {0, 0}, false, kEsquema, Uso::SoloLeer},
    Correspondencia{Grado::Adeudo,
                    "PmtTpInf/LclInstrm/Cd",
                    F::Instrumento,
                    C::Desconocido,
                    {0, 0},
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Adeudo,
                    "PmtTpInf/SeqTp",
                    F::TipoAdeudo,
                    C::Adeudo,
                    De(t::kAdeudo, "Tipo de adeudo"),
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Adeudo,
                    "PmtTpInf/CtgyPurp/Cd",
                    F::Codigo,
                    C::Adeudo,
                    De(t::kAdeudo, "Categoría de propósito"),
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Adeudo, "InstdAmt", F::Importe, C::Adeudo, De(t::kAdeudo, "Importe del adeudo"),
                    kExigido},
    Correspondencia{Grado::Adeudo, "ChrgBr", F::Fijo, C::Desconocido, {0, 0}, false, "SLEV", Uso::SoloLeer},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/MndtId", F::Referencia, C::Adeudo,
                    De(t::kAdeudo, "Referencia única del mandato"), kExigido},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/DtOfSgntr", F::Fecha, C::Adeudo,
                    De(t::kAdeudo, "Fecha de firma del mandato"), kExigido},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInd", F::CambioMandato},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlMndtId", F::Referencia,
                    C::Mandato, De(t::kMandato, "Referencia única del mandato original")},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlCdtrSchmeId/Nm", F::Texto,
                    C::Mandato, De(t::kMandato, "Nombre del acreedor original")},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlCdtrSchmeId", F::Acreedor,
                    C::Mandato, De(t::kMandato, "Identificador del acreedor original")},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAcct/Id/IBAN", F::Cuenta,
                    C::Mandato, De(t::kMandato, "Cuenta del deudor original")},
    Correspondencia{Grado::Adeudo, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAcct/Id/Othr/Id",
                    F::EntidadOriginal, C::Mandato, De(t::kMandato, "Entidad del deudor original")},
    // Donde iba hasta 2016.
    Correspondencia{Grado::Adeudo,
                    "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAgt/FinInstnId/Othr/Id",
                    F::EntidadOriginal,
                    C::Mandato,
                    De(t::kMandato, "Entidad del deudor original"),
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Adeudo,
                    "DrctDbtTx/CdtrSchmeId",
                    F::Acreedor,
                    C::Acreedor,
                    De(t::kAcreedor, "Identificador del acreedor"),
                    false,
                    {},
                    Uso::SoloLeer},
    Correspondencia{Grado::Adeudo, "UltmtCdtr/Nm", F::Texto, C::Ultimos,
                    De(t::kUltimos, "Nombre del último acreedor")},
    Correspondencia{Grado::Adeudo, "UltmtCdtr", F::Identificacion, C::Ultimos,
                    De(t::kUltimos, "Tipo de identificación del último acreedor")},
    Correspondencia{Grado::Adeudo, "DbtrAgt", F::Banco, C::Adeudo, De(t::kAdeudo, "Entidad del deudor")},
    Correspondencia{Grado::Adeudo, "Dbtr/Nm", F::Texto, C::Adeudo, De(t::kAdeudo, "Nombre del deudor"),
                    kExigido},
    Correspondencia{Grado::Adeudo, "Dbtr", F::Direccion, C::Adeudo,
                    De(t::kAdeudo, "Dirección del deudor (D1)")},
    Correspondencia{Grado::Adeudo, "Dbtr", F::Identificacion, C::Adeudo,
                    De(t::kAdeudo, "Tipo de identificación del deudor")},
    Correspondencia{Grado::Adeudo, "DbtrAcct/Id/IBAN", F::CuentaDeudor, C::Adeudo,
                    De(t::kAdeudo, "Cuenta del deudor"), kExigido},
    Correspondencia{Grado::Adeudo, "UltmtDbtr/Nm", F::Texto, C::Ultimos,
                    De(t::kUltimos, "Nombre del titular de la domiciliación")},
    Correspondencia{Grado::Adeudo, "UltmtDbtr", F::Identificacion, C::Ultimos,
                    De(t::kUltimos, "Tipo de identificación del titular")},
    Correspondencia{Grado::Adeudo, "Purp/Cd", F::Codigo, C::Adeudo, De(t::kAdeudo, "Propósito del adeudo")},
    Correspondencia{Grado::Adeudo, "RmtInf/Ustrd", F::Texto, C::Adeudo, De(t::kAdeudo, "Concepto")},
};

struct Parte {
  std::string_view ruta;
  Uso uso = Uso::Ambos;
};

// En el orden de las enumeraciones.
constexpr std::array kPartesDireccion{
    Parte{"PstlAdr/StrtNm", Uso::SoloLeer},
    Parte{"PstlAdr/BldgNb", Uso::SoloLeer},
    Parte{"PstlAdr/PstCd"},
    Parte{"PstlAdr/TwnNm"},
    Parte{"PstlAdr/CtrySubDvsn"},
    Parte{"PstlAdr/Ctry"},
    Parte{"PstlAdr/AdrLine"},
    Parte{"PstlAdr/AdrLine[2]", Uso::SoloLeer},
};
constexpr std::array kPartesIdentificacion{
    Parte{"Id/OrgId/AnyBIC"},   Parte{"Id/OrgId/Othr/Id"},    Parte{"Id/OrgId/Othr/Issr"},
    Parte{"Id/PrvtId/Othr/Id"}, Parte{"Id/PrvtId/Othr/Issr"},
};
constexpr std::array kPartesBanco{Parte{"FinInstnId/BICFI"}, Parte{"FinInstnId/Othr/Id"}};
constexpr std::array kPartesAcreedor{Parte{"Id/PrvtId/Othr/Id"}, Parte{"Id/PrvtId/Othr/SchmeNm/Prtry"}};
constexpr std::array kPartesPresentador{
    Parte{"Id/OrgId/Othr/Id"},
    Parte{"Id/OrgId/Othr/SchmeNm/Prtry"},
    Parte{"Id/PrvtId/Othr/Id"},
    Parte{"Id/PrvtId/Othr/SchmeNm/Prtry"},
};

std::span<const Parte> Partes(Forma forma) {
  switch (forma) {
    case F::Direccion:
      return kPartesDireccion;
    case F::Identificacion:
      return kPartesIdentificacion;
    case F::Banco:
    case F::BancoAcreedor:
      return kPartesBanco;
    case F::Acreedor:
      return kPartesAcreedor;
    case F::Presentador:
      return kPartesPresentador;
    default:
      return {};
  }
}

std::span<const remesa::Campo> CamposDesde(C clase, Posiciones donde) {
  const auto campos = remesa::CamposDe(clase);
  for (std::size_t i = 0; i < campos.size(); ++i)
    if (campos[i].donde == donde) return campos.subspan(i);
  return {};
}

constexpr std::array kNombres02{
    std::pair<std::string_view, std::string_view>{"BICFI", "BIC"},
    std::pair<std::string_view, std::string_view>{"AnyBIC", "BICOrBEI"},
};

}  // namespace

Tabla::Tabla() {
  for (const Correspondencia& c : kCorrespondencias) {
    auto& elementos = elementos_[static_cast<std::size_t>(c.grado)];
    const auto partes = Partes(c.forma);
    const Entrada entrada{&c, elementos.size(), std::max<std::size_t>(partes.size(), 1),
                          CamposDesde(c.clase, c.donde)};
    entradas_[static_cast<std::size_t>(c.grado)].push_back(entrada);
    if (c.uso == Uso::Ambos)
      deClase_[static_cast<std::size_t>(c.grado)][static_cast<std::size_t>(c.clase)].push_back(entrada);
    if (partes.empty()) elementos.push_back({&c, 0, std::string(c.ruta), c.uso});
    for (std::uint8_t i = 0; i < partes.size(); ++i)
      elementos.push_back({&c, i, std::string(c.ruta).append("/").append(partes[i].ruta),
                           c.uso == Uso::SoloLeer ? c.uso : partes[i].uso});
  }
}

const Tabla& Tabla::Unica() {
  static const Tabla tabla;
  return tabla;
}

std::string_view NombreEn(Version version, std::string_view nombre) {
  if (version == Version::V02)
    for (const auto& [comun, antiguo] : kNombres02)
      if (nombre == comun) return antiguo;
  return nombre;
}

std::string_view Espacio(Version version) {
  return version == Version::V02 ? "urn:iso:std:iso:20022:tech:xsd:pain.008.001.02"
                                 : "urn:iso:std:iso:20022:tech:xsd:pain.008.001.08";
}

}  // namespace iso20022
