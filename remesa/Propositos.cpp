#include "remesa/Propositos.h"

#include <algorithm>
#include <array>

namespace remesa {
namespace {

constexpr std::size_t kLargo = 4;

// En orden, separados por un blanco.
constexpr std::string_view kCategorias =
    "CASH CCRD CORT DCRD DIVI GOVT HEDG ICCP IDCP INTC INTE LOAN PENS SALA SECU SSBE SUPP TAXS "
    "TRAD TREA VATX WHLD";
constexpr std::string_view kPropositos =
    "ACCT ADVA AGRT AIRB ALMY ANNI ANTS AREN BECH BENE BEXP BOCE BONU BUSB CASH CBFF CBTV CCRD "
    "CDBL CDCB CDCD CDOC CDQC CFEE CHAR CLPR CMDT COLL COMC COMM COMT COST CPYR CSDB CSLP CVCF "
    "DBTC DCRD DEPT DERI DIVD DMEQ DNTS ELEC ENRG ESTX FERB FREX GASB GDDS GDSV GOVI GOVT GSCB "
    "GVEA GVEB GVEC GVED HEDG HLRP HLTC HLTI HSPC HSTX ICCP ICRF IDCP IHRP INPC INSM INSU INTC "
    "INTE INTX LBRI LICF LIFI LIMA LOAN LOAR LTCF MDCS MSVC NETT NITX NOWS NWCH NWCM OFEE OTHR "
    "OTLC PADD PAYR PENS PHON POPE PPTI PRCP PRME PTSP RCKE RCPT REFU RENT RINP RLWY ROYA SALA "
    "SAVG SCVE SECU SSBE STDY SUBS SUPP TAXS TELI TRAD TREA TRFD VATX VIEW WEBI WHLD WTER";

/// Los códigos de una lista, para buscarlos por mitades.
template <std::size_t Cuantos>
consteval std::array<std::string_view, Cuantos> Separar(std::string_view lista) {
  std::array<std::string_view, Cuantos> codigos;
  for (std::size_t i = 0; i < Cuantos; ++i)
    codigos[i] = lista.substr(i * (kLargo + 1), kLargo);
  if (!std::ranges::is_sorted(codigos)) throw "desordenada";
  return codigos;
}

constexpr auto kTablaCategorias = Separar<(kCategorias.size() + 1) / (kLargo + 1)>(kCategorias);
constexpr auto kTablaPropositos = Separar<(kPropositos.size() + 1) / (kLargo + 1)>(kPropositos);

}  // namespace

bool TieneFormaDeProposito(std::string_view codigo) {
  return codigo.size() == kLargo && std::ranges::all_of(codigo, [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool EsCategoriaDeProposito(std::string_view codigo) {
  return std::ranges::binary_search(kTablaCategorias, codigo);
}

bool EsProposito(std::string_view codigo) {
  return std::ranges::binary_search(kTablaPropositos, codigo);
}

}  // namespace remesa
