#include "remesa/OrdenAdeudos.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

#include "remesa/Campos.h"

namespace remesa {
namespace {

struct Adeudo {
  std::string_view referencia, mandato;
  std::size_t desde = 0, hasta = 0;
};

std::string_view Dice(std::string_view registro, Posiciones donde) {
  return Recortar(LeerCampo(registro, donde));
}

bool DependeDelOrden(std::string_view adeudo) {
  const std::string_view tipo = LeerCampo(adeudo, kTipoAdeudo);
  return tipo == "FRST" || tipo == "FNAL";
}

/// `adeudos`, en su orden nuevo.
bool MandatosEnSuOrden(const std::vector<Adeudo>& adeudos, const RegistroDe& registro) {
  std::unordered_set<std::string_view> delicados;
  for (const Adeudo& adeudo : adeudos)
    if (DependeDelOrden(registro(adeudo.desde))) delicados.insert(adeudo.mandato);
  if (delicados.empty()) return true;
  std::unordered_map<std::string_view, std::size_t> ultimos;
  return std::ranges::all_of(adeudos, [&](const Adeudo& adeudo) {
    if (!delicados.contains(adeudo.mandato)) return true;
    std::size_t& ultimo = ultimos[adeudo.mandato];
    const bool bien = ultimo <= adeudo.desde;
    ultimo = adeudo.desde;
    return bien;
  });
}

}  // namespace

std::vector<std::size_t> PorReferencia(std::size_t desde, std::size_t hasta, const RegistroDe& registro) {
  std::vector<Adeudo> adeudos;
  const auto esAdeudo = [&](std::size_t i) { return Clase(registro(i)) == ClaseRegistro::Adeudo; };
  std::size_t primero = desde;
  while (primero < hasta && !esAdeudo(primero))
    ++primero;
  for (std::size_t i = primero; i < hasta; ++i) {
    if (esAdeudo(i))
      adeudos.push_back({Dice(registro(i), kReferenciaAdeudo), Dice(registro(i), kReferenciaMandato), i, i});
    adeudos.back().hasta = i + 1;
  }
  if (std::ranges::is_sorted(adeudos, {}, &Adeudo::referencia)) return {};
  std::ranges::stable_sort(adeudos, {}, &Adeudo::referencia);
  if (!MandatosEnSuOrden(adeudos, registro)) return {};
  std::vector<std::size_t> orden(hasta - desde);
  std::iota(orden.begin(), orden.end(), desde);
  auto donde = orden.begin() + static_cast<std::ptrdiff_t>(primero - desde);
  for (const Adeudo& adeudo : adeudos)
    for (std::size_t i = adeudo.desde; i < adeudo.hasta; ++i)
      *donde++ = i;
  return orden;
}

std::vector<std::size_t> PorDato(std::size_t desde, std::size_t hasta, std::size_t cual,
                                 const RegistroDe& registro) {
  constexpr std::size_t kMaximo = 4;  // un 003, un 004, un 005 y un 006
  std::size_t principio = cual;
  while (principio > desde && cual - principio < kMaximo &&
         Clase(registro(principio)) != ClaseRegistro::Adeudo)
    --principio;
  if (Clase(registro(principio)) != ClaseRegistro::Adeudo) return {};
  std::vector<std::size_t> orden{principio};
  for (std::size_t i = principio + 1; i < hasta; ++i) {
    const ClaseRegistro clase = Clase(registro(i));
    if (clase == ClaseRegistro::Adeudo) break;
    if (clase == ClaseRegistro::Desconocido || orden.size() == kMaximo) return {};
    orden.push_back(i);
  }
  const auto dato = [&](std::size_t i) { return LeerCampo(registro(i), kNumeroDato); };
  if (std::ranges::is_sorted(orden, {}, dato)) return {};
  std::ranges::sort(orden, {}, dato);
  const auto iguales = [&](std::size_t a, std::size_t b) { return dato(a) == dato(b); };
  return std::ranges::adjacent_find(orden, iguales) == orden.end() ? orden : std::vector<std::size_t>();
}

}  // namespace remesa
