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
consteval Posiciones Campo(const std::array<remesa::Campo, N>& campos, std::string_view nombre) {
  return remesa::PosicionesDe(campos, nombre);
}

constexpr bool kExigido = true;

/// Lo que sale de un campo.
constexpr Correspondencia De(Grado grado, std::string_view ruta, Forma forma, C clase, Posiciones donde,
                             bool exigido = false) {
  return {grado, ruta, forma, clase, donde, exigido};
}

/// Lo que no sale de ninguno.
constexpr Correspondencia Sin(Grado grado, std::string_view ruta, Forma forma, std::string_view fijo = {}) {
  return {grado, ruta, forma, C::Desconocido, {0, 0}, false, fijo};
}

/// Otro sitio donde un mensaje puede traer lo mismo.
constexpr Correspondencia SoloLeer(Correspondencia c) {
  c.uso = Uso::SoloLeer;
  return c;
}

constexpr Grado G = Grado::Mensaje, B = Grado::Bloque, T = Grado::Adeudo;

// En el orden del esquema dentro de cada grado.
constexpr std::array kCorrespondencias{
    De(G, "MsgId", F::IdMensaje, C::Presentador, Campo(t::kPresentador, "Identificación del fichero"),
       kExigido),
    De(G, "CreDtTm", F::FechaHora, C::Presentador, Campo(t::kPresentador, "Fecha de creación del fichero"),
       kExigido),
    Sin(G, "NbOfTxs", F::Cuantos),
    Sin(G, "CtrlSum", F::Suma),
    De(G, "InitgPty/Nm", F::Texto, C::Presentador, Campo(t::kPresentador, "Nombre del presentador")),
    De(G, "InitgPty", F::Presentador, C::Presentador, Campo(t::kPresentador, "Identificador del presentador"),
       kExigido),

    Sin(B, "PmtInfId", F::IdBloque),
    Sin(B, "PmtMtd", F::Fijo, "DD"),
    Sin(B, "NbOfTxs", F::Cuantos),
    Sin(B, "CtrlSum", F::Suma),
    Sin(B, "PmtTpInf/SvcLvl/Cd", F::Fijo, kEsquema),
    Sin(B, "PmtTpInf/LclInstrm/Cd", F::Instrumento),
    De(B, "PmtTpInf/SeqTp", F::TipoAdeudo, C::Adeudo, Campo(t::kAdeudo, "Tipo de adeudo"), kExigido),
    De(B, "PmtTpInf/CtgyPurp/Cd", F::Codigo, C::Adeudo, Campo(t::kAdeudo, "Categoría de propósito")),
    De(B, "ReqdColltnDt", F::Fecha, C::Acreedor, Campo(t::kAcreedor, "Fecha de cobro"), kExigido),
    De(B, "Cdtr/Nm", F::Texto, C::Acreedor, Campo(t::kAcreedor, "Nombre del acreedor"), kExigido),
    De(B, "Cdtr", F::Direccion, C::Acreedor, Campo(t::kAcreedor, "Dirección del acreedor (D1)")),
    De(B, "CdtrAcct/Id/IBAN", F::Cuenta, C::Acreedor, Campo(t::kAcreedor, "Cuenta del acreedor"), kExigido),
    Sin(B, "CdtrAgt", F::BancoAcreedor),
    Sin(B, "ChrgBr", F::Fijo, "SLEV"),
    De(B, "CdtrSchmeId", F::Acreedor, C::Acreedor, Campo(t::kAcreedor, "Identificador del acreedor"),
       kExigido),
    SoloLeer(De(B, "UltmtCdtr/Nm", F::Texto, C::Ultimos, Campo(t::kUltimos, "Nombre del último acreedor"))),
    SoloLeer(De(B, "UltmtCdtr", F::Identificacion, C::Ultimos,
                Campo(t::kUltimos, "Tipo de identificación del último acreedor"))),

    De(T, "PmtId/EndToEndId", F::ReferenciaAdeudo, C::Adeudo, Campo(t::kAdeudo, "Referencia del adeudo")),
    SoloLeer(Sin(T, "PmtTpInf/SvcLvl/Cd", F::Fijo, kEsquema)),
    SoloLeer(Sin(T, "PmtTpInf/LclInstrm/Cd", F::Instrumento)),
    SoloLeer(De(T, "PmtTpInf/SeqTp", F::TipoAdeudo, C::Adeudo, Campo(t::kAdeudo, "Tipo de adeudo"))),
    SoloLeer(
        De(T, "PmtTpInf/CtgyPurp/Cd", F::Codigo, C::Adeudo, Campo(t::kAdeudo, "Categoría de propósito"))),
    De(T, "InstdAmt", F::Importe, C::Adeudo, Campo(t::kAdeudo, "Importe del adeudo"), kExigido),
    SoloLeer(Sin(T, "ChrgBr", F::Fijo, "SLEV")),
    De(T, "DrctDbtTx/MndtRltdInf/MndtId", F::Referencia, C::Adeudo,
       Campo(t::kAdeudo, "Referencia única del mandato"), kExigido),
    De(T, "DrctDbtTx/MndtRltdInf/DtOfSgntr", F::Fecha, C::Adeudo,
       Campo(t::kAdeudo, "Fecha de firma del mandato"), kExigido),
    Sin(T, "DrctDbtTx/MndtRltdInf/AmdmntInd", F::CambioMandato),
    De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlMndtId", F::Referencia, C::Mandato,
       Campo(t::kMandato, "Referencia única del mandato original")),
    De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlCdtrSchmeId/Nm", F::Texto, C::Mandato,
       Campo(t::kMandato, "Nombre del acreedor original")),
    De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlCdtrSchmeId", F::Acreedor, C::Mandato,
       Campo(t::kMandato, "Identificador del acreedor original")),
    De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAcct/Id/IBAN", F::Cuenta, C::Mandato,
       Campo(t::kMandato, "Cuenta del deudor original")),
    De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAcct/Id/Othr/Id", F::EntidadOriginal, C::Mandato,
       Campo(t::kMandato, "Entidad del deudor original")),
    // Donde iba hasta 2016.
    SoloLeer(De(T, "DrctDbtTx/MndtRltdInf/AmdmntInfDtls/OrgnlDbtrAgt/FinInstnId/Othr/Id", F::EntidadOriginal,
                C::Mandato, Campo(t::kMandato, "Entidad del deudor original"))),
    SoloLeer(De(T, "DrctDbtTx/CdtrSchmeId", F::Acreedor, C::Acreedor,
                Campo(t::kAcreedor, "Identificador del acreedor"))),
    De(T, "UltmtCdtr/Nm", F::Texto, C::Ultimos, Campo(t::kUltimos, "Nombre del último acreedor")),
    De(T, "UltmtCdtr", F::Identificacion, C::Ultimos,
       Campo(t::kUltimos, "Tipo de identificación del último acreedor")),
    De(T, "DbtrAgt", F::Banco, C::Adeudo, Campo(t::kAdeudo, "Entidad del deudor")),
    De(T, "Dbtr/Nm", F::Texto, C::Adeudo, Campo(t::kAdeudo, "Nombre del deudor"), kExigido),
    De(T, "Dbtr", F::Direccion, C::Adeudo, Campo(t::kAdeudo, "Dirección del deudor (D1)")),
    De(T, "Dbtr", F::Identificacion, C::Adeudo, Campo(t::kAdeudo, "Tipo de identificación del deudor")),
    De(T, "DbtrAcct/Id/IBAN", F::CuentaDeudor, C::Adeudo, Campo(t::kAdeudo, "Cuenta del deudor"), kExigido),
    De(T, "UltmtDbtr/Nm", F::Texto, C::Ultimos, Campo(t::kUltimos, "Nombre del titular de la domiciliación")),
    De(T, "UltmtDbtr", F::Identificacion, C::Ultimos,
       Campo(t::kUltimos, "Tipo de identificación del titular")),
    De(T, "Purp/Cd", F::Codigo, C::Adeudo, Campo(t::kAdeudo, "Propósito del adeudo")),
    De(T, "RmtInf/Ustrd", F::Texto, C::Adeudo, Campo(t::kAdeudo, "Concepto")),
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
    for (std::size_t i = 0; i < partes.size(); ++i)
      elementos.push_back({&c, static_cast<std::uint8_t>(i),
                           std::string(c.ruta).append("/").append(partes[i].ruta),
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
