#include "remesa/PaisesSEPA.h"

#include <algorithm>
#include <array>

#include "remesa/Registro.h"

namespace remesa {
namespace {

struct PaisSEPA {
  std::string_view codigo;
  std::uint8_t longitud;
  std::string_view estructura;
  Zona zona;
};

// Los países con IBAN y los de la zona SEPA. Guernsey, Jersey y Man tienen los del Reino Unido; San
// Bartolomé, los de Francia.
constexpr std::array kTablaPaises{
    PaisSEPA{"AD", 24, "8n12c", Zona::FueraDelEEE},
    PaisSEPA{"AE", 23, "3n16n", Zona::Fuera},
    PaisSEPA{"AL", 28, "8n16c", Zona::Incorporados},
    PaisSEPA{"AT", 20, "16n", Zona::EEE},
    PaisSEPA{"AX", 18, "14n", Zona::EEE},
    PaisSEPA{"AZ", 28, "4a20c", Zona::Fuera},
    PaisSEPA{"BA", 20, "16n", Zona::Fuera},
    PaisSEPA{"BE", 16, "12n", Zona::EEE},
    PaisSEPA{"BG", 22, "4a6n8c", Zona::EEE},
    PaisSEPA{"BH", 22, "4a14c", Zona::Fuera},
    PaisSEPA{"BL", 0, "", Zona::EEE},
    PaisSEPA{"BR", 29, "23n1a1c", Zona::Fuera},
    PaisSEPA{"BY", 28, "4a4n16c", Zona::Fuera},
    PaisSEPA{"CH", 21, "5n12c", Zona::FueraDelEEE},
    PaisSEPA{"CR", 22, "18n", Zona::Fuera},
    PaisSEPA{"CY", 28, "8n16c", Zona::EEE},
    PaisSEPA{"CZ", 24, "20n", Zona::EEE},
    PaisSEPA{"DE", 22, "18n", Zona::EEE},
    PaisSEPA{"DK", 18, "14n", Zona::EEE},
    PaisSEPA{"DO", 28, "4a20n", Zona::Fuera},
    PaisSEPA{"EE", 20, "16n", Zona::EEE},
    PaisSEPA{"EG", 29, "25n", Zona::Fuera},
    PaisSEPA{"ES", 24, "20n", Zona::EEE},
    PaisSEPA{"FI", 18, "14n", Zona::EEE},
    PaisSEPA{"FO", 18, "14n", Zona::Fuera},
    PaisSEPA{"FR", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"GB", 22, "4a14n", Zona::FueraDelEEE},
    PaisSEPA{"GE", 22, "2c16n", Zona::Fuera},
    PaisSEPA{"GF", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"GG", 0, "", Zona::FueraDelEEE},
    PaisSEPA{"GI", 23, "4a15c", Zona::FueraDelEEE},
    PaisSEPA{"GL", 18, "14n", Zona::Fuera},
    PaisSEPA{"GP", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"GR", 27, "7n16c", Zona::EEE},
    PaisSEPA{"GT", 28, "24c", Zona::Fuera},
    PaisSEPA{"HR", 21, "17n", Zona::EEE},
    PaisSEPA{"HU", 28, "24n", Zona::EEE},
    PaisSEPA{"IE", 22, "4c14n", Zona::EEE},
    PaisSEPA{"IL", 23, "19n", Zona::Fuera},
    PaisSEPA{"IM", 0, "", Zona::FueraDelEEE},
    PaisSEPA{"IQ", 23, "4a15n", Zona::Fuera},
    PaisSEPA{"IS", 26, "22n", Zona::EEE},
    PaisSEPA{"IT", 27, "1a10n12c", Zona::EEE},
    PaisSEPA{"JE", 0, "", Zona::FueraDelEEE},
    PaisSEPA{"JO", 30, "4a4n18c", Zona::Fuera},
    PaisSEPA{"KW", 30, "4a22c", Zona::Fuera},
    PaisSEPA{"KZ", 20, "3n13c", Zona::Fuera},
    PaisSEPA{"LB", 28, "4n20c", Zona::Fuera},
    PaisSEPA{"LC", 32, "4a24c", Zona::Fuera},
    PaisSEPA{"LI", 21, "5n12c", Zona::EEE},
    PaisSEPA{"LT", 20, "16n", Zona::EEE},
    PaisSEPA{"LU", 20, "3n13c", Zona::EEE},
    PaisSEPA{"LV", 21, "4a13c", Zona::EEE},
    PaisSEPA{"LY", 25, "21n", Zona::Fuera},
    PaisSEPA{"MC", 27, "10n11c2n", Zona::FueraDelEEE},
    PaisSEPA{"MD", 24, "2c18c", Zona::Incorporados},
    PaisSEPA{"ME", 22, "18n", Zona::Incorporados},
    PaisSEPA{"MF", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"MK", 19, "3n10c2n", Zona::Incorporados},
    PaisSEPA{"MN", 20, "16n", Zona::Fuera},
    PaisSEPA{"MQ", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"MR", 27, "23n", Zona::Fuera},
    PaisSEPA{"MT", 31, "4a5n18c", Zona::EEE},
    PaisSEPA{"MU", 30, "4a19n3a", Zona::Fuera},
    PaisSEPA{"NC", 27, "10n11c2n", Zona::Fuera},
    PaisSEPA{"NI", 28, "4a20n", Zona::Fuera},
    PaisSEPA{"NL", 18, "4a10n", Zona::EEE},
    PaisSEPA{"NO", 15, "11n", Zona::EEE},
    PaisSEPA{"OM", 23, "3n16c", Zona::Fuera},
    PaisSEPA{"PF", 27, "10n11c2n", Zona::Fuera},
    PaisSEPA{"PK", 24, "4c16n", Zona::Fuera},
    PaisSEPA{"PL", 28, "24n", Zona::EEE},
    PaisSEPA{"PM", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"PS", 29, "4c21n", Zona::Fuera},
    PaisSEPA{"PT", 25, "21n", Zona::EEE},
    PaisSEPA{"QA", 29, "4a21c", Zona::Fuera},
    PaisSEPA{"RE", 27, "10n11c2n", Zona::EEE},
    PaisSEPA{"RO", 24, "4a16c", Zona::EEE},
    PaisSEPA{"RS", 22, "18n", Zona::Incorporados},
    PaisSEPA{"RU", 33, "14n15c", Zona::Fuera},
    PaisSEPA{"SA", 24, "2n18c", Zona::Fuera},
    PaisSEPA{"SC", 31, "4a20n3a", Zona::Fuera},
    PaisSEPA{"SD", 18, "14n", Zona::Fuera},
    PaisSEPA{"SE", 24, "20n", Zona::EEE},
    PaisSEPA{"SI", 19, "15n", Zona::EEE},
    PaisSEPA{"SK", 24, "20n", Zona::EEE},
    PaisSEPA{"SM", 27, "1a10n12c", Zona::FueraDelEEE},
    PaisSEPA{"SO", 23, "19n", Zona::Fuera},
    PaisSEPA{"ST", 25, "21n", Zona::Fuera},
    PaisSEPA{"SV", 28, "4a20n", Zona::Fuera},
    PaisSEPA{"TF", 27, "10n11c2n", Zona::Fuera},
    PaisSEPA{"TL", 23, "19n", Zona::Fuera},
    PaisSEPA{"TN", 24, "20n", Zona::Fuera},
    PaisSEPA{"TR", 26, "5n17c", Zona::Fuera},
    PaisSEPA{"UA", 29, "6n19c", Zona::Fuera},
    PaisSEPA{"VA", 22, "18n", Zona::FueraDelEEE},
    PaisSEPA{"VG", 24, "4c16n", Zona::Fuera},
    PaisSEPA{"WF", 27, "10n11c2n", Zona::Fuera},
    PaisSEPA{"XK", 20, "16n", Zona::Fuera},
    PaisSEPA{"YE", 30, "4a4n18c", Zona::Fuera},
    PaisSEPA{"YT", 27, "10n11c2n", Zona::EEE},
};
static_assert(std::ranges::is_sorted(kTablaPaises, {}, &PaisSEPA::codigo));

const PaisSEPA* EnTabla(std::string_view codigo) {
  const auto* pais = std::ranges::lower_bound(kTablaPaises, codigo, {}, &PaisSEPA::codigo);
  return pais != kTablaPaises.end() && pais->codigo == codigo ? pais : nullptr;
}

bool EsDe(char clase, char c) {
  const bool mayuscula = c >= 'A' && c <= 'Z';
  return clase == 'n' ? EsCifra(c) : clase == 'a' ? mayuscula : mayuscula || EsCifra(c);
}

}  // namespace

Zona ZonaDe(std::string_view pais) {
  const PaisSEPA* encontrado = EnTabla(pais);
  return encontrado != nullptr ? encontrado->zona : Zona::Fuera;
}

FormaIban FormaIbanDe(std::string_view pais) {
  const PaisSEPA* encontrado = EnTabla(pais);
  return encontrado != nullptr ? FormaIban{encontrado->longitud, encontrado->estructura} : FormaIban{};
}

bool SigueEstructura(std::string_view cuerpo, std::string_view estructura) {
  std::size_t cuantos = 0;
  for (const char c : estructura) {
    if (EsCifra(c)) {
      cuantos = cuantos * 10 + static_cast<std::size_t>(c - '0');
      continue;
    }
    if (cuerpo.size() < cuantos) return false;
    if (!std::ranges::all_of(cuerpo.substr(0, cuantos), [c](char dado) { return EsDe(c, dado); }))
      return false;
    cuerpo.remove_prefix(cuantos);
    cuantos = 0;
  }
  return cuerpo.empty();
}

}  // namespace remesa
